// Values in a stream, in one calling sequence for writing and reading.
#pragma once

#include <Debug/TOVBase.h>
#include <TOVString/TOVStringA.h>

class ITOVStream;

// Each operation writes its argument, or reads into it, by the stream's direction. Reading goes by the known size of
// the file, because a stream does not report a short read: what would pass the end throws CCatalogError, as does a
// number that cannot be.
class CArchive
{
public:
    // For writing.
    explicit CArchive(ITOVStream& oStream);

    // For reading a file of so many bytes.
    CArchive(ITOVStream& oStream, unsigned long long ullSize);

    // Opens a section. Returns its version: nVersion when writing, what stands in the file when reading. Throws for a
    // newer version than nVersion, and for one that never was.
    int Begin(int nVersion);
    void End();

    // szWhenShort: what to say of a file that ends too early.
    void Bytes(void* pBytes, int nSize, const char* szWhenShort);
    void Number(int& nValue);
    void Word(tDword& dwValue);

    // A number of things of at least nSmallest bytes each.
    void Count(int& nCount, int nSmallest);

    // A name or a pattern: neither empty nor longer than LONGEST_NAME.
    void Text(CTOVStringA& oText);

    // Throws if there is more to read.
    void ExpectEnd() const;

    // CRC-32 of all bytes so far.
    tDword GetCrc() const;

    // CRC-32 of all bytes so far and a zero byte after them.
    tDword GetCrcWithZero() const;

private:
    void Pass(const void* pBytes, int nSize);
    void Require(unsigned long long ullSize, const char* szWhenShort) const;

    ITOVStream& m_oStream;
    unsigned long long m_ullLeft;
    tDword m_dwCrc;
};
