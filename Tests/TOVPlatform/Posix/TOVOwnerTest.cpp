// The biased lock of streams and objects, without these. The test program contains its source, which the library does
// not export.
#include <Posix/Base/TOVOwner.h>

#include <random>
#include <thread>

#include <gtest/gtest.h>

using TOVPlatform::TOVPosix::COwner;

namespace
{
// What one owner and one other thread do in turns of this number.
constexpr int TURNS = 1000;
constexpr int LOOKS = 20;

// What the calling thread names itself.
std::uintptr_t Self()
{
    static thread_local int s_nAddress = 0;
    return reinterpret_cast<std::uintptr_t>(&s_nAddress);
}

struct sStage
{
    COwner oOwner;
    std::atomic<int> nTurn{0};
    std::atomic<int> nOwnersTurn{0};
    std::atomic<bool> bOwned{false};
    std::atomic<bool> bTaken{false};
    std::atomic<int> nSeenTogether{0};
};

// A use of either sort.
bool Enter(COwner& oOwner, bool bShortly)
{
    return bShortly ? oOwner.EnterShortly(Self()) : oOwner.Enter(Self());
}

void Leave(COwner& oOwner, bool bShortly)
{
    if (bShortly)
        oOwner.LeaveShortly();
    else
        oOwner.Leave();
}

// Owns the object of each turn and uses it until it is taken away.
void Own(sStage& oStage)
{
    for (int nTurn = 1; nTurn <= TURNS; ++nTurn)
    {
        while (oStage.nTurn != nTurn)
            continue;
        const bool bShortly = nTurn % 2 == 0;
        if (oStage.oOwner.Enter(Self()))
            oStage.oOwner.Leave();
        while (Enter(oStage.oOwner, bShortly))
        {
            oStage.bOwned.store(true, std::memory_order_relaxed);
            for (int nLook = 0; nLook < LOOKS; ++nLook)
            {
                if (oStage.bTaken.load(std::memory_order_relaxed))
                    ++oStage.nSeenTogether;
            }
            Leave(oStage.oOwner, bShortly);
        }
        oStage.nOwnersTurn = nTurn;
    }
}
} // namespace

TEST(TOVOwnerTest, HasNoOwnerBeforeItIsAdmitted)
{
    COwner oOwner;
    EXPECT_FALSE(oOwner.Enter(Self()));
}

TEST(TOVOwnerTest, LetsOnlyOneThreadEnter)
{
    COwner::Prepare();
    COwner oOwner;
    oOwner.Admit();

    const bool bFirst = oOwner.Enter(Self());
    if (bFirst)
        oOwner.Leave();
    std::thread([&] { EXPECT_FALSE(oOwner.Enter(Self())); }).join();

    EXPECT_FALSE(oOwner.Enter(Self()));
#if !defined(__SANITIZE_THREAD__)
    EXPECT_TRUE(bFirst);
#endif
}

TEST(TOVOwnerTest, ShortUseNeedsAnOwner)
{
    COwner oOwner;
    EXPECT_FALSE(oOwner.EnterShortly(Self()));
    oOwner.Admit();
    EXPECT_FALSE(oOwner.EnterShortly(Self()));

    const bool bOwned = oOwner.Enter(Self());
    if (bOwned)
        oOwner.Leave();
    EXPECT_EQ(bOwned, !oOwner.IsShared());
    EXPECT_TRUE(oOwner.CanRead(Self()));
    EXPECT_EQ(bOwned, oOwner.EnterShortly(Self()));
    oOwner.LeaveShortly();
    std::thread([&] {
        EXPECT_EQ(bOwned, !oOwner.CanRead(Self()));
        EXPECT_FALSE(oOwner.EnterShortly(Self()));
        EXPECT_FALSE(oOwner.Enter(Self()));
    }).join();

    EXPECT_TRUE(oOwner.IsShared());
    EXPECT_FALSE(oOwner.EnterShortly(Self()));
}

TEST(TOVOwnerTest, IsSharedByItsOwnerWithoutWaiting)
{
    COwner oOwner;
    oOwner.Admit();
    const bool bEntered = oOwner.Enter(Self());
    oOwner.Share(Self());
    if (bEntered)
        oOwner.Leave();
    EXPECT_FALSE(oOwner.Enter(Self()));
}

// The owner must not be seen at work after the other thread has taken the object away, at whichever step that happens.
TEST(TOVOwnerTest, IsNotAtWorkAfterTheObjectWasTaken)
{
    sStage oStage;
    std::thread oOwning([&] { Own(oStage); });
    std::mt19937 oRandom(22);
    for (int nTurn = 1; nTurn <= TURNS; ++nTurn)
    {
        oStage.bOwned = false;
        oStage.bTaken = false;
        oStage.oOwner.Admit();
        oStage.nTurn = nTurn;
        while (!oStage.bOwned && oStage.nOwnersTurn != nTurn)
            continue;
        for (auto nSteps = oRandom() % 64; nSteps > 0; --nSteps)
            std::atomic_signal_fence(std::memory_order_seq_cst);

        oStage.oOwner.Share(Self());
        oStage.bTaken.store(true, std::memory_order_relaxed);
        while (oStage.nOwnersTurn != nTurn)
            continue;
    }
    oOwning.join();

    EXPECT_EQ(0, oStage.nSeenTogether);
}
