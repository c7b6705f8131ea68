#include "Support/TOVAllocationCounter.h"
#include "Support/TOVRefusal.h"
#include "Support/TOVTestSupport.h"

#include <TOVDesignPatterns/TOVDynamicSingleton.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>

namespace
{
// A singleton. Each test has one of its own by a mark of its own, since the statics belong to the class.
template<class TMark> class CThing
{
public:
    CThing()
    {
        if (s_bRefuses)
            throw std::runtime_error("refused");
        ++s_nAlive;
    }
    virtual ~CThing() noexcept(false)
    {
        --s_nAlive;
        if (s_bLooksAtItself)
            s_pSeenAtItsEnd = &Instance();
        TOV_ASSERT(!s_bRaisesAtItsEnd);
    }
    CThing(const CThing&) = delete;
    CThing& operator=(const CThing&) = delete;

    static CThing& Instance() { return CTOVDynamicSingleton<CThing>::GetInstance(); }
    static CThing*& Held() { return CTOVDynamicSingleton<CThing>::s_pInstance; }
    static long GetHolders() { return CTOVDynamicSingleton<CThing>::s_lRefCount; }

    static inline int s_nAlive = 0;
    static inline bool s_bRefuses = false;
    static inline bool s_bRaisesAtItsEnd = false;
    static inline bool s_bLooksAtItself = false;
    static inline CThing* s_pSeenAtItsEnd = nullptr;
};
} // namespace

TEST(CTOVDynamicSingletonTest, BeginsWithoutAnObject)
{
    typedef CThing<struct sMark> tThing;

    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(0, tThing::GetHolders());
}

TEST(CTOVDynamicSingletonTest, HolderMakesTheObjectAndCounts)
{
    typedef CThing<struct sMark> tThing;
    const CTOVDynamicSingleton<tThing> oHolder;

    EXPECT_NE(nullptr, tThing::Held());
    EXPECT_EQ(1, tThing::GetHolders());
    EXPECT_EQ(1, tThing::s_nAlive);
    EXPECT_EQ(tThing::Held(), &tThing::Instance());
}

TEST(CTOVDynamicSingletonTest, HolderTakesTheObjectWithIt)
{
    typedef CThing<struct sMark> tThing;
    {
        const CTOVDynamicSingleton<tThing> oHolder;
    }

    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(0, tThing::GetHolders());
    EXPECT_EQ(0, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, EarlyCallMakesTheObjectWithoutCounting)
{
    typedef CThing<struct sMark> tThing;
    tThing& oThing = tThing::Instance();

    EXPECT_EQ(&oThing, tThing::Held());
    EXPECT_EQ(&oThing, &tThing::Instance());
    EXPECT_EQ(0, tThing::GetHolders());
    EXPECT_EQ(1, tThing::s_nAlive);

    const CTOVDynamicSingleton<tThing> oCleanUp;
}

TEST(CTOVDynamicSingletonTest, HolderAdoptsTheObjectOfAnEarlyCall)
{
    typedef CThing<struct sMark> tThing;
    const tThing* pThing = &tThing::Instance();
    {
        const CTOVDynamicSingleton<tThing> oHolder;

        EXPECT_EQ(pThing, tThing::Held());
        EXPECT_EQ(1, tThing::GetHolders());
        EXPECT_EQ(1, tThing::s_nAlive);
    }

    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(0, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, TwoHoldersShareOneObject)
{
    typedef CThing<struct sMark> tThing;
    const CTOVDynamicSingleton<tThing> oFirst;
    const tThing* pThing = tThing::Held();
    const CTOVDynamicSingleton<tThing> oSecond;

    EXPECT_EQ(pThing, tThing::Held());
    EXPECT_EQ(2, tThing::GetHolders());
    EXPECT_EQ(1, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, ObjectDiesWithTheSecondHoldersEnd)
{
    typedef CThing<struct sMark> tThing;
    std::optional<CTOVDynamicSingleton<tThing>> oFirst(std::in_place);
    std::optional<CTOVDynamicSingleton<tThing>> oSecond(std::in_place);

    oFirst.reset();
    EXPECT_NE(nullptr, tThing::Held());
    EXPECT_EQ(1, tThing::GetHolders());
    EXPECT_EQ(1, tThing::s_nAlive);

    oSecond.reset();
    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(0, tThing::GetHolders());
    EXPECT_EQ(0, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, LateCallMakesANewObjectThatNothingDeletes)
{
    typedef CThing<struct sMark> tThing;
    {
        const CTOVDynamicSingleton<tThing> oHolder;
    }

    const std::unique_ptr<tThing> pThing(&tThing::Instance());

    EXPECT_EQ(1, tThing::s_nAlive);
    EXPECT_EQ(0, tThing::GetHolders());
    EXPECT_EQ(pThing.get(), &tThing::Instance());
    tThing::Held() = nullptr;
}

TEST(CTOVDynamicSingletonTest, NewHolderMakesANewObject)
{
    typedef CThing<struct sMark> tThing;
    {
        const CTOVDynamicSingleton<tThing> oHolder;
    }
    const CTOVDynamicSingleton<tThing> oHolder;

    EXPECT_EQ(1, tThing::s_nAlive);
    EXPECT_EQ(1, tThing::GetHolders());
}

TEST(CTOVDynamicSingletonTest, EndsADerivedObjectByItsVirtualDestructor)
{
    typedef CThing<struct sMark> tThing;
    class CDerived : public tThing
    {
    public:
        explicit CDerived(bool& bDied) : m_bDied(bDied) {}
        ~CDerived() noexcept(false) override { m_bDied = true; }

    private:
        bool& m_bDied;
    };
    bool bDied = false;
    tThing::Held() = new CDerived(bDied);
    {
        const CTOVDynamicSingleton<tThing> oHolder;
    }

    EXPECT_TRUE(bDied);
    EXPECT_EQ(0, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, HolderEndsWithoutAnObject)
{
    typedef CThing<struct sMark> tThing;
    {
        const CTOVDynamicSingleton<tThing> oHolder;
        delete tThing::Held();
        tThing::Held() = nullptr;
    }

    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(0, tThing::GetHolders());
    EXPECT_EQ(0, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, FailedCreationCountsAllTheSame)
{
    typedef CThing<struct sMark> tThing;
    tThing::s_bRefuses = true;

    EXPECT_THROW(CTOVDynamicSingleton<tThing>(), std::runtime_error);
    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(1, tThing::GetHolders());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVDynamicSingletonTest, ExhaustedMemoryCountsAllTheSame)
{
    typedef CThing<struct sMark> tThing;
    EXPECT_TRUE(RunsOutOfMemory([&] { const CTOVDynamicSingleton<tThing> oHolder; }));
    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(1, tThing::GetHolders());
}
#endif

TEST(CTOVDynamicSingletonTest, FailedEarlyCallLeavesNothing)
{
    typedef CThing<struct sMark> tThing;
    tThing::s_bRefuses = true;

    EXPECT_THROW(tThing::Instance(), std::runtime_error);
    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(0, tThing::GetHolders());

    tThing::s_bRefuses = false;
    const CTOVDynamicSingleton<tThing> oHolder;
    EXPECT_EQ(1, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, ObjectReachesItselfWhileItEnds)
{
    typedef CThing<struct sMark> tThing;
    tThing::s_bLooksAtItself = true;
    const tThing* pThing = &tThing::Instance();
    {
        const CTOVDynamicSingleton<tThing> oHolder;
    }

    EXPECT_EQ(pThing, tThing::s_pSeenAtItsEnd);
    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(0, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, OnlyTellsOfACheckAtTheObjectsEnd)
{
    typedef CThing<struct sMark> tThing;
    const CTOVDynamicSingleton<tThing>* pHolder = new CTOVDynamicSingleton<tThing>;
    tThing::s_bRaisesAtItsEnd = true;

    EXPECT_TOLD_CHECK("!s_bRaisesAtItsEnd", delete pHolder);
    EXPECT_EQ(nullptr, tThing::Held());
    EXPECT_EQ(0, tThing::GetHolders());
}

TEST(CTOVDynamicSingletonTest, CreatesByTheFunctionOfATypeThatTakesArguments)
{
    class CSlots
    {
    public:
        explicit CSlots(int nSlots) : m_nSlots(nSlots) {}

        static CSlots* CreateInstance() { return new CSlots(1024); }
        static CSlots& Instance() { return CTOVDynamicSingleton<CSlots>::GetInstance(); }

        const int m_nSlots;
    };
    const CTOVDynamicSingleton<CSlots> oHolder;

    EXPECT_EQ(1024, CSlots::Instance().m_nSlots);
}

TEST(CTOVDynamicSingletonTest, HolderIsEndedThroughItsBase)
{
    typedef CThing<struct sMark> tThing;
    class CNamedHolder : public CTOVDynamicSingleton<tThing>
    {
    public:
        explicit CNamedHolder(bool& bDied) : m_bDied(bDied) {}
        ~CNamedHolder() override { m_bDied = true; }

    private:
        bool& m_bDied;
    };
    bool bDied = false;
    const CTOVDynamicSingleton<tThing>* pHolder = new CNamedHolder(bDied);
    delete pHolder;

    EXPECT_TRUE(bDied);
    EXPECT_EQ(0, tThing::s_nAlive);
}

TEST(CTOVDynamicSingletonTest, HolderHasNoData)
{
    EXPECT_EQ(sizeof(void*), sizeof(CTOVDynamicSingleton<CThing<struct sMark>>));
}
