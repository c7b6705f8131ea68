// Narrow text: CTOVStringA, a value type on a shared block.
#pragma once

#include <Debug/TOVFormatCheck.h>
#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBuffer.h>
#include <TOVDesignPatterns/TOVDynamicSingleton.h>

#include <cstdarg>
#include <iosfwd>

class CTOVStringA;
class CTOVStringW;

// 8-bit text: a block of characters, which several strings may share, and a length, which each string has for itself.
// Copies are cheap because they share the block. This is not copy on write: what one string writes in place is seen by
// every string that shares the block.
//
//    oA  m_nStringLength 3 --+      +---+---+---+---+---+---+
//                            +----> | a | b | c | 0 | e | 0 |     GetData()->GetSize() 6, the capacity
//    oB  m_nStringLength 3 --+      +---+---+---+---+---+---+     with the place of the terminator
//
//   shares the block     copy constructor, operator=(const CTOVStringA&), Left, Right and Mid of the whole string
//   takes a new block    AllocBuffer, AssignCopy and Copy above 0, ConcatCopy, operator=(const char*), Empty of a
//                        shared block; ConcatInPlace, operator+=, FormatV, GetBuffer and Replace(text, text) that
//                        must grow
//   writes where it is   SetAt, GetString(), ReleaseBuffer, AssignCopy of 0, MakeLower, MakeUpper, Reverse,
//                        Replace(char, char); ConcatInPlace, operator+=, FormatV, GetBuffer and Replace(text, text)
//                        that need not grow
//
// A new string has no block at all: GetString() is NULL. Where there is a block, the character at m_nStringLength is 0.
// A new block has exactly the requested length plus 1, so that appending in a loop costs one allocation and one copy
// per call: reserve room with GetBuffer first. Operations that write into the block or empty it keep its capacity.
//
// operator=(const char*) takes an argument below 0x10000 as a string id. A source that lies inside the string's own
// block is read before it is overwritten or freed.
//
// Failed checks throw TOVDebug::CTOVAssertException and leave the string as it was, with these exceptions:
//
//   a string id without a loader    the string is empty
//   AssignCopy of NULL              the string is empty
//   ConcatCopy of NULL or of a      the length is the sum, the characters are undefined
//   negative length
//   ConcatInPlace of NULL           the capacity has grown if it had to
//   Replace(text, text) that does   the length is unchanged, the block holds the new text as far as it was made; this
//   not end where it should         happens when a sharer has overwritten the terminator, or zeros split a text that
//                                   grows in place
//   a format without a character    a string without a block has an empty one
//   a print that fails              the length is unchanged, the block is a new one if it had to grow and holds what
//                                   the print has written: assign to the string before you use its text; this happens
//                                   when a text argument has no form in the other width
//
// Exhausted memory surfaces as std::bad_alloc. No lock: one thread at a time, for all strings that share a block
// together.
class TOV_EXPORT CTOVStringA
{
public:
    // Virtual operation. Frees the block if no other string shares it.
    virtual ~CTOVStringA();

    // Empty text and nCount <= 0 allocate no block.
    CTOVStringA();
    CTOVStringA(const char* szString);      // does the same as operator=(const char*), string ids included
    CTOVStringA(const CTOVStringA& oOther); // shares oOther's block
    CTOVStringA(const CTOVStringW& oOther); // the low 8 bits of each character, no code page
    CTOVStringA(char cChar, int nCount);    // nCount times cChar

    // The process's shared empty string, for functions that return a reference and have no text. Created on demand.
    // It is writable, and nothing protects it: a change is seen by every user of it.
    static CTOVStringA& Null();

    // Shares oOther's block. Nothing happens when the two share a block already: each keeps its own length.
    const CTOVStringA& operator=(const CTOVStringA& oOther);
    // Copies the text; NULL and "" empty the string. For a value below 0x10000, a string id, it empties the string and
    // asks the resource loader to fill it; a successful load is logged. Throws "m_pInstance != NULL" without a loader.
    const CTOVStringA& operator=(const char* szString);
    // Copies one character; 0 empties the string. A negative character gives a text of that one character.
    const CTOVStringA& operator=(char cChar);

    // Append by ConcatInPlace. A string is appended with its whole length, zeros inside it included.
    const CTOVStringA& operator+=(const CTOVStringA& oOther);
    const CTOVStringA& operator+=(const char* szString); // throws unless szString != NULL
    const CTOVStringA& operator+=(char cChar);

    // Copies exactly nStringLength characters, including any 0 among them.
    // Throws unless szSrcString != NULL and nStringLength > 0.
    void Copy(const char* szSrcString, int nStringLength);
    // Fills the whole capacity, which it keeps, with zeros, and sets the length to 0. Does nothing for a length of 0.
    void Empty();
    // Asks the resource loader to fill this string, which is not emptied first. Returns the loader's result.
    bool LoadStringResource(long lStringId);

    TOV_EXPORT_INLINE long GetLength() const { return m_nStringLength; }
    TOV_EXPORT_INLINE bool IsEmpty() const { return m_nStringLength == 0; }
    // The text, or NULL without a block. The writable form makes no private copy.
    TOV_EXPORT_INLINE const char* GetString() const { return m_oData.GetBuffer(); }
    TOV_EXPORT_INLINE char* GetString() { return m_oData.GetBuffer(); }
    TOV_EXPORT_INLINE operator const tChar*() const { return GetString(); }
    TOV_EXPORT_INLINE const char* operator~() const { return GetString(); }
    TOV_EXPORT_INLINE const CTOVBuffer<char>* GetData() const { return &m_oData; }

    // Writes the text, up to its first 0, to a stream of the standard library, padded to the stream's width.
    // Without it the stream would use the conversion above, whose null pointer for a string without a block ends all
    // output.
    template<class TTraits>
    friend std::basic_ostream<char, TTraits>& operator<<(std::basic_ostream<char, TTraits>& oStream,
                                                         const CTOVStringA& oString)
    {
        return oStream << (oString.IsEmpty() ? "" : oString.GetString());
    }

    // GetAt and operator[] give the character as 0 to 255. SetAt stores the low 8 bits into the block, shared or not.
    // They throw unless 0 <= lIndex < GetLength().
    int GetAt(long lIndex) const;
    void SetAt(long lIndex, int nChar);
    int operator[](int nIndex) const;
    int operator[](long lIndex) const;

    // The raw store, from which the rest is built.

    // Makes a private block for nLength characters, which are undefined except for the terminator; 0 only sets the
    // length. Throws unless 0 <= nLength <= INT_MAX-1.
    void AllocBuffer(int nLength);
    // Copies nLength characters into a new block; 0 terminates the text at once in the present block, shared or not.
    // Throws unless 0 <= nLength <= INT_MAX-1, and for NULL with a length above 0.
    void AssignCopy(int nLength, const char* szString);
    // Copies two parts, one after the other, into a new block. Two lengths that add up to 0 change nothing.
    void ConcatCopy(int nLength1, const char* sz1, int nLength2, const char* sz2);
    // Appends nLength characters, in place where the capacity allows it. Cost: at most one allocation.
    void ConcatInPlace(int nLength, const char* szString);
    // The block, with room for nLength characters and the terminator, for the caller to write into until ReleaseBuffer.
    // Growing loses the text; the length is not changed.
    char* GetBuffer(int nLength);
    // Ends the text at nNewLength, or at its first 0 for -1. Throws unless 0 <= nNewLength <= the capacity, and also
    // for -1 without a block.
    void ReleaseBuffer(int nNewLength);

    // Search. The result is the index of the first or last hit, or -1 if there is none. In a multi-byte code page the
    // start of a search for text or for a set counts characters, not bytes. Find throws for a negative start, for a
    // character of 0 and for NULL.
    int Find(char cCharToSearch, int nStartPos = 0) const;
    int Find(const char* szSubStringToSearch, int nStartPos = 0) const;
    int ReverseFind(char cCharToSearch) const; // 0 finds the terminator
    // They throw unless szCharSet != NULL, on a string without a block and for a negative start.
    int FindOneOf(const char* szCharSet, int nStartPos = 0) const;
    int FindNotOneOf(const char* szCharSet, int nStartPos = 0) const;
    // They never look at index 0. They throw unless szCharSet != NULL and nStartPos == 0.
    int ReverseFindOneOf(const char* szCharSet, int nStartPos = 0) const;
    int ReverseFindNotOneOf(const char* szCharSet, int nStartPos = 0) const;

    // Both replace every hit and return the number of hits. The first throws unless cNewChar > 0, which also refuses
    // 0x80 and above. In the second a NULL szNew deletes the hits, and a NULL or empty szOld finds nothing; the block
    // grows to the exact size if it must. Cost: linear in the old and the new text.
    int Replace(char cOldChar, char cNewChar);
    int Replace(const char* szOld, const char* szNew);

    // Cutting, measured against the capacity with its terminator, not against the length: Right, and a Mid that reaches
    // the end, take the terminator with them. Right(5) of "Das ist ein test" is "test" with a length of 5, Mid(4) is
    // "ist ein test" with a length of 13. Mid(nFirst, nCount) throws for a start at or beyond the capacity and a count
    // above 0, save that Mid(0, nCount) of a string without a block is empty; Mid(nFirst) is empty there.
    CTOVStringA Left(int nCount) const;
    CTOVStringA Right(int nCount) const;
    CTOVStringA Mid(int nFirst, int nCount) const;
    CTOVStringA Mid(int nFirst) const;

    // Prefix and suffix tests by search. Cost: linear in the string if the runtime's search is; the forms without case
    // copy both texts. They throw for an oOther without a block, and the forms without case also for an emptied one.
    // Settled: a suffix exactly one character longer than the string counts as found, and after characters of more than
    // one byte the search for the last hit leaves out some hits.
    bool BeginsWith(const CTOVStringA& oOther) const;
    bool BeginsWithNoCase(const CTOVStringA& oOther) const;
    bool EndsWith(const CTOVStringA& oOther) const;
    bool EndsWithNoCase(const CTOVStringA& oOther) const;

    // The order as -1, 0 or 1. Compare and CompareNoCase read NULL and a missing block as "", the others throw for
    // them.
    int Compare(const char* szString) const;
    int CompareNoCase(const char* szString) const;
    int Collate(const char* szString) const;
    int CollateNoCase(const char* szString) const;

    // They change the text in place, up to the first 0. Every string that shares the block sees the change.
    void MakeLower();
    void MakeUpper();
    void Reverse();

    // Replaces oResult by the parts between the separators, empty ones included, and returns the number of parts. An
    // empty string has none. What follows a 0 inside the text belongs to the last part. Throws for a separator of 0
    // and a string that is not empty, and leaves oResult empty then.
    int Split(CTOVArray<CTOVStringA>& oResult, char cSeparator) const;

    // Numbers of 32 bits, saturated; 0 for text that does not begin with a number. Base 0 lets a prefix decide. AsUint
    // parses a signed number and returns its bits. AsBool is true for "1", and for "TRUE" in any case, alone.
    int AsInt(int nBase = 10) const;
    long AsLong(int nBase = 10) const;
    unsigned int AsUint(int nBase = 10) const;
    unsigned long AsUlong(int nBase = 10) const;
    float AsFloat() const;
    double AsDouble() const;
    bool AsBool() const;

    // Replaces the text by a formatted one and returns its number of characters. The capacity is the platform's
    // generous estimate plus 1. Throws "nCount > 0" for a format that can yield no character.
    int Format(const char* szFormat, ...);
    int FormatV(const char* szFormat, va_list pArguments);

    // Refuses, at compile time, an object among the arguments.
    template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0> int Format(const char*, const TArguments&...)
    {
        TOV_REFUSE_OBJECTS(TArguments);
        return 0;
    }

private:
    TOV_EXPORT_INLINE void Init() { m_nStringLength = 0; }
    static int GetSafeStringLength(const char* szString); // 0 for NULL

    CTOVBuffer<char> m_oData; // the store; its size is the capacity, terminator included
    int m_nStringLength;      // characters that count as the text
};

TOV_EXPORT_INLINE const CTOVStringA& CTOVStringA::operator+=(const char* szString)
{
    TOV_ASSERT(szString != NULL);
    ConcatInPlace(GetSafeStringLength(szString), szString);
    return *this;
}

TOV_EXPORT_INLINE int CTOVStringA::GetAt(long lIndex) const
{
    TOV_ASSERT((0 <= lIndex) && (lIndex < GetLength()));
    return static_cast<tUchar>(m_oData.GetBuffer()[lIndex]);
}

TOV_EXPORT_INLINE int CTOVStringA::operator[](int nIndex) const
{
    return GetAt(nIndex);
}

TOV_EXPORT_INLINE int CTOVStringA::operator[](long lIndex) const
{
    return GetAt(lIndex);
}

TOV_EXPORT_INLINE void CTOVStringA::SetAt(long lIndex, int nChar)
{
    TOV_ASSERT((0 <= lIndex) && (lIndex < GetLength()));
    m_oData.GetBuffer()[lIndex] = static_cast<char>(nChar);
}

// They compare the text by Compare. Without them the conversion to const char* would compare addresses.
inline bool operator==(const CTOVStringA& oFirst, const CTOVStringA& oSecond)
{
    return oFirst.Compare(oSecond.GetString()) == 0;
}
inline bool operator!=(const CTOVStringA& oFirst, const CTOVStringA& oSecond)
{
    return !(oFirst == oSecond);
}
inline bool operator==(const CTOVStringA& oFirst, const char* szSecond)
{
    return oFirst.Compare(szSecond) == 0;
}
inline bool operator!=(const CTOVStringA& oFirst, const char* szSecond)
{
    return !(oFirst == szSecond);
}
inline bool operator==(const char* szFirst, const CTOVStringA& oSecond)
{
    return oSecond == szFirst;
}
inline bool operator!=(const char* szFirst, const CTOVStringA& oSecond)
{
    return !(oSecond == szFirst);
}

// The order of the library's ordered tables: by unsigned bytes, where a missing block counts as the empty text.
inline bool operator<(const CTOVStringA& oFirst, const CTOVStringA& oSecond)
{
    return oFirst.Compare(oSecond.GetString()) < 0;
}
inline bool operator>(const CTOVStringA& oFirst, const CTOVStringA& oSecond)
{
    return oSecond < oFirst;
}
inline bool operator<=(const CTOVStringA& oFirst, const CTOVStringA& oSecond)
{
    return !(oSecond < oFirst);
}
inline bool operator>=(const CTOVStringA& oFirst, const CTOVStringA& oSecond)
{
    return !(oFirst < oSecond);
}

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVStringA>;
extern template class TOV_TEMPLATE_DECLARE CTOVArray<CTOVStringA>;
