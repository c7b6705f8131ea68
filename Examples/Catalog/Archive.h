// Declares CArchive, which writes values to a stream, or reads them, by the same sequence of calls.
#pragma once

#include <Debug/TOVBase.h>
#include <TOVString/TOVStringA.h>

class ITOVStream;

// Each operation writes its argument or reads into it, depending on the stream's direction. As a stream does not report
// a short read, reading uses the known size of the file: a read past the end throws CCatalogError, and so does an
// impossible number.
class CArchive
{
public:
    // Makes an archive for writing.
    explicit CArchive(ITOVStream& oStream);

    // Makes an archive for reading a file of ullSize bytes.
    CArchive(ITOVStream& oStream, unsigned long long ullSize);

    // Begins a section. Returns its version: nVersion when writing, that of the file when reading. Throws if the
    // version is newer than nVersion, or has never existed.
    int Begin(int nVersion);
    void End();

    // szWhenShort is the error message for a file that ends too early.
    void Bytes(void* pBytes, int nSize, const char* szWhenShort);
    void Number(int& nValue);
    void Word(tDword& dwValue);

    // Transfers the number of the elements that follow, each of which has at least nSmallest bytes.
    void Count(int& nCount, int nSmallest);

    // Transfers a name or a pattern. It is neither empty nor longer than LONGEST_NAME.
    void Text(CTOVStringA& oText);

    // Throws if there is more to read.
    void ExpectEnd() const;

    // Returns the CRC-32 of all bytes so far.
    tDword GetCrc() const;

    // Returns the CRC-32 of all bytes so far and a zero byte after them.
    tDword GetCrcWithZero() const;

private:
    void Pass(const void* pBytes, int nSize);
    void Require(unsigned long long ullSize, const char* szWhenShort) const;

    ITOVStream& m_oStream;
    unsigned long long m_ullLeft;
    tDword m_dwCrc;
};
