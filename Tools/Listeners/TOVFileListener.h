// Log lines in a file.
#pragma once

#include <Listeners/TOVLineListener.h>

#include <cstdio>
#include <mutex>
#include <string>

namespace TOVDebug
{
// Writes each line as sTOVLogLine::Print has it, with "\n" behind it on every system. Below severity 500 a line may
// wait in the file's buffer; graver ones, failed checks and panics are flushed, together with all before them, and so
// is the end: a normal exit and the exit of a panic lose nothing, even of an object that is never destroyed, and a
// crash only what came after the last flush.
//
// Where the file cannot be made, and while the disk is full, lines are dropped, and HasLostLines tells; of the line
// that met the full disk, a part may stand there.
class CTOVFileListener : public CTOVLineListener
{
public:
    ~CTOVFileListener() override;

    // Flushes.
    void OnClosedown() override;

    // Adds to a file that exists, or begins it anew. Whether that worked: IsOpen.
    explicit CTOVFileListener(const char* szPath, bool bAppend = true);

    // False where the file could not be opened, also for a null path.
    bool IsOpen() const;

    // Hands what has been written to the system.
    void Flush();

protected:
    void OnLine(const sTOVLogLine& oLine) override;

    // For a derived class that changes files. All run under the listener's own lock, in which nothing is logged.

    // Called before so many bytes are written. Does nothing here.
    virtual void BeforeWrite(std::size_t nBytes);

    // Open closes first.
    bool Open(bool bAppend);
    void Close();

    const std::string m_sPath;
    std::FILE* m_pFile; // null while no file is open

private:
    mutable std::mutex m_oMutex;
};
} // namespace TOVDebug
