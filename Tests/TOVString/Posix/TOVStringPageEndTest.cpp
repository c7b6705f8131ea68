// Strings made of texts that end where the next page of memory cannot be read.
#include "Support/Posix/TOVLonePage.h"
#include "TOVString/TOVStringKinds.h"

#include <algorithm>

namespace
{
template<class TString> class CTOVStringPageEndTest : public testing::Test
{
protected:
    CLonePage m_oPage;
};
TYPED_TEST_SUITE(CTOVStringPageEndTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringPageEndTest, ReadsNothingAfterThePage)
{
    typedef tUnitOf<TypeParam> tUnit;
    tUnit* const pEnd = reinterpret_cast<tUnit*>(this->m_oPage.GetEnd());
    for (int nRound = 0; nRound < 2; ++nRound) // in the second one, the lists have blocks
    {
        for (int nLength = 0; nLength <= 300; ++nLength)
        {
            tUnit* const szText = pEnd - nLength - 1;
            std::fill_n(szText, nLength, static_cast<tUnit>('a'));
            szText[nLength] = 0;
            const std::string sExpected(static_cast<std::size_t>(nLength), 'a');

            EXPECT_EQ(sExpected, VisibleOf(TypeParam(szText)));
            TypeParam oAssigned;
            oAssigned = szText;
            EXPECT_EQ(sExpected, VisibleOf(oAssigned));
            if (nLength > 0)
            {
                TypeParam oCopied;
                oCopied.Copy(szText + 1, nLength); // the terminator is the last unit
                TypeParam oSum(szText);
                oSum.ConcatInPlace(nLength, szText + 1);
                EXPECT_EQ(sExpected.substr(1), VisibleOf(oCopied));
                EXPECT_EQ(sExpected + sExpected.substr(1), VisibleOf(oSum));
            }
        }
    }
}
