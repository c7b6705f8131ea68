// The search for a class reads nothing around its name.
#include "Support/Posix/TOVLonePage.h"
#include "TOVRtti/TOVClassInstruments.h"

#include <cstring>

TEST(CTOVClassNamePageTest, ANameMayBeginAndEndWithItsPage)
{
    const CLonePage oPage;
    for (std::size_t nLength = 1; nLength <= 40; ++nLength)
    {
        const std::string sName(nLength, 'P');
        const CTOVClass oClass(sName.c_str());
        for (char* const pPlace : {oPage.GetStart(), oPage.GetEnd() - (nLength + 1)})
        {
            std::memcpy(pPlace, sName.c_str(), nLength + 1);
            EXPECT_EQ(&oClass, &TOVRuntimeClass(static_cast<const char*>(pPlace))) << nLength;
        }
    }
}
