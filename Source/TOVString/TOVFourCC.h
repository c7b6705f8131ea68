// Four character code: CTOVFourCC.
#pragma once

#include <Debug/TOVBase.h>

// A tag of four characters, seen as a text or as a 32-bit number whose lowest byte is the first character:
//
//     'a' 'b' 'c' 'd'  0        ToString() "abcd", ToDword() 0x64636261
//
// A plain value. No lock: one thread at a time.
class TOV_EXPORT CTOVFourCC
{
public:
    // Virtual operation.
    virtual ~CTOVFourCC();

    // The first gives the value 0; the others do the same as FromDword and FromString.
    CTOVFourCC();
    CTOVFourCC(const CTOVFourCC& oOther);
    CTOVFourCC(unsigned long dwFourCC);
    CTOVFourCC(const char* szFourCC);
    const CTOVFourCC& operator=(const CTOVFourCC& oOther);

    // Takes a number written as a character constant: its highest byte becomes the first character.
    void FromDword(unsigned long dwFourCC);
    // Takes a number as ToDword returns it: its lowest byte becomes the first character.
    void FromFourCC(unsigned long dwFourCC);
    // Takes the first four characters. Throws unless "TOVPlatform::TOVString::Length(szFourCC) >= 4". Settled: they are
    // added up as signed numbers, so that a character from 0x80 up makes the next one lower by 1.
    void FromString(const char* szFourCC);

    // The number, of 32 bits. Settled: this is not the inverse of FromDword.
    unsigned long ToDword() const;
    operator unsigned long() const;

    // The four characters with a terminator, valid until the code changes or is destroyed. A 0 among them ends the text
    // early.
    const char* ToString() const;
    operator const char*() const;

    // Get or set one character. Both throw unless "nIndex >= 0" and "nIndex < 4".
    char GetAt(int nIndex) const;
    void SetAt(int nIndex, char cCharacter);

    // Settled: true if the two are equal.
    bool Compare(const CTOVFourCC& oOther) const;
    // Whether the value is 0.
    bool IsEmpty() const;

    // The last character becomes the first.
    void Reverse();

private:
    void Set(tDword dwFourCC);

    tDword m_dwFourCC;
    char m_cTerminator; // directly after the characters, so that the two form one text
};

TOV_EXPORT_INLINE char CTOVFourCC::GetAt(int nIndex) const
{
    TOV_ASSERT(nIndex >= 0);
    TOV_ASSERT(nIndex < 4);
    return ToString()[nIndex];
}

TOV_EXPORT_INLINE void CTOVFourCC::SetAt(int nIndex, char cCharacter)
{
    TOV_ASSERT(nIndex >= 0);
    TOV_ASSERT(nIndex < 4);
    reinterpret_cast<char*>(&m_dwFourCC)[nIndex] = cCharacter;
}
