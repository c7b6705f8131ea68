// Declares CArchive, which writes values to a stream, or reads them, by the same sequence of calls.
#pragma once

#include <Debug/TOVBase.h>
#include <TOVString/TOVStringA.h>

#include <vector>

class ITOVStream;

// Each operation writes its argument or reads into it, depending on the stream's direction. As a stream does not report
// a short read, reading uses the known size of the file: a read past the end throws CCatalogError, and so do an
// impossible number and a stream that does not move on by what it should have read. The stream is used in large blocks,
// as values have few bytes each: a section begins with its version, as the stream itself would write it.
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

    // Transfers a name or a pattern. It is neither empty nor longer than LONGEST_NAME.
    void Text(CTOVStringA& oText);

    // Writes what is still in the buffer. When reading, throws if there is more to read.
    void Finish();

    // Returns the CRC-32 of all bytes so far.
    tDword GetCrc();

    // Returns the CRC-32 of all bytes so far and a zero byte after them.
    tDword GetCrcWithZero();

private:
    void Fill();
    void Empty();
    void Sum();
    void Require(unsigned long long ullSize, const char* szWhenShort) const;

    ITOVStream& m_oStream;
    const bool m_bStoring;
    unsigned long long m_ullInStream; // bytes that the stream still has, when reading
    unsigned long long m_ullRead = 0; // bytes that have been read from it
    std::vector<char> m_aBuffer;
    std::size_t m_nUsed = 0;   // the bytes of the buffer that have been passed
    std::size_t m_nFilled = 0; // the bytes that it holds, when reading
    std::size_t m_nSummed = 0; // the bytes that the CRC-32 contains
    tDword m_dwCrc = 0xFFFFFFFF;
};
