// What listeners do to the class server while it logs, and what the end of a descriptor asks of the system.
#include "Support/TOVAllocationCounter.h"
#include "TOVRtti/TOVClassInstruments.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

namespace
{
// Acts at the first line alone: what it does logs in its turn.
class CActingOnce : public CActingRecorder
{
public:
    explicit CActingOnce(std::function<void()> fnAction)
        : CActingRecorder([this, fnAction] {
              if (!m_bActed)
              {
                  m_bActed = true;
                  fnAction();
              }
          })
    {
    }

private:
    bool m_bActed = false;
};

void RemoveClass(const char* szName)
{
    CTOVClassServer::Instance().RemoveClass(szName);
}
} // namespace

TEST(CTOVClassListenerTest, MayRemoveTheClassThatIsBeingRemoved)
{
    const CTOVClass oClass("Removed twice");
    const CActingOnce oLog([] { RemoveClass("Removed twice"); });

    RemoveClass("Removed twice");

    EXPECT_FALSE(IsHeld("Removed twice"));
    EXPECT_EQ(2, oLog.CountLines("Removing class Removed twice"));
}

TEST(CTOVClassListenerTest, MayRemoveTheClassThatEnds)
{
    const CTOVClass* const pClass = new CTOVClass("Ended and removed");
    const CActingOnce oLog([] { RemoveClass("Ended and removed"); });

    delete pClass;

    EXPECT_FALSE(IsHeld("Ended and removed"));
}

TEST(CTOVClassListenerTest, MayRemoveTheNeighboursOfTheClassThatIsBeingRemoved)
{
    const CTOVClass oBefore("Neighbour 1");
    const CTOVClass oClass("Neighbour 2");
    const CTOVClass oBehind("Neighbour 3");
    const CActingOnce oLog([] {
        RemoveClass("Neighbour 1");
        RemoveClass("Neighbour 3");
    });

    RemoveClass("Neighbour 2");

    EXPECT_FALSE(IsHeld("Neighbour 1") || IsHeld("Neighbour 2") || IsHeld("Neighbour 3"));
}

TEST(CTOVClassListenerTest, MayEndTheHeldClassWhenASecondOneComes)
{
    std::unique_ptr<const CTOVClass> pHeld = std::make_unique<const CTOVClass>("Held");
    const unsigned long ulHeldId = pHeld->GetClassId();
    const CActingOnce oLog([&] { pHeld.reset(); });

    const CTOVClass oSecond("Held");

    EXPECT_EQ(ulHeldId, oSecond.GetClassId());
}

TEST(CTOVClassListenerTest, MayEnterTheClassAgainThatEnds)
{
    COpenClass* const pClass = new COpenClass("Stubborn");
    {
        const CActingOnce oLog([pClass] { CTOVClassServer::Instance().AddClass("Another name", pClass); });
        delete pClass;
    }

    EXPECT_FALSE(IsHeld("Stubborn"));
    EXPECT_FALSE(IsHeld("Another name"));
}

// A listener must not throw; what one throws at the end of a descriptor goes through and leaves nothing behind.
TOV_CHILD(ClassEndsBeforeAThrowingListener)
{
    const CTOVClass* const pClass = new CTOVClass("A name of some length");
    const CActingRecorder oLog([] { throw 7; });
    bool bThrew = false;
    CAllocationCounter oCounter;
    try
    {
        delete pClass;
    }
    catch (int)
    {
        bThrew = true;
    }
    const long lKept = oCounter.Kept();
    std::printf("%s, %s, %s", bThrew ? "thrown" : "kept", IsHeld("A name of some length") ? "held" : "gone",
                lKept < 0 ? "freed" : "leaked");
    std::fflush(stdout);
}

TEST(CTOVClassListenerTest, ThrowsThroughTheEndOfADescriptor)
{
    const sChildResult oResult = RunChild("ClassEndsBeforeAThrowingListener");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_NE(std::string::npos, oResult.sOutput.find("thrown, gone, freed")) << oResult.sOutput;
}

TEST(CTOVClassEndTest, TakesNoMemory)
{
    const CTOVClass* const pClass = new CTOVClass("A name of some length");
    CAllocationCounter oCounter;
    delete pClass;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0u, ulTaken);
    EXPECT_FALSE(IsHeld("A name of some length"));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVClassEndTest, ComesWithoutMemoryToo)
{
    const CTOVClass* const pClass = new CTOVClass("A name of some length");
    {
        const CAllocationFailure oFailure;
        delete pClass;
    }

    EXPECT_FALSE(IsHeld("A name of some length"));
}

TOV_CHILD(ServerEndsWithoutMemory)
{
    new CTOVClass("A name of some length");
    const CTOVClassServer* const pServer = &CTOVClassServer::Instance();
    try
    {
        const CAllocationFailure oFailure;
        delete pServer;
    }
    catch (const std::bad_alloc&)
    {
        std::_Exit(1);
    }
    std::_Exit(7);
}

TEST(CTOVClassServerEndTest, ComesWithoutMemoryToo)
{
    EXPECT_EQ(7, RunChild("ServerEndsWithoutMemory").nExitCode);
}
#endif
