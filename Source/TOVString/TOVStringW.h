// Wide text: CTOVStringW, the twin of CTOVStringA for UTF-16 code units.
#pragma once

#include <Debug/TOVFormatCheck.h>
#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBuffer.h>
#include <TOVDesignPatterns/TOVDynamicSingleton.h>

#include <cstdarg>
#include <iosfwd>

class CTOVStringA;
class CTOVStringW;

// 16-bit text with the operations of CTOVStringA under the same names: the same sharing and growth, the same checks,
// the same cutting. <TOVString/TOVStringA.h> is the contract; lengths, capacities and positions count 16-bit units.
// The differences:
//
//   string ids               there are none: every value but NULL is a pointer to text, LoadStringResource does nothing
//   CTOVStringW(wchar_t, n)  fills n bytes, not n characters
//   search positions         plain arithmetic, one unit per character; FindOneOf and FindNotOneOf that start after the
//                            text search what the block holds there
//   Replace(wchar_t, ...)    refuses only a new character of 0
//   Split                    the separator is a char, extended with its sign
//   GetAt, SetAt             16 bits
//   CompareNoCase and
//   CollateNoCase            promise the sign alone
//
// No lock: one thread at a time, for all strings that share a block together.
class TOV_EXPORT CTOVStringW
{
public:
    // Virtual operation. Frees the block if no other string shares it.
    virtual ~CTOVStringW();

    // Empty text and nCount <= 0 allocate no block.
    CTOVStringW();
    CTOVStringW(const wchar_t* szString);
    CTOVStringW(const CTOVStringW& oOther); // shares oOther's block
    CTOVStringW(const CTOVStringA& oOther); // each byte zero-extended, no code page
    // Settled: room for nCount characters, of which nCount bytes are set to the low byte of cChar. The first half of
    // the characters holds that byte twice each, the rest is undefined.
    CTOVStringW(wchar_t cChar, int nCount);

    // The process's shared empty wide string, created on demand. It is writable, and nothing protects it.
    static CTOVStringW& Null();

    // Shares oOther's block. Nothing happens when the two share a block already: each keeps its own length.
    const CTOVStringW& operator=(const CTOVStringW& oOther);
    const CTOVStringW& operator=(const wchar_t* szString); // copies the text; NULL and L"" empty the string
    const CTOVStringW& operator=(wchar_t cChar);           // one character; 0 empties the string

    const CTOVStringW& operator+=(const CTOVStringW& oOther);
    const CTOVStringW& operator+=(const wchar_t* szString); // throws unless szString != NULL
    const CTOVStringW& operator+=(wchar_t cChar);

    // Throws unless szSrcString != NULL and nStringLength > 0.
    void Copy(const wchar_t* szSrcString, int nStringLength);
    void Empty();
    // Always returns false: wide strings never ask the resource loader.
    bool LoadStringResource(long lStringId);

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

    // They throw unless 0 <= lIndex < GetLength().
    int GetAt(long lIndex) const;
    void SetAt(long lIndex, int nChar);
    int operator[](int nIndex) const;
    int operator[](long lIndex) const;

    // The raw store. All throw unless 0 <= nLength <= INT_MAX-1.
    void AllocBuffer(int nLength);
    void AssignCopy(int nLength, const wchar_t* szString);
    void ConcatCopy(int nLength1, const wchar_t* sz1, int nLength2, const wchar_t* sz2);
    void ConcatInPlace(int nLength, const wchar_t* szString);
    wchar_t* GetBuffer(int nLength);
    void ReleaseBuffer(int nNewLength); // throws unless nNewLength <= the capacity

    // Search. The result is the index of the first or last hit, or -1 if there is none.
    int Find(wchar_t cCharToSearch, int nStartPos = 0) const;
    int Find(const wchar_t* szSubStringToSearch, int nStartPos = 0) const;
    int ReverseFind(wchar_t cCharToSearch) const;
    int FindOneOf(const wchar_t* szCharSet, int nStartPos = 0) const;
    int FindNotOneOf(const wchar_t* szCharSet, int nStartPos = 0) const;
    int ReverseFindOneOf(const wchar_t* szCharSet, int nStartPos = 0) const;
    int ReverseFindNotOneOf(const wchar_t* szCharSet, int nStartPos = 0) const;

    int Replace(wchar_t cOldChar, wchar_t cNewChar);
    int Replace(const wchar_t* szOld, const wchar_t* szNew);

    // Cutting is measured against the capacity with its terminator, not against the length.
    CTOVStringW Left(int nCount) const;
    CTOVStringW Right(int nCount) const;
    CTOVStringW Mid(int nFirst, int nCount) const;
    CTOVStringW Mid(int nFirst) const;

    bool BeginsWith(const CTOVStringW& oOther) const;
    bool BeginsWithNoCase(const CTOVStringW& oOther) const;
    bool EndsWith(const CTOVStringW& oOther) const;
    bool EndsWithNoCase(const CTOVStringW& oOther) const;

    int Compare(const wchar_t* szString) const;
    int CompareNoCase(const wchar_t* szString) const;
    int Collate(const wchar_t* szString) const;
    int CollateNoCase(const wchar_t* szString) const;

    void MakeLower();
    void MakeUpper();
    void Reverse();

    // A separator from 0x80 up searches for a unit from U+FF80 up. Throws for a separator of 0.
    int Split(CTOVArray<CTOVStringW>& oResult, char cSeparator) const;

    int AsInt(int nBase = 10) const;
    long AsLong(int nBase = 10) const;
    unsigned int AsUint(int nBase = 10) const;
    unsigned long AsUlong(int nBase = 10) const;
    float AsFloat() const;
    double AsDouble() const;
    bool AsBool() const;

    int Format(const wchar_t* szFormat, ...);
    int FormatV(const wchar_t* szFormat, va_list pArguments);

    // Refuses, at compile time, an object among the arguments.
    template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
    int Format(const wchar_t*, const TArguments&...)
    {
        TOV_REFUSE_OBJECTS(TArguments);
        return 0;
    }

private:
    TOV_EXPORT_INLINE void Init() { m_nStringLength = 0; }
    static int GetSafeStringLength(const wchar_t* szString); // 0 for NULL

    CTOVBuffer<wchar_t> m_oData; // the store; its size is the capacity, terminator included
    int m_nStringLength;         // characters that count as the text
};

TOV_EXPORT_INLINE const CTOVStringW& CTOVStringW::operator+=(const wchar_t* szString)
{
    TOV_ASSERT(szString != NULL);
    ConcatInPlace(GetSafeStringLength(szString), szString);
    return *this;
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

// They compare the text by Compare. Without them the conversion to const wchar_t* would compare addresses.
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
