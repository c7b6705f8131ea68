// Log lines in a file that does not grow without end.
#pragma once

#include <Listeners/TOVFileListener.h>

namespace TOVDebug
{
// A CTOVFileListener that begins its file anew before a line would make it larger than a size, and keeps a number of
// full files beside it: "name.1" is the latest, "name.2" the one before, and so on; the oldest is removed.
//
// - Lines are not split: one that is longer than the size has a file of its own.
// - What stood in the file at the start counts, and an existing file that is too large is moved at the first line.
// - With no kept files, the full file's contents go.
// - Files of higher numbers, of a time when more were kept, stay as they are.
// - While a file cannot be moved (another program holds it), the lines go on into the same file, and the next try is
//   made when as much again has been written. While the new file cannot be opened, each line tries again, and
//   HasLostLines tells of those that were lost.
// - A kept file is never opened: one that cannot be read is kept like the others.
//
// One process for one file.
class CTOVRotatingFileListener final : public CTOVFileListener
{
public:
    ~CTOVRotatingFileListener() override;

    // ullMaxSize in bytes; 0 gives each line a file of its own. nKeptFiles below 0 counts as 0.
    CTOVRotatingFileListener(const char* szPath, unsigned long long ullMaxSize, int nKeptFiles);

private:
    void BeforeWrite(std::size_t nBytes) override;
    void Rotate();
    bool FreeName(int nNumber);
    std::string Name(int nNumber) const;

    const unsigned long long m_ullMaxSize;
    const int m_nKeptFiles;
    const bool m_bOpened;
    unsigned long long m_ullSize; // of the file, or since the last try to move it
};
} // namespace TOVDebug
