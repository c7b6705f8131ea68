// Wide strings written to wide streams, which take 16-bit units on Windows alone.
#include "TOVString/TOVStringKinds.h"

#include <iomanip>
#include <sstream>

TEST(CTOVStringWideStreamTest, WritesTheTextAndNothingOfAnEmptyOne)
{
    CTOVStringW oEmptied(L"text");
    oEmptied.Empty();
    std::wostringstream oStream;

    oStream << CTOVStringW(L"text") << CTOVStringW() << oEmptied << L'|';

    EXPECT_TRUE(L"text|" == oStream.str());
    EXPECT_TRUE(oStream.good());
}

TEST(CTOVStringWideStreamTest, FillsToTheWidth)
{
    std::wostringstream oStream;

    oStream << std::setfill(L'.') << std::setw(4) << CTOVStringW(L"ab") << std::setw(2) << CTOVStringW();

    EXPECT_TRUE(L"..ab.." == oStream.str());
}
