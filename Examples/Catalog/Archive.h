// Declares CArchive, which writes values to a stream, or reads them, by the same sequence of calls.
#pragma once

#include <Debug/TOVBase.h>
#include <Streams/TOVCheckedStream.h>

#include <string>

// Each operation writes its argument or reads into it, depending on the stream's direction. The library's checked
// stream reads and writes in large blocks, as values have few bytes each, and notices what is wrong with a file: each
// of its failures becomes a CCatalogError, in the words of the catalogue. A section begins with its version, as the
// stream itself would write it.
class CArchive
{
public:
    // Makes an archive for writing.
    explicit CArchive(ITOVStream& oStream);

    // Makes an archive for reading a file of ullSize bytes.
    CArchive(ITOVStream& oStream, unsigned long long ullSize);

    // Begins a section. Returns its version: nWritten when writing, that of the file when reading. Throws if the
    // version is newer than nNewest, or has never existed.
    int Begin(int nNewest, int nWritten);
    int Begin(int nNewest) { return Begin(nNewest, nNewest); }

    // szWhenShort is the error message for a file that ends too early.
    void Bytes(void* pBytes, int nSize, const char* szWhenShort);
    void Number(int& nValue);
    void Word(tDword& dwValue);

    // Transfers the number of the elements that follow, each of which has at least nSmallest bytes.
    void Count(int& nCount, int nSmallest);

    // Transfers a name or a pattern. It is neither empty nor longer than LONGEST_NAME. Returns the argument when
    // writing; when reading, the text of the file, which is of use until the next call.
    const char* Text(const char* szText);

    bool IsStoring() const { return m_bStoring; }

    // Writes what is still in the buffer. When reading, throws if there is more to read.
    void Finish();

    // Returns the CRC-32 of all bytes so far.
    tDword GetCrc();

    // Returns the CRC-32 of all bytes so far and a zero byte after them.
    tDword GetCrcWithZero();

private:
    CTOVCheckedStream m_oStream;
    const bool m_bStoring;
    std::string m_sText; // the latest one that was read
};
