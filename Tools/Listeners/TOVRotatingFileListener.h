// Declares CTOVRotatingFileListener, which writes log lines to a file of limited size.
#pragma once

#include <Listeners/TOVFileListener.h>

namespace TOVDebug
{
// Starts a new file before a line would make the file larger than a maximum size, and keeps a number of full files
// beside it: "name.1" is the latest, "name.2" the one before, and so on; the oldest is removed.
//
// - Lines are not split: a line that is longer than the maximum size has its own file.
// - The size of a file that already exists counts; one that is too large is moved before the first line.
// - If no files are kept, the contents of the full file are lost.
// - Files with higher numbers, which were kept when the number was larger, are left unchanged.
// - If the file cannot be moved (because another program holds it), further lines are written to the same file, and the
//   next attempt is made when as many bytes as the maximum size have been written. If the new file cannot be opened,
//   each line tries again; HasLostLines returns whether lines were lost meanwhile.
// - A kept file is never opened: one that cannot be read is kept like the others.
//
// Only one process may write to a file.
class TOV_LISTENER_EXPORT CTOVRotatingFileListener final : public CTOVFileListener
{
public:
    ~CTOVRotatingFileListener() override;

    // ullMaxSize is in bytes; 0 gives each line its own file. A negative nKeptFiles counts as 0.
    CTOVRotatingFileListener(const char* szPath, unsigned long long ullMaxSize, int nKeptFiles);

private:
    void BeforeWrite(std::size_t nBytes) override;
    void Rotate();
    bool FreeName(int nNumber);
    std::string Name(int nNumber) const;

    const unsigned long long m_ullMaxSize;
    const int m_nKeptFiles;
    const bool m_bOpened;
    unsigned long long m_ullSize; // bytes in the file, or bytes since the last attempt to move it
};
} // namespace TOVDebug
