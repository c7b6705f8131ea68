#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"
#include "Test/TOVTestInstruments.h"

#include <Test/TOVTestRouter.h>

#include <memory>
#include <type_traits>

using TOVTest::CTOVTestListener;
using TOVTest::CTOVTestRouter;

namespace
{
typedef std::vector<CTOVTestListener*> tListeners;

TOV_PRIVATE_MEMBER(Listeners, CTOVTestRouter, tListeners, m_aListeners)

// Writes its name into a common line at each event.
class CNamedListener : public CTOVTestListener
{
public:
    CNamedListener(const char* szName, std::string& sHeard) : m_szName(szName), m_sHeard(sHeard) {}

    void EnterEnvironment() override
    {
        m_sHeard += m_szName;
        if (m_fnOnEvent)
            m_fnOnEvent();
    }

    void LeaveEnvironment() override { m_sHeard += m_szName; }

    std::function<void()> m_fnOnEvent;

private:
    const char* m_szName;
    std::string& m_sHeard;
};

class CTOVTestRouterTest : public testing::Test
{
protected:
    CTOVTestRouterTest() : m_oA("a", m_sHeard), m_oB("b", m_sHeard), m_oC("c", m_sHeard) {}

    // Which listeners hear one event, in order.
    std::string HeardBy(CTOVTestRouter& oRouter)
    {
        m_sHeard.clear();
        oRouter.EnterEnvironment();
        return m_sHeard;
    }

    void AddAll()
    {
        m_oRouter.AddListener(m_oA);
        m_oRouter.AddListener(m_oB);
        m_oRouter.AddListener(m_oC);
    }

    std::string m_sHeard;
    CNamedListener m_oA;
    CNamedListener m_oB;
    CNamedListener m_oC;
    CTOVTestRouter m_oRouter;
};
} // namespace

static_assert(std::is_base_of_v<CTOVTestListener, CTOVTestRouter>, "a router is a listener");
static_assert(std::has_virtual_destructor_v<CTOVTestRouter>, "a router adds a virtual destructor");
static_assert(sizeof(CTOVTestRouter) == sizeof(void*) + sizeof(tListeners), "one member");

TEST_F(CTOVTestRouterTest, HasNoListenersAtFirst)
{
    EXPECT_EQ(0, m_oRouter.GetNumListeners());
    EXPECT_FALSE(m_oRouter.HasListeners());
    RaiseAllEvents(m_oRouter);
}

TEST_F(CTOVTestRouterTest, ListsItsListenersInTheOrderOfTheirAdding)
{
    AddAll();

    EXPECT_EQ(3, m_oRouter.GetNumListeners());
    EXPECT_TRUE(m_oRouter.HasListeners());
    EXPECT_EQ(&m_oA, m_oRouter.GetListener(0));
    EXPECT_EQ(&m_oB, m_oRouter.GetListener(1));
    EXPECT_EQ(&m_oC, m_oRouter.GetListener(2));
}

TEST_F(CTOVTestRouterTest, HasNoListenerOutsideOfItsRange)
{
    AddAll();

    EXPECT_EQ(nullptr, m_oRouter.GetListener(-1));
    EXPECT_EQ(nullptr, m_oRouter.GetListener(3));
}

TEST_F(CTOVTestRouterTest, HandsEachEventToEachListenerWithItsArguments)
{
    CEventRecorder oFirst;
    CEventRecorder oSecond;
    m_oRouter.AddListener(oFirst);
    m_oRouter.AddListener(oSecond);

    RaiseAllEvents(m_oRouter);

    EXPECT_EQ(AllEvents(), oFirst.m_aEvents);
    EXPECT_EQ(AllEvents(), oSecond.m_aEvents);
}

TEST_F(CTOVTestRouterTest, TellsItsListenersInOrder)
{
    AddAll();

    EXPECT_EQ("abc", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, TellsAListenerAsOftenAsItWasAdded)
{
    AddAll();
    m_oRouter.AddListener(m_oA);

    EXPECT_EQ(4, m_oRouter.GetNumListeners());
    EXPECT_EQ("abca", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, RemovesTheFirstEntryOfAListener)
{
    AddAll();
    m_oRouter.AddListener(m_oA);

    m_oRouter.RemoveListener(m_oA);
    EXPECT_EQ("bca", HeardBy(m_oRouter));

    m_oRouter.RemoveListener(m_oA);
    EXPECT_EQ("bc", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, MovesTheLaterListenersDown)
{
    AddAll();

    m_oRouter.RemoveListener(m_oB);

    EXPECT_EQ(2, m_oRouter.GetNumListeners());
    EXPECT_EQ(&m_oA, m_oRouter.GetListener(0));
    EXPECT_EQ(&m_oC, m_oRouter.GetListener(1));
}

TEST_F(CTOVTestRouterTest, IgnoresTheRemovalOfAnUnknownListener)
{
    m_oRouter.RemoveListener(m_oB);
    m_oRouter.AddListener(m_oA);

    m_oRouter.RemoveListener(m_oB);

    EXPECT_EQ("a", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, HasNoListenersAfterTheLastRemoval)
{
    m_oRouter.AddListener(m_oA);
    m_oRouter.RemoveListener(m_oA);

    EXPECT_FALSE(m_oRouter.HasListeners());
    EXPECT_EQ("", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, SkipsAnEntryWithoutAListener)
{
    AddAll();
    Listeners(m_oRouter)[0] = nullptr;
    Listeners(m_oRouter).push_back(nullptr);

    RaiseAllEvents(m_oRouter);

    EXPECT_EQ("bcbc", m_sHeard);
    EXPECT_EQ(4, m_oRouter.GetNumListeners());
    EXPECT_EQ(nullptr, m_oRouter.GetListener(0));
}

TEST_F(CTOVTestRouterTest, TellsAListenerThatIsAddedInTheEvent)
{
    m_oRouter.AddListener(m_oA);
    m_oA.m_fnOnEvent = [this] {
        m_oA.m_fnOnEvent = nullptr;
        m_oRouter.AddListener(m_oB);
        m_oRouter.AddListener(m_oC);
    };

    EXPECT_EQ("abc", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, MissesTheNextWhenAListenerRemovesItself)
{
    AddAll();
    m_oA.m_fnOnEvent = [this] { m_oRouter.RemoveListener(m_oA); };

    EXPECT_EQ("ac", HeardBy(m_oRouter));
    EXPECT_EQ("bc", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, DoesNotTellALaterListenerThatIsRemovedInTheEvent)
{
    AddAll();
    m_oA.m_fnOnEvent = [this] { m_oRouter.RemoveListener(m_oC); };

    EXPECT_EQ("ab", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, EndsTheEventWhenAllListenersAreRemovedInIt)
{
    AddAll();
    m_oA.m_fnOnEvent = [this] {
        m_oRouter.RemoveListener(m_oA);
        m_oRouter.RemoveListener(m_oB);
        m_oRouter.RemoveListener(m_oC);
    };

    EXPECT_EQ("a", HeardBy(m_oRouter));
    EXPECT_EQ("", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, CanStandInAnotherRouter)
{
    CTOVTestRouter oOuter;
    AddAll();
    oOuter.AddListener(m_oA);
    oOuter.AddListener(m_oRouter);

    EXPECT_EQ("aabc", HeardBy(oOuter));
}

TEST_F(CTOVTestRouterTest, CopiesItsEntries)
{
    AddAll();
    CTOVTestRouter oCopy(m_oRouter);
    CTOVTestRouter oAssigned;
    oAssigned.AddListener(m_oC);
    EXPECT_EQ(&oAssigned, &(oAssigned = m_oRouter));

    m_oRouter.RemoveListener(m_oA);

    EXPECT_EQ("abc", HeardBy(oCopy));
    EXPECT_EQ("abc", HeardBy(oAssigned));
    EXPECT_EQ("bc", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, LeavesItsListenersAloneAtItsEnd)
{
    {
        const std::unique_ptr<CTOVTestRouter> pRouter(new CTOVTestRouter);
        pRouter->AddListener(m_oA);
    }
    m_oRouter.AddListener(m_oA);

    EXPECT_EQ("a", HeardBy(m_oRouter));
}

TEST_F(CTOVTestRouterTest, LetsThroughWhatAListenerThrows)
{
    AddAll();
    m_oB.m_fnOnEvent = [] { throw 7; };

    EXPECT_THROW(HeardBy(m_oRouter), int);
    EXPECT_EQ("ab", m_sHeard);
}
