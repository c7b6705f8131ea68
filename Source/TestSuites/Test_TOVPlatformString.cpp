#include <TestSuites/Test_TOVPlatformString.h>

#include <TOVPlatform/TOVText.h>
#include <Test/TOVTestChecks.h>
#include <TestSuites/TOVTestLiteral.h>

#include <cstdarg>

#define TEXT(szText) TOV_LITERAL(T, szText)

// The checks pass in every locale: they do not use the letter i, whose case depends on the language, and read a number
// with a decimal point only if the same locale has printed it.
namespace
{
// The texts of the checks keep this short name.
namespace Text = TOVText;

template<class T> bool IsSame(const T* szText, const T* szExpected)
{
    return Text::Compare(szText, szExpected) == 0;
}

// Returns the index at which a search has found something, or -1.
template<class T> int PositionIn(const T* szText, const T* szFound)
{
    return szFound != nullptr ? static_cast<int>(szFound - szText) : -1;
}

template<class T> int PrintList(T* szBuffer, const T* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = Text::VSPrintf(szBuffer, szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

template<class T> int PrintListWithin(T* szBuffer, int nCount, const T* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = Text::VSNPrintf(szBuffer, nCount, szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

template<class T> int MeasureList(const T* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = Text::VSCPrintf(szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

// Checks the order that all four comparisons have in common, and the arguments that they refuse.
template<class T> void CheckOrder(int (*pfCompare)(const T*, const T*))
{
    const T* const szNull = nullptr;
    TOV_TEST_EQUALS(pfCompare(TEXT("abc"), TEXT("abc")), 0);
    TOV_TEST_EQUALS(pfCompare(TEXT(""), TEXT("")), 0);
    TOV_TEST_EQUALS(pfCompare(TEXT("abc"), TEXT("abd")) < 0, true);
    TOV_TEST_EQUALS(pfCompare(TEXT("abd"), TEXT("abc")) > 0, true);
    TOV_TEST_THROWS(pfCompare(szNull, TEXT("abc")));
    TOV_TEST_THROWS(pfCompare(TEXT("abc"), szNull));
}
} // namespace

template<class T> void CTOVPlatformStringCases<T>::TestCompare()
{
    CheckOrder<T>(Text::Compare);
    TOV_TEST_EQUALS(Text::Compare(TEXT("abc"), TEXT("abd")), -1);
    TOV_TEST_EQUALS(Text::Compare(TEXT("abd"), TEXT("abc")), 1);
    TOV_TEST_EQUALS(Text::Compare(TEXT("abc"), TEXT("ABC")), 1);
}

template<class T> void CTOVPlatformStringCases<T>::TestCompareNoCase()
{
    CheckOrder<T>(Text::CompareNoCase);
    TOV_TEST_EQUALS(Text::CompareNoCase(TEXT("abc"), TEXT("aBC")), 0);
    TOV_TEST_EQUALS(Text::CompareNoCase(TEXT("ABC"), TEXT("abd")) < 0, true);
}

template<class T> void CTOVPlatformStringCases<T>::TestLocaleCompare()
{
    CheckOrder<T>(Text::Collate);
}

template<class T> void CTOVPlatformStringCases<T>::TestLocaleCompareNoCase()
{
    CheckOrder<T>(Text::CollateNoCase);
    TOV_TEST_EQUALS(Text::CollateNoCase(TEXT("abc"), TEXT("aBC")), 0);
}

template<class T> void CTOVPlatformStringCases<T>::TestLength()
{
    const T* const szNull = nullptr;
    TOV_TEST_EQUALS(Text::Length(TEXT("")), 0);
    TOV_TEST_EQUALS(Text::Length(TEXT("This is a test")), 14);
    TOV_TEST_THROWS(Text::Length(szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestLower()
{
    T* const szNull = nullptr;
    T szText[20];
    Text::Copy(szText, TEXT("Under THE 7 Clouds"));
    TOV_TEST_EQUALS(Text::ToLower(szText) == szText, true);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("under the 7 clouds")), true);
    TOV_TEST_THROWS(Text::ToLower(szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestUpper()
{
    T* const szNull = nullptr;
    T szText[20];
    Text::Copy(szText, TEXT("Under the 7 Clouds"));
    TOV_TEST_EQUALS(Text::ToUpper(szText) == szText, true);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("UNDER THE 7 CLOUDS")), true);
    TOV_TEST_THROWS(Text::ToUpper(szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestReverse()
{
    T* const szNull = nullptr;
    T szText[20];
    Text::Copy(szText, TEXT("drawer"));
    TOV_TEST_EQUALS(Text::Reverse(szText) == szText, true);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("reward")), true);
    szText[0] = 0;
    TOV_TEST_EQUALS(IsSame<T>(Text::Reverse(szText), TEXT("")), true);
    TOV_TEST_THROWS(Text::Reverse(szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestFindCharacter()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindCharacter(szText, 's')), 3);
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindCharacter(szText, 'z')), -1);
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindCharacter(szText, 0)), 14);
    TOV_TEST_THROWS_NOT(Text::FindCharacter(szText, 0xFF));
    TOV_TEST_THROWS(Text::FindCharacter(szNull, 's'));
}

template<class T> void CTOVPlatformStringCases<T>::TestFindLastCharacter()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindLastCharacter(szText, 's')), 12);
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindLastCharacter(szText, 'z')), -1);
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindLastCharacter(szText, 0)), 14);
    TOV_TEST_THROWS_NOT(Text::FindLastCharacter(szText, 0xFF));
    TOV_TEST_THROWS(Text::FindLastCharacter(szNull, 's'));
}

template<class T> void CTOVPlatformStringCases<T>::TestFindString()
{
    T* const szNull = nullptr;
    T szText[20];
    Text::Copy(szText, TEXT("This is a find test"));
    TOV_TEST_EQUALS(PositionIn<T>(szText, Text::FindString(szText, TEXT("find"))), 10);
    TOV_TEST_EQUALS(PositionIn<T>(szText, Text::FindString(szText, TEXT("is"))), 2);
    TOV_TEST_EQUALS(PositionIn<T>(szText, Text::FindString(szText, TEXT("Bla"))), -1);
    TOV_TEST_THROWS(Text::FindString(szNull, TEXT("find")));
    TOV_TEST_THROWS(Text::FindString(szText, static_cast<const T*>(NULL)));
}

template<class T> void CTOVPlatformStringCases<T>::TestFindOneOf()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindOneOf(szText, TEXT("tsa"))), 3);
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindOneOf(szText, TEXT("xyz"))), -1);
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindOneOf(szText, TEXT(""))), -1);
    TOV_TEST_THROWS(Text::FindOneOf(szNull, TEXT("a")));
    TOV_TEST_THROWS(Text::FindOneOf(szText, szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestFindNotOneOf()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindNotOneOf(szText, TEXT("Ths"))), 2);
    TOV_TEST_EQUALS(PositionIn(szText, Text::FindNotOneOf(szText, szText)), -1);
    TOV_TEST_EQUALS(Text::FindNotOneOf(TEXT(""), TEXT("abc")) == NULL, true);
    TOV_TEST_THROWS(Text::FindNotOneOf(szNull, TEXT("a")));
    TOV_TEST_THROWS(Text::FindNotOneOf(szText, szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestFindOneOfReverse()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn(szText, Text::ReverseFindOneOf(szText, TEXT("sia"))), 12);
    TOV_TEST_EQUALS(PositionIn(szText, Text::ReverseFindOneOf(szText, TEXT("xyz"))), -1);
    // Settled: the first unit is never looked at.
    TOV_TEST_EQUALS(PositionIn(szText, Text::ReverseFindOneOf(szText, TEXT("T"))), -1);
    TOV_TEST_EQUALS(Text::ReverseFindOneOf(TEXT(""), TEXT("abc")) == NULL, true);
    TOV_TEST_THROWS(Text::ReverseFindOneOf(szNull, TEXT("a")));
    TOV_TEST_THROWS(Text::ReverseFindOneOf(szText, szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestFindNotOneOfReverse()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn(szText, Text::ReverseFindNotOneOf(szText, TEXT("tes"))), 9);
    TOV_TEST_EQUALS(PositionIn(szText, Text::ReverseFindNotOneOf(szText, szText)), -1);
    // Settled: the first unit is never looked at.
    TOV_TEST_EQUALS(PositionIn(szText, Text::ReverseFindNotOneOf(szText, TEXT("his atest"))), -1);
    TOV_TEST_EQUALS(Text::ReverseFindNotOneOf(TEXT(""), TEXT("abc")) == NULL, true);
    TOV_TEST_THROWS(Text::ReverseFindNotOneOf(szNull, TEXT("a")));
    TOV_TEST_THROWS(Text::ReverseFindNotOneOf(szText, szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestSPrintf()
{
    T* const szNull = nullptr;
    T szText[20];
    TOV_TEST_EQUALS(Text::SPrintf(szText, TEXT("%s is %d"), TEXT("This"), -12), 11);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("This is -12")), true);
    TOV_TEST_THROWS(Text::SPrintf(szNull, TEXT("text")));
    TOV_TEST_THROWS(Text::SPrintf(szText, static_cast<const T*>(NULL)));
}

template<class T> void CTOVPlatformStringCases<T>::TestSNPrintf()
{
    T* const szNull = nullptr;
    T szText[20];
    TOV_TEST_EQUALS(Text::SNPrintf(szText, 20, TEXT("%s is %d"), TEXT("This"), -12), 11);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("This is -12")), true);
    TOV_TEST_EQUALS(Text::SNPrintf(szText, 4, TEXT("%d"), 123456) < 0, true);
    TOV_TEST_THROWS(Text::SNPrintf(szNull, 20, TEXT("text")));
    TOV_TEST_THROWS(Text::SNPrintf(szText, 0, TEXT("text")));
    TOV_TEST_THROWS(Text::SNPrintf(szText, 20, static_cast<const T*>(NULL)));
}

template<class T> void CTOVPlatformStringCases<T>::TestVSPrintf()
{
    T* const szNull = nullptr;
    T szText[20];
    TOV_TEST_EQUALS(PrintList(szText, TEXT("%s is %d"), TEXT("This"), -12), 11);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("This is -12")), true);
    TOV_TEST_THROWS(PrintList(szNull, TEXT("text")));
    TOV_TEST_THROWS(PrintList(szText, static_cast<const T*>(NULL)));

    // Settled: the length measured for plain text is larger than the text.
    TOV_TEST_EQUALS(MeasureList(TEXT("Test")), 10);
    TOV_TEST_THROWS(MeasureList(static_cast<const T*>(NULL)));
}

template<class T> void CTOVPlatformStringCases<T>::TestVSNPrintf()
{
    T* const szNull = nullptr;
    T szText[20];
    TOV_TEST_EQUALS(PrintListWithin(szText, 20, TEXT("%s is %d"), TEXT("This"), -12), 11);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("This is -12")), true);
    TOV_TEST_EQUALS(PrintListWithin(szText, 4, TEXT("%d"), 123456) < 0, true);

    // An exact fit has no terminator.
    Text::Copy(szText, TEXT("........"));
    TOV_TEST_EQUALS(PrintListWithin(szText, 4, TEXT("%d"), 1234), 4);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("1234....")), true);
    TOV_TEST_THROWS(PrintListWithin(szNull, 20, TEXT("text")));
    TOV_TEST_THROWS(PrintListWithin(szText, 0, TEXT("text")));
    TOV_TEST_THROWS(PrintListWithin(szText, 20, static_cast<const T*>(NULL)));
}

template<class T> void CTOVPlatformStringCases<T>::TestCopy()
{
    T* const szNull = nullptr;
    T szText[20];
    TOV_TEST_EQUALS(Text::Copy(szText, TEXT("This")) == szText, true);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("This")), true);
    TOV_TEST_THROWS(Text::Copy(szNull, TEXT("This")));
    TOV_TEST_THROWS(Text::Copy(szText, static_cast<const T*>(NULL)));
}

template<class T> void CTOVPlatformStringCases<T>::TestNCopy()
{
    T* const szNull = nullptr;
    T szText[20];
    Text::Copy(szText, TEXT("........"));
    TOV_TEST_EQUALS(Text::NCopy(szText, TEXT("This"), 2) == szText, true);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("Th......")), true);
    Text::NCopy(szText, TEXT("a"), 4);
    TOV_TEST_EQUALS(szText[1] == 0 && szText[2] == 0 && szText[3] == 0 && szText[4] == '.', true);
    TOV_TEST_THROWS(Text::NCopy(szNull, TEXT("This"), 4));
    TOV_TEST_THROWS(Text::NCopy(szText, static_cast<const T*>(NULL), 4));
    TOV_TEST_THROWS(Text::NCopy(szText, TEXT("This"), 0));
}

template<class T> void CTOVPlatformStringCases<T>::TestConcat()
{
    T* const szNull = nullptr;
    T szText[20];
    Text::Copy(szText, TEXT("This"));
    TOV_TEST_EQUALS(Text::Concat(szText, TEXT(" is")) == szText, true);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("This is")), true);
    TOV_TEST_THROWS(Text::Concat(szNull, TEXT("This")));
    TOV_TEST_THROWS(Text::Concat(szText, static_cast<const T*>(NULL)));
}

template<class T> void CTOVPlatformStringCases<T>::TestNConcat()
{
    T* const szNull = nullptr;
    T szText[20];
    Text::Copy(szText, TEXT("This"));
    TOV_TEST_EQUALS(Text::NConcat(szText, TEXT(" is a test"), 3) == szText, true);
    TOV_TEST_EQUALS(IsSame(szText, TEXT("This is")), true);
    TOV_TEST_THROWS(Text::NConcat(szNull, TEXT("This"), 4));
    TOV_TEST_THROWS(Text::NConcat(szText, static_cast<const T*>(NULL), 4));
    TOV_TEST_THROWS(Text::NConcat(szText, TEXT("This"), 0));
}

template<class T> void CTOVPlatformStringCases<T>::TestInc()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn<T>(szText, Text::Inc(szText)), 1);
    TOV_TEST_THROWS(Text::Inc(szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestNInc()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn<T>(szText, Text::NInc(szText, 2)), 2);
    TOV_TEST_EQUALS(*Text::NInc(szText, 2) == 'i', true);
    TOV_TEST_EQUALS(PositionIn<T>(szText, Text::NInc(szText, 0)), 0);
    TOV_TEST_THROWS(Text::NInc(szText, -1));
    TOV_TEST_THROWS(Text::NInc(szNull, 1));
}

template<class T> void CTOVPlatformStringCases<T>::TestDec()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("This is a test");
    TOV_TEST_EQUALS(PositionIn<T>(szText, Text::Dec(szText, szText + 4)), 3);
    TOV_TEST_EQUALS(Text::Dec(szText, szText) == NULL, true);
    TOV_TEST_EQUALS(Text::Dec(szText + 4, szText) == NULL, true);
    TOV_TEST_THROWS(Text::Dec(szNull, szText));
    TOV_TEST_THROWS(Text::Dec(szText, szNull));
}

template<class T> void CTOVPlatformStringCases<T>::TestToLong()
{
    const T* const szNull = nullptr;
    const T* const szPositive = TEXT("123456This stopped it");
    const T* const szNegative = TEXT("-123456This stopped it");
    T* szEnd = nullptr;
    TOV_TEST_EQUALS(Text::ToLong(szPositive, &szEnd, 10), 123456);
    TOV_TEST_EQUALS(PositionIn<T>(szPositive, szEnd), 6);
    TOV_TEST_EQUALS(Text::ToLong(szNegative, &szEnd, 10), -123456);
    TOV_TEST_EQUALS(PositionIn<T>(szNegative, szEnd), 7);
    TOV_TEST_EQUALS(Text::ToLong(szPositive, static_cast<T**>(NULL), 10), 123456);

    const T* const szNoNumber = TEXT("This");
    TOV_TEST_EQUALS(Text::ToLong(szNoNumber, &szEnd, 10), 0);
    TOV_TEST_EQUALS(PositionIn<T>(szNoNumber, szEnd), 0);
    TOV_TEST_THROWS(Text::ToLong(szNull, &szEnd, 10));
}

template<class T> void CTOVPlatformStringCases<T>::TestToUlong()
{
    const T* const szNull = nullptr;
    const T* const szText = TEXT("123456This stopped it");
    T* szEnd = nullptr;
    TOV_TEST_EQUALS(Text::ToUlong(szText, &szEnd, 10), 123456u);
    TOV_TEST_EQUALS(PositionIn<T>(szText, szEnd), 6);
    TOV_TEST_EQUALS(Text::ToUlong(szText, static_cast<T**>(NULL), 10), 123456u);
    TOV_TEST_THROWS(Text::ToUlong(szNull, &szEnd, 10));
}

template<class T> void CTOVPlatformStringCases<T>::TestToDouble()
{
    const T* const szNull = nullptr;
    T szNumber[40];
    const int nLength = Text::SPrintf(szNumber, TEXT("%.7f"), 3.1415926);
    T szText[60];
    Text::Concat(Text::Copy(szText, szNumber), TEXT("This stopped it"));

    T* szEnd = nullptr;
    TOV_TEST_EQUALS(Text::ToDouble(szText, &szEnd), 3.1415926);
    TOV_TEST_EQUALS(PositionIn<T>(szText, szEnd), nLength);
    TOV_TEST_EQUALS(Text::ToDouble(szText, static_cast<T**>(NULL)), 3.1415926);

    Text::Concat(Text::Concat(Text::Copy(szText, TEXT("-")), szNumber), TEXT("This stopped it"));
    TOV_TEST_EQUALS(Text::ToDouble(szText, &szEnd), -3.1415926);
    TOV_TEST_EQUALS(PositionIn<T>(szText, szEnd), nLength + 1);
    TOV_TEST_THROWS(Text::ToDouble(szNull, &szEnd));
}

template class CTOVPlatformStringCases<char>;
template class CTOVPlatformStringCases<wchar_t>;
