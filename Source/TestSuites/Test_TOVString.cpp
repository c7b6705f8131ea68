#include <TestSuites/Test_TOVString.h>

#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>
#include <Test/TOVTestChecks.h>
#include <TestSuites/Test_TOVStringChecks.h>

constexpr char FILE_NAME[] = "TestSuites\\Test_TOVString";

// Settled: the file name and the lines of the table are given; they are not the places in this source.
// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVStringTest, "TOVString Test", FILE_NAME, 33)
    TOV_TEST_CASE_AT("TOV String Test (Ascii)", TestStringA, FILE_NAME, 47)
    TOV_TEST_CASE_AT("TOV String Test (Unicode)", TestStringW, FILE_NAME, 49)
    TOV_TEST_CASE_AT("TOV Path Test", TestPath, FILE_NAME, 50)
TOV_TEST_CASES_END
// clang-format on

void CTOVStringTest::TestStringA()
{
    CTOVStringChecks<CTOVStringA, char>::CheckAll();

    // A narrow string takes the low 8 bits of each unit of a wide text.
    const CTOVStringA oNarrow(CTOVStringW(L"\u20ACuro"));
    TOV_TEST_EQUALS(oNarrow.GetLength(), 4);
    TOV_TEST_EQUALS(oNarrow.GetAt(0), 0xAC);
    TOV_TEST_EQUALS(oNarrow.GetAt(3), 'o');

    const CTOVStringA oFilled('x', 4);
    TOV_TEST_EQUALS(oFilled == "xxxx", true);

    // The check compares signed values: 0x80 and above are refused like 0.
    CTOVStringA oText("abc");
    TOV_TEST_THROWS(oText.Replace('b', static_cast<char>(0x80)));
}

void CTOVStringTest::TestStringW()
{
    CTOVStringChecks<CTOVStringW, wchar_t>::CheckAll();

    // A wide string extends each byte of a narrow text with zeros.
    const CTOVStringW oWide(CTOVStringA("\xE4hnlich"));
    TOV_TEST_EQUALS(oWide.GetLength(), 7);
    TOV_TEST_EQUALS(oWide.GetAt(0), 0xE4);
    TOV_TEST_EQUALS(oWide.GetAt(6), 'h');

    // Settled: four bytes are filled, not four units.
    const CTOVStringW oFilled(L'x', 4);
    TOV_TEST_EQUALS(oFilled.GetLength(), 4);
    TOV_TEST_EQUALS(oFilled.GetAt(0), 0x7878);
    TOV_TEST_EQUALS(oFilled.GetAt(1), 0x7878);

    CTOVStringW oText(L"abc");
    TOV_TEST_EQUALS(oText.Replace(L'b', static_cast<wchar_t>(0x80)), 1);
    TOV_TEST_EQUALS(oText.LoadStringResource(1), false);
    TOV_TEST_EQUALS(oText.GetLength(), 3);
}

void CTOVStringTest::TestPath()
{
}
