// The hook through which strings get their text by number.
#include "Support/TOVTestSupport.h"

#include <TOVString/TOVResourceLoader.h>
#include <TOVString/TOVStringA.h>

#include <type_traits>

namespace
{
constexpr char SOURCE[] = "TOVString/TOVResourceLoader";
constexpr char NONE_INSTALLED[] = "m_pInstance != NULL";
constexpr char ONE_INSTALLED[] = "m_pInstance == NULL";

class CLoader : public ITOVResourceLoader
{
public:
    bool LoadString(long, CTOVStringA& oString) override
    {
        oString = "loaded";
        return true;
    }

    using ITOVResourceLoader::GetInstance;
    using ITOVResourceLoader::m_pInstance;
    using ITOVResourceLoader::SetInstance;
};

class ITOVResourceLoaderTest : public testing::Test
{
protected:
    void TearDown() override { CLoader::SetInstance(nullptr); }

    CLoader m_oLoader;
    CLoader m_oOther;
};
} // namespace

TEST_F(ITOVResourceLoaderTest, IsAnInterfaceWithoutDataAndDestructor)
{
    static_assert(std::is_abstract_v<ITOVResourceLoader>);
    static_assert(!std::has_virtual_destructor_v<ITOVResourceLoader>);
    static_assert(std::is_same_v<decltype(ITOVResourceLoader::Instance()), ITOVResourceLoader&>);
    EXPECT_EQ(sizeof(void*), sizeof(ITOVResourceLoader));
}

TEST_F(ITOVResourceLoaderTest, NoneIsInstalledAtFirst)
{
    EXPECT_EQ(nullptr, CLoader::m_pInstance);
    EXPECT_CHECK_AT(SOURCE, NONE_INSTALLED, ITOVResourceLoader::Instance());
    EXPECT_CHECK_AT(SOURCE, NONE_INSTALLED, CLoader::GetInstance());
}

TEST_F(ITOVResourceLoaderTest, ClearingWithNothingInstalledIsFine)
{
    EXPECT_NO_CHECK(CLoader::SetInstance(nullptr));

    EXPECT_EQ(nullptr, CLoader::m_pInstance);
}

TEST_F(ITOVResourceLoaderTest, GivesTheInstalledLoader)
{
    CLoader::SetInstance(&m_oLoader);

    EXPECT_EQ(&m_oLoader, &ITOVResourceLoader::Instance());
    EXPECT_EQ(&m_oLoader, CLoader::GetInstance());
    EXPECT_EQ(&m_oLoader, CLoader::m_pInstance);
}

TEST_F(ITOVResourceLoaderTest, RefusesASecondLoaderAndKeepsTheFirst)
{
    CLoader::SetInstance(&m_oLoader);

    EXPECT_CHECK_AT(SOURCE, ONE_INSTALLED, CLoader::SetInstance(&m_oOther));
    EXPECT_CHECK_AT(SOURCE, ONE_INSTALLED, CLoader::SetInstance(&m_oLoader));

    EXPECT_EQ(&m_oLoader, &ITOVResourceLoader::Instance());
}

TEST_F(ITOVResourceLoaderTest, TakesASecondLoaderAfterTheFirstIsCleared)
{
    CLoader::SetInstance(&m_oLoader);

    CLoader::SetInstance(nullptr);
    EXPECT_CHECK_AT(SOURCE, NONE_INSTALLED, ITOVResourceLoader::Instance());

    CLoader::SetInstance(&m_oOther);
    EXPECT_EQ(&m_oOther, &ITOVResourceLoader::Instance());
}

TEST_F(ITOVResourceLoaderTest, IsAskedThroughTheInterface)
{
    CLoader::SetInstance(&m_oLoader);
    CTOVStringA oText;

    EXPECT_TRUE(ITOVResourceLoader::Instance().LoadString(7, oText));

    EXPECT_EQ(0, oText.Compare("loaded"));
}

TEST_F(ITOVResourceLoaderTest, CopiesAreNotInstalled)
{
    CLoader::SetInstance(&m_oLoader);

    const CLoader oCopy(m_oLoader);
    ITOVResourceLoader& oAssigned = m_oOther;

    EXPECT_EQ(&oAssigned, &(oAssigned = m_oLoader));
    EXPECT_EQ(&m_oLoader, &ITOVResourceLoader::Instance());
    EXPECT_NE(&oCopy, CLoader::m_pInstance);
}
