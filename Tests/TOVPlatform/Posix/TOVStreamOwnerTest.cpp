// The biased lock of a stream, without a stream. The test program contains its source, which the library does not
// export.
#include <Posix/Base/TOVStreamOwner.h>

#include <random>
#include <thread>

#include <gtest/gtest.h>

using TOVPlatform::TOVPosix::CStreamOwner;

namespace
{
// What one owner and one other thread do in turns of this number.
constexpr int TURNS = 1000;
constexpr int LOOKS = 20;

struct sStage
{
    CStreamOwner oOwner;
    std::atomic<int> nTurn{0};
    std::atomic<int> nOwnersTurn{0};
    std::atomic<bool> bOwned{false};
    std::atomic<bool> bTaken{false};
    std::atomic<int> nSeenTogether{0};
};

// Owns the stream of each turn and uses it until it is taken away.
void Own(sStage& oStage)
{
    for (int nTurn = 1; nTurn <= TURNS; ++nTurn)
    {
        while (oStage.nTurn != nTurn)
            continue;
        while (oStage.oOwner.Enter())
        {
            oStage.bOwned.store(true, std::memory_order_relaxed);
            for (int nLook = 0; nLook < LOOKS; ++nLook)
            {
                if (oStage.bTaken.load(std::memory_order_relaxed))
                    ++oStage.nSeenTogether;
            }
            oStage.oOwner.Leave();
        }
        oStage.nOwnersTurn = nTurn;
    }
}
} // namespace

TEST(TOVStreamOwnerTest, HasNoOwnerBeforeAStreamIsAdmitted)
{
    CStreamOwner oOwner;
    EXPECT_FALSE(oOwner.Enter());
}

TEST(TOVStreamOwnerTest, LetsOnlyOneThreadEnter)
{
    CStreamOwner::Prepare();
    CStreamOwner oOwner;
    oOwner.Admit();

    const bool bFirst = oOwner.Enter();
    if (bFirst)
        oOwner.Leave();
    std::thread([&] { EXPECT_FALSE(oOwner.Enter()); }).join();

    EXPECT_FALSE(oOwner.Enter());
#if !defined(__SANITIZE_THREAD__)
    EXPECT_TRUE(bFirst);
#endif
}

TEST(TOVStreamOwnerTest, IsSharedByItsOwnerWithoutWaiting)
{
    CStreamOwner oOwner;
    oOwner.Admit();
    const bool bEntered = oOwner.Enter();
    oOwner.Share();
    if (bEntered)
        oOwner.Leave();
    EXPECT_FALSE(oOwner.Enter());
}

// The owner must not be seen at work after the other thread has taken the stream away, at whichever step that happens.
TEST(TOVStreamOwnerTest, IsNotAtWorkAfterTheStreamWasTaken)
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

        oStage.oOwner.Share();
        oStage.bTaken.store(true, std::memory_order_relaxed);
        while (oStage.nOwnersTurn != nTurn)
            continue;
    }
    oOwning.join();

    EXPECT_EQ(0, oStage.nSeenTogether);
}
