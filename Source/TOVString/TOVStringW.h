// Declares CTOVStringW, the twin of CTOVStringA for UTF-16 code units.
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

// Holds 16-bit text, with the operations of CTOVStringA under the same names: the block is shared, grows, is checked
// and is cut in the same way. TOVString/TOVStringA.h describes the operations; lengths, capacities and positions count
// 16-bit units.
// The differences:
//
//   string ids               do not exist: every value except NULL points to text, and LoadStringResource does nothing
//   CTOVStringW(wchar_t, n)  fills n bytes, not n characters
//   search positions         count units; FindOneOf and FindNotOneOf with a start after the text search what the block
//                            holds there
//   Replace(wchar_t, ...)    refuses only a new character of 0
//   Split                    the separator is a char, whose sign is extended to 16 bits
//   GetAt, SetAt             16 bits
//   CompareNoCase and
//   CollateNoCase            return a number of which only the sign is defined
//
// There is no lock: use all strings that share a block from one thread at a time.
class TOV_EXPORT CTOVStringW
{
public:
    // Virtual operation. Frees the block if no other string shares it.
    // clang-format off
    virtual ~CTOVStringW() TOV_OUTSIDE_BODY({})

    // An empty text, and an nCount of 0 or less, allocate no block.
    CTOVStringW() TOV_OUTSIDE_BODY(: m_nStringLength(0) {})
    // Does the same as operator=(const wchar_t*).
    CTOVStringW(const wchar_t* szString) TOV_OUTSIDE_BODY(: CTOVStringW(NewText(szString)) {})
    // Shares oOther's block. Settled: a string without a block has a holder of its own.
    CTOVStringW(const CTOVStringW& oOther);
    // clang-format on
    CTOVStringW(const CTOVStringA& oOther); // zero-extends each byte; no code page is used
    // Settled: makes room for nCount characters and sets nCount bytes to the low byte of cChar. Each character of the
    // first half then holds that byte twice, and the rest is undefined.
    CTOVStringW(wchar_t cChar, int nCount);

    // Internal: takes over a block that is filled by a text and its terminator, or has no storage.
    explicit CTOVStringW(const CTOVBuffer<wchar_t>::sNewBlock& oText)
        : m_oData(oText), m_nStringLength(static_cast<int>(oText.lSize) - (oText.lSize != 0 ? 1 : 0))
    {
    }

    // Returns the empty wide string that the whole process shares. Creates it if it does not exist. It is writable, and
    // nothing protects it.
    static CTOVStringW& Null();

    // Shares oOther's block. If the two already share a block, nothing changes, and each keeps its own length.
    const CTOVStringW& operator=(const CTOVStringW& oOther);
    const CTOVStringW& operator=(const wchar_t* szString); // copies the text; NULL and L"" empty the string
    const CTOVStringW& operator=(wchar_t cChar);           // copies one character; 0 empties the string

    // These append by ConcatInPlace. A string is appended with its whole length, including zeros inside it.
    const CTOVStringW& operator+=(const CTOVStringW& oOther);
    const CTOVStringW& operator+=(const wchar_t* szString); // throws unless szString != NULL
    const CTOVStringW& operator+=(wchar_t cChar);

    // Copies exactly nStringLength characters. Throws unless "szSrcString != NULL" and "nStringLength > 0".
    void Copy(const wchar_t* szSrcString, int nStringLength);
    // Makes the block private, fills its whole capacity with zeros, and sets the length to 0. Does nothing if the
    // length is 0.
    void Empty();
    // Always returns false: wide strings never ask the resource loader.
    bool LoadStringResource(long lStringId);

    // These return the length in units of 16 bits, whether it is 0, and the text, which is NULL if there is no block.
    // The non-const form makes no private copy.
    TOV_EXPORT_INLINE long GetLength() const { return m_nStringLength; }
    TOV_EXPORT_INLINE bool IsEmpty() const { return m_nStringLength == 0; }
    TOV_EXPORT_INLINE const wchar_t* GetString() const { return m_oData.GetBuffer(); }
    TOV_EXPORT_INLINE wchar_t* GetString() { return m_oData.GetBuffer(); }
    TOV_EXPORT_INLINE operator const wchar_t*() const { return GetString(); }
    TOV_EXPORT_INLINE const wchar_t* operator~() const { return GetString(); }
    TOV_EXPORT_INLINE const CTOVBuffer<wchar_t>* GetData() const { return &m_oData; }

    // Writes the text to a wide stream. Only on Windows do the runtime's wide streams take 16-bit units.
    template<class TTraits>
    friend std::basic_ostream<wchar_t, TTraits>& operator<<(std::basic_ostream<wchar_t, TTraits>& oStream,
                                                            const CTOVStringW& oString)
    {
        return oStream << (oString.IsEmpty() ? L"" : oString.GetString());
    }

    // These throw unless "(0 <= lIndex) && (lIndex < GetLength())".
    int GetAt(long lIndex) const;
    void SetAt(long lIndex, int nChar);
    int operator[](int nIndex) const;
    int operator[](long lIndex) const;
    template<class TIndex, std::enable_if_t<std::is_unsigned_v<TIndex>, int> = 0> int operator[](TIndex nIndex) const
    {
        return GetAt(TOVIndexing::ToLong(nIndex));
    }

    // The following operations work on the block directly. They throw unless the length is from 0 to INT_MAX-1.
    void AllocBuffer(int nLength);
    void AssignCopy(int nLength, const wchar_t* szString);
    void ConcatCopy(int nLength1, const wchar_t* sz1, int nLength2, const wchar_t* sz2);
    void ConcatInPlace(int nLength, const wchar_t* szString);
    wchar_t* GetBuffer(int nLength);
    void ReleaseBuffer(int nNewLength); // throws unless nNewLength <= the capacity

    // These search. They return the index of the first or the last match, or -1 if there is none.
    int Find(wchar_t cCharToSearch, int nStartPos = 0) const;
    int Find(const wchar_t* szSubStringToSearch, int nStartPos = 0) const;
    int ReverseFind(wchar_t cCharToSearch) const;
    int FindOneOf(const wchar_t* szCharSet, int nStartPos = 0) const;
    int FindNotOneOf(const wchar_t* szCharSet, int nStartPos = 0) const;
    int ReverseFindOneOf(const wchar_t* szCharSet, int nStartPos = 0) const;
    int ReverseFindNotOneOf(const wchar_t* szCharSet, int nStartPos = 0) const;

    // These replace every match and return the number of matches, as those of CTOVStringA do.
    int Replace(wchar_t cOldChar, wchar_t cNewChar);
    int Replace(const wchar_t* szOld, const wchar_t* szNew);

    // These return a part of the text, measured from the capacity, which includes the terminator, and not from the
    // length.
    CTOVStringW Left(int nCount) const;
    CTOVStringW Right(int nCount) const;
    CTOVStringW Mid(int nFirst, int nCount) const;
    CTOVStringW Mid(int nFirst) const;

    // These test for a prefix or a suffix, as those of CTOVStringA do.
    bool BeginsWith(const CTOVStringW& oOther) const;
    bool BeginsWithNoCase(const CTOVStringW& oOther) const;
    bool EndsWith(const CTOVStringW& oOther) const;
    bool EndsWithNoCase(const CTOVStringW& oOther) const;

    // These return the order as those of CTOVStringA do.
    int Compare(const wchar_t* szString) const;
    int CompareNoCase(const wchar_t* szString) const;
    int Collate(const wchar_t* szString) const;
    int CollateNoCase(const wchar_t* szString) const;

    // These change the text in place. Every string that shares the block sees the change.
    void MakeLower();
    void MakeUpper();
    void Reverse();

    // A separator from 0x80 up finds units from U+FF80 up. Throws for a separator of 0 if the string is not empty.
    int Split(CTOVArray<CTOVStringW>& oResult, char cSeparator) const;

    // These return the number at the start of the text, as those of CTOVStringA do.
    int AsInt(int nBase = 10) const;
    long AsLong(int nBase = 10) const;
    unsigned int AsUint(int nBase = 10) const;
    unsigned long AsUlong(int nBase = 10) const;
    float AsFloat() const;
    double AsDouble() const;
    bool AsBool() const;

    // These replace the text by a formatted one and return its number of units, as those of CTOVStringA do.
    int Format(const wchar_t* szFormat, ...);
    int FormatV(const wchar_t* szFormat, va_list pArguments);

    // This overload is chosen only if an argument is an object, and refuses to compile.
    template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
    int Format(const wchar_t*, const TArguments&...)
    {
        TOV_REFUSE_OBJECTS(TArguments);
        return 0;
    }

private:
    TOV_EXPORT_INLINE void Init() { m_nStringLength = 0; }
    static int GetSafeStringLength(const wchar_t* szString); // 0 for NULL

    // These return a new block that is filled by a text and its terminator. A text without a given length is copied up
    // to its terminator; NULL and a string id make no storage, like an empty text. The last form makes it of two texts,
    // one after the other, and with bGrows as in CTOVSharedBlock::Make.
    typedef CTOVBuffer<wchar_t>::sNewBlock tNewBlock;
    TOV_CALLED_OFTEN static tNewBlock NewText(const wchar_t* szText);
    TOV_NOINLINE static tNewBlock NewText(const wchar_t* pText, int nLength);
    TOV_NOINLINE static tNewBlock NewText(const wchar_t* pText1, int nLength1, const wchar_t* pText2, int nLength2,
                                          bool bGrows);
    static constexpr int NO_LENGTH = -1;

    // These do what BeginsWith and EndsWith do, for all texts.
    TOV_NOINLINE bool HasPrefix(const CTOVStringW& oOther) const;
    TOV_NOINLINE bool HasSuffix(const CTOVStringW& oOther) const;

    // Returns whether all units are characters of one unit, in every code page, and none of them is 0.
    TOV_CALLED_OFTEN static bool AreSingleUnits(const wchar_t* pUnits, int nCount);

    CTOVBuffer<wchar_t> m_oData; // the block; its size is the capacity, terminator included
    int m_nStringLength;         // the length of the text
};

TOV_EXPORT_INLINE CTOVStringW::CTOVStringW(const CTOVStringW& oOther)
    : m_oData(oOther.m_oData, oOther.m_oData.GetBuffer() != nullptr), m_nStringLength(oOther.m_nStringLength)
{
}

// A loop of these finds room nearly every time.
TOV_EXPORT_INLINE const CTOVStringW& CTOVStringW::operator+=(wchar_t cChar)
{
    const int nEnd = m_nStringLength;
    wchar_t* const pText = m_oData.m_lSize >= nEnd + 2L ? m_oData.GetBuffer() : m_oData.GrowInPlace(nEnd + 2L);
    if (pText != nullptr)
    {
        m_nStringLength = nEnd + 1;
        pText[nEnd] = cChar;
        pText[nEnd + 1] = 0;
    }
    else
    {
        const wchar_t acText[] = {cChar};
        ConcatInPlace(1, acText);
    }
    return *this;
}

TOV_EXPORT_INLINE const CTOVStringW& CTOVStringW::operator+=(const wchar_t* szString)
{
    TOV_ASSERT(szString != NULL);
    ConcatInPlace(GetSafeStringLength(szString), szString);
    return *this;
}

// A short prefix is compared without a call, and a short suffix with the one that proves that the text ends with it.
TOV_EXPORT_INLINE bool CTOVStringW::BeginsWith(const CTOVStringW& oOther) const
{
    const wchar_t* const szOther = oOther.m_oData.GetBuffer();
    const int nOtherLength = oOther.m_nStringLength;
    return (nOtherLength <= m_nStringLength &&
            CTOVBuffer<wchar_t>::AreShortAndEqual(m_oData.GetBuffer(), szOther, nOtherLength) && *szOther != 0 &&
            szOther[nOtherLength] == 0) ||
           HasPrefix(oOther);
}

TOV_EXPORT_INLINE bool CTOVStringW::EndsWith(const CTOVStringW& oOther) const
{
    const int nOtherLength = oOther.m_nStringLength;
    const int nPosition = m_nStringLength - nOtherLength;
    if (nOtherLength > 0 && nPosition >= 0)
    {
        const wchar_t* const szText = m_oData.GetBuffer();
        const wchar_t* const szOther = oOther.m_oData.GetBuffer();
        if (CTOVBuffer<wchar_t>::AreShortAndEqual(szText + nPosition, szOther, nOtherLength) &&
            szText[m_nStringLength] == 0 && szOther[nOtherLength] == 0 && AreSingleUnits(szText, m_nStringLength))
            return true;
    }
    return HasSuffix(oOther);
}

TOV_EXPORT_INLINE int CTOVStringW::CompareNoCase(const wchar_t* szString) const
{
    const wchar_t* const szText = m_oData.GetBuffer();
    const int nOrder =
        TOVPlatform::TOVStringW::OrderNoCase(szText != nullptr ? szText : L"", szString != nullptr ? szString : L"");
    return (nOrder > 0) - (nOrder < 0);
}

TOV_EXPORT_INLINE int CTOVStringW::GetAt(long lIndex) const
{
    TOV_ASSERT((0 <= lIndex) && (lIndex < GetLength()));
    return m_oData.GetBuffer()[lIndex];
}

TOV_EXPORT_INLINE int CTOVStringW::operator[](int nIndex) const
{
    return GetAt(nIndex);
}

TOV_EXPORT_INLINE int CTOVStringW::operator[](long lIndex) const
{
    return GetAt(lIndex);
}

TOV_EXPORT_INLINE void CTOVStringW::SetAt(long lIndex, int nChar)
{
    TOV_ASSERT((0 <= lIndex) && (lIndex < GetLength()));
    m_oData.GetBuffer()[lIndex] = static_cast<wchar_t>(nChar);
}

// These compare the texts by Compare. Without them, the conversion to const wchar_t* would compare addresses.
inline bool operator==(const CTOVStringW& oFirst, const CTOVStringW& oSecond)
{
    return oFirst.Compare(oSecond.GetString()) == 0;
}
inline bool operator!=(const CTOVStringW& oFirst, const CTOVStringW& oSecond)
{
    return !(oFirst == oSecond);
}
inline bool operator==(const CTOVStringW& oFirst, const wchar_t* szSecond)
{
    return oFirst.Compare(szSecond) == 0;
}
inline bool operator!=(const CTOVStringW& oFirst, const wchar_t* szSecond)
{
    return !(oFirst == szSecond);
}
inline bool operator==(const wchar_t* szFirst, const CTOVStringW& oSecond)
{
    return oSecond == szFirst;
}
inline bool operator!=(const wchar_t* szFirst, const CTOVStringW& oSecond)
{
    return !(oSecond == szFirst);
}

// The order is by unsigned 16-bit units, where a missing block counts as the empty text.
inline bool operator<(const CTOVStringW& oFirst, const CTOVStringW& oSecond)
{
    return oFirst.Compare(oSecond.GetString()) < 0;
}
inline bool operator>(const CTOVStringW& oFirst, const CTOVStringW& oSecond)
{
    return oSecond < oFirst;
}
inline bool operator<=(const CTOVStringW& oFirst, const CTOVStringW& oSecond)
{
    return !(oSecond < oFirst);
}
inline bool operator>=(const CTOVStringW& oFirst, const CTOVStringW& oSecond)
{
    return !(oFirst < oSecond);
}

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVStringW>;
extern template class TOV_TEMPLATE_DECLARE CTOVArray<CTOVStringW>;
