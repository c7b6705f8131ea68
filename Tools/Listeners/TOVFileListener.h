// Declares CTOVFileListener, which writes log lines to a file.
#pragma once

#include <Listeners/TOVLineListener.h>

#include <cstdio>
#include <mutex>
#include <string>

namespace TOVDebug
{
// Writes each line in the form of sTOVLogLine::Print, followed by "\n" on every system. A line below severity 500 may
// stay in the file's buffer. More severe lines, failed checks and panics are flushed, together with all lines before
// them, and so is the file at the end of the process. A normal exit and the exit of a panic therefore lose nothing,
// even if the object is never destroyed; a crash loses only the lines after the last flush.
//
// If the file cannot be created, and while the disk is full, lines are dropped, and HasLostLines returns true. Part of
// the line during which the disk became full may be in the file.
class TOV_LISTENER_EXPORT CTOVFileListener : public CTOVLineListener
{
public:
    ~CTOVFileListener() override;

    // Calls Flush.
    void OnClosedown() override;

    // Opens the file; with bAppend adds to an existing file, otherwise truncates it. IsOpen returns whether that
    // worked.
    explicit CTOVFileListener(const char* szPath, bool bAppend = true);

    // Returns false if the file could not be opened, or the path is null.
    bool IsOpen() const;

    // Passes all lines written so far to the system.
    void Flush();

protected:
    void OnLine(const sTOVLogLine& oLine) override;

    // A derived class that changes files uses these. They are called with the listener's own lock held, and must not
    // log.

    // Called before nBytes bytes are written. Does nothing here.
    virtual void BeforeWrite(std::size_t nBytes);

    // Open calls Close first. It returns whether the file could be opened.
    bool Open(bool bAppend);
    void Close();

    const std::string m_sPath; // as it was given to the constructor
    std::FILE* m_pFile;        // null while no file is open

private:
    mutable std::mutex m_oMutex;
};
} // namespace TOVDebug
