// The narrow and the wide string as types, so that one test covers both; texts for them, and what they hold.
#pragma once

#include "Support/TOVConfirmedChecks.h"
#include "Support/TOVTestSupport.h"

#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <cstddef>
#include <ostream>
#include <string>

template<class TString> struct sStringTraits;

template<> struct sStringTraits<CTOVStringA>
{
    typedef char tUnit;
    static constexpr bool IS_NARROW = true;
    static constexpr const char* NAME = "CTOVStringA";
    static constexpr const char* SOURCE = "TOVString/TOVStringA";
};

template<> struct sStringTraits<CTOVStringW>
{
    typedef wchar_t tUnit;
    static constexpr bool IS_NARROW = false;
    static constexpr const char* NAME = "CTOVStringW";
    static constexpr const char* SOURCE = "TOVString/TOVStringW";
};

template<class TString> using tUnitOf = typename sStringTraits<TString>::tUnit;

typedef testing::Types<CTOVStringA, CTOVStringW> tStrings;

struct sStringName
{
    template<class TString> static std::string GetName(int) { return sStringTraits<TString>::NAME; }
};

// The form of a literal that the string takes. No allocation.
template<class TString, class TNarrow, class TWide>
constexpr auto ChooseLiteral([[maybe_unused]] const TNarrow& oNarrow, [[maybe_unused]] const TWide& oWide)
{
    if constexpr (sStringTraits<TString>::IS_NARROW)
        return +oNarrow;
    else
        return +oWide;
}

inline constexpr char ChooseCharacter(char cNarrow, wchar_t, char)
{
    return cNarrow;
}

inline constexpr wchar_t ChooseCharacter(char, wchar_t cWide, wchar_t)
{
    return cWide;
}

// A literal and a character of the typed test's string. A byte above 127 is the character of the same number.
#define TXT(szLiteral) ChooseLiteral<TypeParam>(szLiteral, L##szLiteral)
#define CHR(cLiteral) ChooseCharacter(cLiteral, L##cLiteral, tUnitOf<TypeParam>())

// A unit as a byte, for messages and comparisons; '?' stands for one of more than 8 bits.
inline char ByteOf(char cUnit)
{
    return cUnit;
}

inline char ByteOf(wchar_t cUnit)
{
    return cUnit > 0xFF ? '?' : static_cast<char>(cUnit);
}

template<class T> std::string BytesOf(const T* pUnits, long lCount)
{
    std::string sBytes;
    for (long lIndex = 0; lIndex < lCount; ++lIndex)
        sBytes += ByteOf(pUnits[lIndex]);
    return sBytes;
}

template<class TString> TString StringOf(const std::string& sText)
{
    return TString(CTOVStringA(sText.c_str()));
}

template<class TString> long CapacityOf(const TString& oString)
{
    return oString.GetData()->GetSize();
}

// The whole block, the place of the terminator included.
template<class TString> std::string BlockOf(const TString& oString)
{
    return BytesOf(oString.GetString(), CapacityOf(oString));
}

// What text operations see: everything before the first 0.
template<class TString> std::string VisibleOf(const TString& oString)
{
    return oString.GetString() == nullptr ? "" : BytesOf(oString.GetString(), CapacityOf(oString)).c_str();
}

// What a string holds: all characters that count as the text, and its exact capacity.
struct sHeld
{
    std::string sText;
    long lCapacity;
};

inline bool operator==(const sHeld& oFirst, const sHeld& oSecond)
{
    return oFirst.sText == oSecond.sText && oFirst.lCapacity == oSecond.lCapacity;
}

inline void PrintTo(const sHeld& oHeld, std::ostream* pStream)
{
    *pStream << testing::PrintToString(oHeld.sText) << " in a capacity of " << oHeld.lCapacity;
}

// The state to compare with; zeros inside the literal count.
template<std::size_t nSize> sHeld Holds(const char (&szText)[nSize], long lCapacity)
{
    return {std::string(szText, nSize - 1), lCapacity};
}

// The state without a block.
inline sHeld HoldsNothing()
{
    return {"", 0};
}

// The state of a string, whose terminator must follow the text.
template<class TString> sHeld StateOf(const TString& oString)
{
    const tUnitOf<TString>* const pText = oString.GetString();
    const long lCapacity = CapacityOf(oString);
    if (pText == nullptr)
        return {oString.GetLength() == 0 ? "" : "<length without a block>", lCapacity};
    if (pText[oString.GetLength()] != 0)
        return {"<no terminator>", lCapacity};
    return {BytesOf(pText, oString.GetLength()), lCapacity};
}

// The one check that a statement fails, and where it is reported: "source: ..." or "header: ..." for the string's own
// two files, else "<file>: ...".
template<class TString, class TFunction>
std::string CheckOf(TFunction fnStatement, const char* szTestFile = __builtin_FILE(), int nTestLine = __builtin_LINE())
{
    CLogRecorder oRecorder;
    try
    {
        fnStatement();
        return "no check";
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
    }

    const std::vector<sCheck> aChecks = oRecorder.Checks();
    if (aChecks.size() != 1)
        return std::to_string(aChecks.size()) + " checks: " + oRecorder.DescribeChecks();

    NoteConfirmedCheck(aChecks[0].sFile, aChecks[0].ulLine, aChecks[0].sExpression, szTestFile, nTestLine);
    const std::string sSource = sStringTraits<TString>::SOURCE;
    const std::string& sFile = aChecks[0].sFile;
    if (sFile.find(sSource + ".h") != std::string::npos)
        return "header: " + aChecks[0].sExpression;
    if (sFile.find(sSource) != std::string::npos)
        return "source: " + aChecks[0].sExpression;
    return sFile + ": " + aChecks[0].sExpression;
}

// The statement fails this check of the typed test's string.
#define EXPECT_SOURCE_CHECK(szText, ...)                                                                               \
    EXPECT_EQ(std::string("source: ") + (szText), CheckOf<TypeParam>([&] { __VA_ARGS__; }))
#define EXPECT_HEADER_CHECK(szText, ...)                                                                               \
    EXPECT_EQ(std::string("header: ") + (szText), CheckOf<TypeParam>([&] { __VA_ARGS__; }))

// What the search operations ask of a start position and of what they search for.
constexpr char NO_CHARACTER_TO_FIND[] = "(0 <= nStartPos) && (cCharToSearch != '\\0')";
constexpr char NO_TEXT_TO_FIND[] = "(0 <= nStartPos) && (szSubStringToSearch != NULL)";
