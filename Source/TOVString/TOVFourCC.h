// Declares CTOVFourCC, a four character code.
#pragma once

#include <Debug/TOVBase.h>

// Holds a tag of four characters, which can be read as a text, or as a 32-bit number whose lowest byte is the first
// character:
//
//     'a' 'b' 'c' 'd'  0        ToString() "abcd", ToDword() 0x64636261
//
// It is a plain value and has no lock: use it from one thread at a time.
class TOV_EXPORT CTOVFourCC
{
public:
    // Virtual operation.
    virtual ~CTOVFourCC();

    // The default constructor gives the value 0. The constructors from a number and from a text do the same as
    // FromDword and FromString.
    CTOVFourCC();
    CTOVFourCC(const CTOVFourCC& oOther);
    CTOVFourCC(unsigned long dwFourCC);
    CTOVFourCC(const char* szFourCC);
    const CTOVFourCC& operator=(const CTOVFourCC& oOther);

    // Sets the value from a number such as the character constant 'abcd': its highest byte becomes the first character.
    void FromDword(unsigned long dwFourCC);
    // Sets the value from a number as ToDword returns it: its lowest byte becomes the first character.
    void FromFourCC(unsigned long dwFourCC);
    // Sets the value from the first four characters. Throws unless "TOVPlatform::TOVString::Length(szFourCC) >= 4".
    // Settled: the characters are added up as signed numbers, so that a character from 0x80 up lowers the one after it
    // by 1.
    void FromString(const char* szFourCC);

    // These return the 32-bit number. Settled: this is not the inverse of FromDword.
    unsigned long ToDword() const;
    operator unsigned long() const;

    // These return the four characters with a terminator, valid until the code changes or is destroyed. A character of
    // 0 ends the text early.
    const char* ToString() const;
    operator const char*() const;

    // These get or set one character. Both throw unless "nIndex >= 0" and "nIndex < 4".
    char GetAt(int nIndex) const;
    void SetAt(int nIndex, char cCharacter);

    // Settled: returns true if the two codes are equal, not an order.
    bool Compare(const CTOVFourCC& oOther) const;
    // Returns whether the value is 0.
    bool IsEmpty() const;

    // Reverses the order of the four characters.
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
