// Declares CTOVStringA, narrow text as a value type on a shared block.
#pragma once

#include <Debug/TOVFormatCheck.h>
#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBuffer.h>
#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVPlatform/TOVString.h>

#include <cstdarg>
#include <iosfwd>
#include <type_traits>

class CTOVStringA;
class CTOVStringW;

// Holds 8-bit text: a block of characters, which several strings may share, and a length, which is the string's own.
// Copies are cheap because they share the block. There is no copy on write: every string that shares the block sees
// what another one writes in place.
//
//    oA  m_nStringLength 3 --+      +---+---+---+---+---+---+
//                            +----> | a | b | c | 0 | e | 0 |     GetData()->GetSize() 6, the capacity
//    oB  m_nStringLength 3 --+      +---+---+---+---+---+---+     with the place of the terminator
//
//   shares the block       copy constructor, operator=(const CTOVStringA&), Left, Right and Mid of the whole string
//   allocates a new block  AllocBuffer, AssignCopy and Copy of at least one character, ConcatCopy,
//                          operator=(const char*), Empty of a shared block; ConcatInPlace, operator+=, FormatV,
//                          GetBuffer and Replace(text, text) if the block must grow
//   writes in place        SetAt, GetString(), ReleaseBuffer, AssignCopy of length 0, MakeLower, MakeUpper, Reverse,
//                          Replace(char, char); ConcatInPlace, operator+=, FormatV, GetBuffer and Replace(text, text)
//                          if the block need not grow
//
// A new string has no block at all: GetString() is NULL. If there is a block, the character at m_nStringLength is 0. A
// new block has exactly the requested length plus 1, so that each append in a loop costs one allocation and one copy:
// reserve room with GetBuffer first. Operations that write into the block or empty it keep its capacity.
//
// operator=(const char*) reads an argument below 0x10000, except NULL, as a string id. A source that is inside the
// string's own block is read before it is overwritten or freed.
//
// Failed checks throw TOVDebug::CTOVAssertException and leave the string unchanged, with these exceptions:
//
//   what fails                      what is left
//   a string id without a loader    the string is empty
//   AssignCopy of NULL              the string is empty
//   ConcatCopy of NULL or of a      the length is the sum, the characters are undefined
//   negative length
//   ConcatInPlace of NULL           the text is unchanged, but the block may have grown
//   Replace(text, text), if the     the length is unchanged, the block holds a part of the new text; this happens when
//   new text does not end where     another string has overwritten the terminator in a shared block, or when zeros
//   its length says                 divide a text that grows in place
//   a format that can yield no      a string without a block now has an empty one
//   character
//   a text argument of the other    the length is unchanged; the block is new if it had to grow, and holds what was
//   width that cannot be converted  printed so far: assign to the string before you use its text
//
// If memory is exhausted, std::bad_alloc is thrown. There is no lock: use all strings that share a block from one
// thread at a time.
class TOV_EXPORT CTOVStringA
{
public:
    // Virtual operation. Frees the block if no other string shares it.
    // clang-format off
    virtual ~CTOVStringA() TOV_OUTSIDE_BODY({})

    // An empty text, and an nCount of 0 or less, allocate no block.
    CTOVStringA() TOV_OUTSIDE_BODY(: m_nStringLength(0) {})
    // Does the same as operator=(const char*), string ids included.
    CTOVStringA(const char* szString)
        TOV_OUTSIDE_BODY(: CTOVStringA(NewText(szString)) { if (m_oData.m_lSize == 0) *this = szString; })
    // Shares oOther's block. Settled: a string without a block has a holder of its own.
    CTOVStringA(const CTOVStringA& oOther);
    // clang-format on
    CTOVStringA(const CTOVStringW& oOther); // copies the low 8 bits of each character; no code page is used
    CTOVStringA(char cChar, int nCount);    // repeats cChar nCount times

    // Internal: takes over a block that is filled by a text and its terminator, or has no storage.
    explicit CTOVStringA(const CTOVBuffer<char>::sNewBlock& oText)
        : m_oData(oText), m_nStringLength(static_cast<int>(oText.lSize) - (oText.lSize != 0 ? 1 : 0))
    {
    }

    // Returns the empty string that the whole process shares, for functions that return a reference and have no text.
    // Creates it if it does not exist. It is writable, and nothing protects it: every user of it sees a change.
    static CTOVStringA& Null();

    // Shares oOther's block. If the two already share a block, nothing changes, and each keeps its own length.
    const CTOVStringA& operator=(const CTOVStringA& oOther);
    // Copies the text; NULL and "" empty the string. Any other value below 0x10000 is a string id: the string is
    // emptied, and the resource loader is asked to fill it; a successful load is logged. Throws "m_pInstance != NULL"
    // if there is no loader.
    const CTOVStringA& operator=(const char* szString);
    // Copies one character; a character of 0 empties the string. A negative character is copied like any other.
    const CTOVStringA& operator=(char cChar);

    // These append by ConcatInPlace. A string is appended with its whole length, including zeros inside it.
    const CTOVStringA& operator+=(const CTOVStringA& oOther);
    const CTOVStringA& operator+=(const char* szString); // throws unless szString != NULL
    const CTOVStringA& operator+=(char cChar);

    // Copies exactly nStringLength characters, including any 0 among them. Throws unless "szSrcString != NULL" and
    // "nStringLength > 0".
    void Copy(const char* szSrcString, int nStringLength);
    // Makes the block private, fills its whole capacity with zeros, and sets the length to 0. Does nothing if the
    // length is 0.
    void Empty();
    // Asks the resource loader to fill this string, which is not emptied first. Returns the loader's result.
    bool LoadStringResource(long lStringId);

    // These return the length in bytes, without the terminator, and whether it is 0.
    TOV_EXPORT_INLINE long GetLength() const { return m_nStringLength; }
    TOV_EXPORT_INLINE bool IsEmpty() const { return m_nStringLength == 0; }
    // Returns the text, or NULL if there is no block. The non-const form makes no private copy.
    TOV_EXPORT_INLINE const char* GetString() const { return m_oData.GetBuffer(); }
    TOV_EXPORT_INLINE char* GetString() { return m_oData.GetBuffer(); }
    TOV_EXPORT_INLINE operator const tChar*() const { return GetString(); }
    TOV_EXPORT_INLINE const char* operator~() const { return GetString(); }
    TOV_EXPORT_INLINE const CTOVBuffer<char>* GetData() const { return &m_oData; }

    // Writes the text, up to its first 0, to a stream of the standard library, padded to the stream's width. Without
    // this operator, the stream would use the conversion to const char*, and the null pointer of a string without a
    // block would end all output.
    template<class TTraits>
    friend std::basic_ostream<char, TTraits>& operator<<(std::basic_ostream<char, TTraits>& oStream,
                                                         const CTOVStringA& oString)
    {
        return oStream << (oString.IsEmpty() ? "" : oString.GetString());
    }

    // GetAt and operator[] return the character as a number from 0 to 255. SetAt stores the low 8 bits into the block,
    // even if it is shared. These throw unless "(0 <= lIndex) && (lIndex < GetLength())".
    int GetAt(long lIndex) const;
    void SetAt(long lIndex, int nChar);
    int operator[](int nIndex) const;
    int operator[](long lIndex) const;
    template<class TIndex, std::enable_if_t<std::is_unsigned_v<TIndex>, int> = 0> int operator[](TIndex nIndex) const
    {
        return GetAt(TOVIndexing::ToLong(nIndex));
    }

    // The following operations work on the block directly.

    // Makes a private block for nLength characters, which are undefined except for the terminator; with nLength 0, only
    // sets the length. Throws unless "nLength >= 0" and "nLength <= INT_MAX-1".
    void AllocBuffer(int nLength);
    // Copies nLength characters into a new block; with nLength 0, ends the text at index 0 of the present block, even
    // if it is shared. Throws unless "nLength >= 0" and "nLength <= INT_MAX-1", and for NULL if nLength is not 0.
    void AssignCopy(int nLength, const char* szString);
    // Copies two parts, one after the other, into a new block. If the lengths add up to 0, nothing changes.
    void ConcatCopy(int nLength1, const char* sz1, int nLength2, const char* sz2);
    // Appends nLength characters, in place if the capacity is sufficient. Cost: at most one allocation.
    void ConcatInPlace(int nLength, const char* szString);
    // Returns the block, with room for nLength characters and the terminator; the caller may write to it until
    // ReleaseBuffer. If the block must grow, the text is lost; the length does not change.
    char* GetBuffer(int nLength);
    // Ends the text at nNewLength or, if that is -1, at its first 0. Throws unless 0 <= nNewLength <= the capacity, and
    // for -1 if there is no block.
    void ReleaseBuffer(int nNewLength);

    // These search. They return the index of the first or the last match, or -1 if there is none. In a multi-byte code
    // page, the start position for a text or a set is a number of characters, not of bytes. Find throws for a negative
    // start, for a character of 0 and for NULL.
    int Find(char cCharToSearch, int nStartPos = 0) const;
    int Find(const char* szSubStringToSearch, int nStartPos = 0) const;
    int ReverseFind(char cCharToSearch) const; // a character of 0 finds the terminator
    // These throw unless "szCharSet != NULL", if there is no block, and for a negative start.
    int FindOneOf(const char* szCharSet, int nStartPos = 0) const;
    int FindNotOneOf(const char* szCharSet, int nStartPos = 0) const;
    // These never examine index 0. They throw unless "szCharSet != NULL" and "nStartPos == 0".
    int ReverseFindOneOf(const char* szCharSet, int nStartPos = 0) const;
    int ReverseFindNotOneOf(const char* szCharSet, int nStartPos = 0) const;

    // These replace every match and return the number of matches. The form for characters throws unless "cNewChar > 0",
    // and so also for 0x80 and above. The form for texts deletes the matches if szNew is NULL, and finds nothing if
    // szOld is NULL or empty; if the block must grow, it gets the exact size. Cost: linear in the old and the new text.
    int Replace(char cOldChar, char cNewChar);
    int Replace(const char* szOld, const char* szNew);

    // These return a part of the text, measured from the capacity, which includes the terminator, and not from the
    // length: Right, and a Mid that reaches the end, contain the terminator. Right(5) of "Das ist ein test" is "test"
    // with a length of 5, and Mid(4) is "ist ein test" with a length of 13. Mid(nFirst, nCount) throws if nCount is
    // above 0 and nFirst is at the capacity or beyond it. For a string without a block, Mid(0, nCount) and Mid(nFirst)
    // return an empty string instead.
    CTOVStringA Left(int nCount) const;
    CTOVStringA Right(int nCount) const;
    CTOVStringA Mid(int nFirst, int nCount) const;
    CTOVStringA Mid(int nFirst) const;

    // These test for a prefix or a suffix, as a search would find it. Cost: a comparison; for a suffix that is there,
    // and after characters of more than one byte, also linear in the string; where there are such characters, also the
    // length of the suffix for each of its matches. The forms that ignore case copy both texts. They throw if oOther
    // has no block; the forms that ignore case also throw if oOther has been emptied.
    // Settled: a suffix that is exactly one character longer than the string counts as found, and after characters of
    // more than one byte the search for the last match misses some matches.
    bool BeginsWith(const CTOVStringA& oOther) const;
    bool BeginsWithNoCase(const CTOVStringA& oOther) const;
    bool EndsWith(const CTOVStringA& oOther) const;
    bool EndsWithNoCase(const CTOVStringA& oOther) const;

    // These return the order as -1, 0 or 1. Compare and CompareNoCase read NULL and a missing block as ""; Collate and
    // CollateNoCase throw for both.
    int Compare(const char* szString) const;
    int CompareNoCase(const char* szString) const;
    int Collate(const char* szString) const;
    int CollateNoCase(const char* szString) const;

    // These change the text in place, up to the first 0. Every string that shares the block sees the change.
    void MakeLower();
    void MakeUpper();
    void Reverse();

    // Replaces the contents of oResult by the parts between the separators, including empty ones, and returns the
    // number of parts. An empty string has no parts. Separators after a 0 inside the text are not found: what follows
    // the 0 belongs to the last part. Throws if the separator is 0 and the string is not empty; oResult is then empty.
    int Split(CTOVArray<CTOVStringA>& oResult, char cSeparator) const;

    // These return a 32-bit number, saturated, or 0 if the text does not begin with a number. With base 0, the prefix
    // of the number determines the base. AsUint reads a signed number and returns its bits. AsBool returns true only
    // for "1", and for "TRUE" in any case.
    int AsInt(int nBase = 10) const;
    long AsLong(int nBase = 10) const;
    unsigned int AsUint(int nBase = 10) const;
    unsigned long AsUlong(int nBase = 10) const;
    float AsFloat() const;
    double AsDouble() const;
    bool AsBool() const;

    // Replaces the text by a formatted one and returns its number of characters. The capacity is at least the upper
    // bound that TOVStringA::VSCPrintf returns, plus 1. Throws "nCount > 0" for a format that can yield no character.
    int Format(const char* szFormat, ...);
    int FormatV(const char* szFormat, va_list pArguments);

    // This overload is chosen only if an argument is an object, and refuses to compile.
    template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0> int Format(const char*, const TArguments&...)
    {
        TOV_REFUSE_OBJECTS(TArguments);
        return 0;
    }

private:
    TOV_EXPORT_INLINE void Init() { m_nStringLength = 0; }
    static int GetSafeStringLength(const char* szString); // 0 for NULL

    // These return a new block that is filled by a text and its terminator. A text without a given length is copied up
    // to its terminator; NULL and a string id make no storage, like an empty text. The last form makes it of two texts,
    // one after the other, and with bGrows as in CTOVSharedBlock::Make.
    typedef CTOVBuffer<char>::sNewBlock tNewBlock;
    TOV_CALLED_OFTEN static tNewBlock NewText(const char* szText);
    TOV_NOINLINE static tNewBlock NewText(const char* pText, int nLength);
    TOV_NOINLINE static tNewBlock NewText(const char* pText1, int nLength1, const char* pText2, int nLength2,
                                          bool bGrows);
    static constexpr int NO_LENGTH = -1;

    // These do what BeginsWith and EndsWith do, for all texts.
    TOV_NOINLINE bool HasPrefix(const CTOVStringA& oOther) const;
    TOV_NOINLINE bool HasSuffix(const CTOVStringA& oOther) const;

    // Returns whether all units are characters of one unit, in every code page, and none of them is 0.
    TOV_CALLED_OFTEN static bool AreSingleUnits(const char* pUnits, int nCount);

    CTOVBuffer<char> m_oData; // the block; its size is the capacity, terminator included
    int m_nStringLength;      // the length of the text
};

TOV_EXPORT_INLINE CTOVStringA::CTOVStringA(const CTOVStringA& oOther)
    : m_oData(oOther.m_oData, oOther.m_oData.GetBuffer() != nullptr), m_nStringLength(oOther.m_nStringLength)
{
}

// A loop of these finds room nearly every time.
TOV_EXPORT_INLINE const CTOVStringA& CTOVStringA::operator+=(char cChar)
{
    const int nEnd = m_nStringLength;
    char* const pText = m_oData.m_lSize >= nEnd + 2L ? m_oData.GetBuffer() : m_oData.GrowInPlace(nEnd + 2L);
    if (pText != nullptr)
    {
        m_nStringLength = nEnd + 1;
        pText[nEnd] = cChar;
        pText[nEnd + 1] = 0;
    }
    else
    {
        const char acText[] = {cChar};
        ConcatInPlace(1, acText);
    }
    return *this;
}

TOV_EXPORT_INLINE const CTOVStringA& CTOVStringA::operator+=(const char* szString)
{
    TOV_ASSERT(szString != NULL);
    ConcatInPlace(GetSafeStringLength(szString), szString);
    return *this;
}

// A short prefix is compared without a call, and a short suffix with the one that proves that the text ends with it.
TOV_EXPORT_INLINE bool CTOVStringA::BeginsWith(const CTOVStringA& oOther) const
{
    const char* const szOther = oOther.m_oData.GetBuffer();
    const int nOtherLength = oOther.m_nStringLength;
    return (nOtherLength <= m_nStringLength &&
            CTOVBuffer<char>::AreShortAndEqual(m_oData.GetBuffer(), szOther, nOtherLength) && *szOther != 0 &&
            szOther[nOtherLength] == 0) ||
           HasPrefix(oOther);
}

TOV_EXPORT_INLINE bool CTOVStringA::EndsWith(const CTOVStringA& oOther) const
{
    const int nOtherLength = oOther.m_nStringLength;
    const int nPosition = m_nStringLength - nOtherLength;
    if (nOtherLength > 0 && nPosition >= 0)
    {
        const char* const szText = m_oData.GetBuffer();
        const char* const szOther = oOther.m_oData.GetBuffer();
        if (CTOVBuffer<char>::AreShortAndEqual(szText + nPosition, szOther, nOtherLength) &&
            szText[m_nStringLength] == 0 && szOther[nOtherLength] == 0 && AreSingleUnits(szText, m_nStringLength))
            return true;
    }
    return HasSuffix(oOther);
}

TOV_EXPORT_INLINE int CTOVStringA::CompareNoCase(const char* szString) const
{
    const char* const szText = m_oData.GetBuffer();
    const int nOrder =
        TOVPlatform::TOVStringA::OrderNoCase(szText != nullptr ? szText : "", szString != nullptr ? szString : "");
    return (nOrder > 0) - (nOrder < 0);
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

// These compare the texts by Compare. Without them, the conversion to const char* would compare addresses.
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

// This is the order of the library's ordered tables: by unsigned bytes, where a missing block counts as the empty text.
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
