#include "Support/TOVTestSupport.h"

#include <Test/TOVTestDynamicSingleton.h>

#include <memory>
#include <stdexcept>
#include <type_traits>

using TOVTest::CTOVTestDynamicSingleton;

namespace
{
// Each test has an object class of its own: what a test leaves behind, no other sees.
template<int nTest> struct sMade
{
    sMade()
    {
        if (s_bRefuses)
            throw std::runtime_error("refused");
        ++s_nMade;
        ++s_nAlive;
    }

    virtual ~sMade() { --s_nAlive; }

    static inline int s_nMade = 0;
    static inline int s_nAlive = 0;
    static inline bool s_bRefuses = false;
};
} // namespace

static_assert(sizeof(CTOVTestDynamicSingleton<sMade<0>>) == sizeof(void*), "no data in the holder");
static_assert(std::has_virtual_destructor_v<CTOVTestDynamicSingleton<sMade<0>>>, "the one virtual operation");

TEST(CTOVTestDynamicSingletonTest, MakesTheObjectWithItsFirstHolder)
{
    typedef sMade<1> tObject;
    ASSERT_EQ(0, tObject::s_nMade);

    const CTOVTestDynamicSingleton<tObject> oHolder;

    EXPECT_EQ(1, tObject::s_nMade);
}

TEST(CTOVTestDynamicSingletonTest, SharesOneObjectUntilTheLastHolderEnds)
{
    typedef sMade<2> tObject;
    auto pFirst = std::make_unique<CTOVTestDynamicSingleton<tObject>>();
    auto pSecond = std::make_unique<CTOVTestDynamicSingleton<tObject>>();

    pFirst.reset();
    EXPECT_EQ(1, tObject::s_nAlive);

    pSecond.reset();
    EXPECT_EQ(0, tObject::s_nAlive);
    EXPECT_EQ(1, tObject::s_nMade);
}

TEST(CTOVTestDynamicSingletonTest, IsAdoptedByTheHolderThatComesLater)
{
    typedef sMade<3> tObject;
    tObject* const pEarly = &CTOVTestDynamicSingleton<tObject>::GetInstance();
    {
        const CTOVTestDynamicSingleton<tObject> oHolder;
        EXPECT_EQ(pEarly, &CTOVTestDynamicSingleton<tObject>::GetInstance());
        EXPECT_EQ(1, tObject::s_nMade);
    }

    EXPECT_EQ(0, tObject::s_nAlive);
}

TEST(CTOVTestDynamicSingletonTest, DoesNotCountWhoAsks)
{
    typedef sMade<4> tObject;
    {
        const CTOVTestDynamicSingleton<tObject> oHolder;
        CTOVTestDynamicSingleton<tObject>::GetInstance();
        CTOVTestDynamicSingleton<tObject>::GetInstance();
    }

    EXPECT_EQ(0, tObject::s_nAlive);
}

TEST(CTOVTestDynamicSingletonTest, IsMadeAnewAfterTheLastHolderAndStays)
{
    typedef sMade<5> tObject;
    {
        const CTOVTestDynamicSingleton<tObject> oHolder;
    }
    ASSERT_EQ(0, tObject::s_nAlive);

    CTOVTestDynamicSingleton<tObject>::GetInstance();

    EXPECT_EQ(2, tObject::s_nMade);
    EXPECT_EQ(1, tObject::s_nAlive);
}

TEST(CTOVTestDynamicSingletonTest, CanBeHeldAgainAfterTheLastHolder)
{
    typedef sMade<6> tObject;
    for (int i = 1; i <= 3; ++i)
    {
        const CTOVTestDynamicSingleton<tObject> oHolder;
        EXPECT_EQ(i, tObject::s_nMade);
        EXPECT_EQ(1, tObject::s_nAlive);
    }

    EXPECT_EQ(0, tObject::s_nAlive);
}

TEST(CTOVTestDynamicSingletonTest, LetsThroughWhatTheObjectsConstructorThrows)
{
    typedef sMade<7> tObject;
    tObject::s_bRefuses = true;
    EXPECT_THROW(CTOVTestDynamicSingleton<tObject>::GetInstance(), std::runtime_error);
    tObject::s_bRefuses = false;

    EXPECT_EQ(0, tObject::s_nMade);
    CTOVTestDynamicSingleton<tObject>::GetInstance();
    EXPECT_EQ(1, tObject::s_nMade);
}

TEST(CTOVTestDynamicSingletonTest, CountsAHolderThatFailed)
{
    typedef sMade<8> tObject;
    tObject::s_bRefuses = true;
    EXPECT_THROW(CTOVTestDynamicSingleton<tObject>(), std::runtime_error);
    tObject::s_bRefuses = false;

    {
        const CTOVTestDynamicSingleton<tObject> oHolder;
    }

    // The count went from 2 to 1.
    EXPECT_EQ(1, tObject::s_nAlive);
}
