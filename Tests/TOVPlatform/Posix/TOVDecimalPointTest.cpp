// Decimal points other than the full stop. The program's nl_langinfo and strtod stand before the C library's in every
// module of the process and behave as in a locale with that point, so that none has to be installed.
#include "TOVPlatform/TOVStringApis.h"

#include <cstdlib>
#include <dlfcn.h>
#include <langinfo.h>

namespace
{
const char* s_szPoint = nullptr;

class CDecimalPoint
{
public:
    explicit CDecimalPoint(const char* szPoint) { s_szPoint = szPoint; }
    ~CDecimalPoint() { s_szPoint = nullptr; }
    CDecimalPoint(const CDecimalPoint&) = delete;
    CDecimalPoint& operator=(const CDecimalPoint&) = delete;
};

template<class TApi> class TOVPlatformDecimalPointTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVPlatformDecimalPointTest, tStringApis, );
} // namespace

extern "C" TOV_PROGRAM_EXPORT char* nl_langinfo(nl_item nItem) noexcept
{
    static const auto s_pfReal = reinterpret_cast<char* (*)(nl_item)>(::dlsym(RTLD_NEXT, "nl_langinfo"));
    return nItem == RADIXCHAR && s_szPoint != nullptr ? const_cast<char*>(s_szPoint) : s_pfReal(nItem);
}

extern "C" TOV_PROGRAM_EXPORT double strtod(const char* szText, char** pszEnd) noexcept
{
    static const auto s_pfReal = reinterpret_cast<double (*)(const char*, char**)>(::dlsym(RTLD_NEXT, "strtod"));
    if (s_szPoint == nullptr || pszEnd != nullptr)
        return s_pfReal(szText, pszEnd);

    std::string sText = szText;
    const std::string sPoint = s_szPoint;
    const std::size_t nStop = sText.find('.');
    const std::size_t nPoint = sText.find(sPoint);
    if (nStop < nPoint)
        sText.resize(nStop);
    else if (nPoint != std::string::npos)
        sText.replace(nPoint, sPoint.size(), ".");
    return s_pfReal(sText.c_str(), nullptr);
}

TYPED_TEST(TOVPlatformDecimalPointTest, IsReadAndEndsTheNumberWhereItIsAnother)
{
    const CDecimalPoint oPoint(",");
    CText<typename TypeParam::tUnit> oComma("1,5.");
    CText<typename TypeParam::tUnit> oStop("1.5");
    typename TypeParam::tUnit* pStop = nullptr;

    EXPECT_EQ(1.5, TypeParam::ToDouble(oComma, &pStop));
    EXPECT_EQ(3, pStop - oComma.Get());
    EXPECT_EQ(1.0, TypeParam::ToDouble(oStop, &pStop));
    EXPECT_EQ(1, pStop - oStop.Get());
}

TYPED_TEST(TOVPlatformDecimalPointTest, IsPrinted)
{
    const CDecimalPoint oPoint(",");

    EXPECT_EQ("1,50", Print<TypeParam>("%.2f", 1.5));
    EXPECT_EQ("2,5e+00", Print<TypeParam>("%.1e", 2.5));
    EXPECT_EQ("0,25", Print<TypeParam>("%g", 0.25));
}

TEST(TOVPlatformNarrowDecimalPointTest, MayTakeMoreThanOneByte)
{
    const CDecimalPoint oPoint("\xD9\xAB");

    EXPECT_EQ("1\xD9\xAB"
              "5",
              Print<sNarrowApi>("%.1f", 1.5));
    EXPECT_EQ(1.5, TOVPlatform::TOVStringA::ToDouble("1\xD9\xAB"
                                                     "5",
                                                     nullptr));
}
