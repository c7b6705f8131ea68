// Internal. Declares the cases that the suites of narrow and of wide text functions share.
#pragma once

#include <Test/TOVTestSuite.h>

// The functions of both widths have the same names and the same results here. T is char or wchar_t.
template<class T> class CTOVPlatformStringCases : public TOVTest::CTOVTestSuite
{
protected:
    void TestCompare();
    void TestCompareNoCase();
    void TestLocaleCompare();
    void TestLocaleCompareNoCase();
    void TestLength();
    void TestLower();
    void TestUpper();
    void TestReverse();
    void TestFindCharacter();
    void TestFindLastCharacter();
    void TestFindString();
    void TestFindOneOf();
    void TestFindNotOneOf();
    void TestFindOneOfReverse();
    void TestFindNotOneOfReverse();
    void TestSPrintf();
    void TestSNPrintf();
    void TestVSPrintf();
    void TestVSNPrintf();
    void TestCopy();
    void TestNCopy();
    void TestConcat();
    void TestNConcat();
    void TestInc();
    void TestNInc();
    void TestDec();
    void TestToLong();
    void TestToUlong();
    void TestToDouble();
};

extern template class CTOVPlatformStringCases<char>;
extern template class CTOVPlatformStringCases<wchar_t>;
