// Bytes that are no character of the code page: each counts as one.
#include "Support/TOVMultiByte.h"
#include "TOVPlatform/TOVStringApis.h"

namespace TOVStringA = TOVPlatform::TOVStringA;

TEST(TOVBrokenCharacterTest, IsAStepOfOneByteInEitherDirection)
{
    const CMultiByteCodePage oCodePage;
    const char szText[] = "\xC3x\xFFy\xE2\x82z\xC3";
    constexpr int LENGTH = sizeof szText - 1;

    for (int nByte = 0; nByte < LENGTH; ++nByte)
    {
        EXPECT_EQ(szText + nByte + 1, TOVStringA::Inc(szText + nByte)) << nByte;
        EXPECT_EQ(szText + nByte, TOVStringA::NInc(szText, nByte)) << nByte;
        EXPECT_EQ(szText + nByte, TOVStringA::Dec(szText, szText + nByte + 1)) << nByte;
    }
    EXPECT_EQ(szText + LENGTH, TOVStringA::NInc(szText, LENGTH + 3));
}
