#include "Support/TOVWaitInstruments.h"

#include <algorithm>
#include <cstdint>

namespace Variable = TOVPlatform::TOVSynchronization::Variable;

TEST(TOVPlatformVariableTest, IncrementGivesTheNewValue)
{
    long lVariable = 41;

    EXPECT_EQ(42, Variable::InterlockedIncrement(lVariable));
    EXPECT_EQ(42, lVariable);
}

TEST(TOVPlatformVariableTest, IncrementsAnyValueOf32Bits)
{
    const std::int32_t aValues[] = {0, -1, -2, 0x7FFFFFFE, INT32_MIN};
    for (const std::int32_t nValue : aValues)
    {
        long lVariable = nValue;
        EXPECT_EQ(nValue + 1, Variable::InterlockedIncrement(lVariable));
        EXPECT_EQ(nValue + 1, lVariable);
    }
}

TEST(TOVPlatformVariableTest, WrapsAt32Bits)
{
    long lVariable = INT32_MAX;

    EXPECT_EQ(INT32_MIN, Variable::InterlockedIncrement(lVariable));
    EXPECT_EQ(INT32_MIN, lVariable);
}

TEST(TOVPlatformVariableTest, ReadsAVariableOf32BitsWithoutItsSign)
{
    long lVariable = static_cast<long>(0xFFFFFFFFu);

    EXPECT_EQ(0, Variable::InterlockedIncrement(lVariable));
    EXPECT_EQ(0, lVariable);
}

// The first threads go past the limit together.
TEST(TOVPlatformVariableTest, GivesEachThreadAValueOfItsOwnAroundTheLimit)
{
    const int nThreads = 4;
    const int nTurns = 100;
    for (int nRound = 0; nRound < 200; ++nRound)
    {
        long lVariable = INT32_MAX - nThreads * nTurns / 2;
        std::vector<std::vector<long>> aSeen(nThreads);
        CThreadGroup oThreads;
        oThreads.Start(nThreads, [&](int nThread) {
            for (int nTurn = 0; nTurn < nTurns; ++nTurn)
                aSeen[static_cast<std::size_t>(nThread)].push_back(Variable::InterlockedIncrement(lVariable));
        });
        oThreads.Join();

        std::vector<long> aAll;
        for (const std::vector<long>& aOfThread : aSeen)
            aAll.insert(aAll.end(), aOfThread.begin(), aOfThread.end());
        std::sort(aAll.begin(), aAll.end());
        EXPECT_EQ(INT32_MIN + nThreads * nTurns / 2 - 1, lVariable);
        EXPECT_EQ(aAll.end(), std::adjacent_find(aAll.begin(), aAll.end()));
        EXPECT_EQ(INT32_MIN, aAll.front());
        EXPECT_EQ(INT32_MAX, aAll.back());
    }
}

TEST(TOVPlatformVariableTest, GivesEachThreadAValueOfItsOwn)
{
    const int nThreads = 4;
    const int nTurns = 20000;
    long lVariable = 0;
    std::vector<std::vector<long>> aSeen(nThreads);
    CThreadGroup oThreads;
    oThreads.Start(nThreads, [&](int nThread) {
        for (int nTurn = 0; nTurn < nTurns; ++nTurn)
            aSeen[static_cast<std::size_t>(nThread)].push_back(Variable::InterlockedIncrement(lVariable));
    });
    oThreads.Join();

    std::vector<long> aAll;
    for (const std::vector<long>& aOfThread : aSeen)
        aAll.insert(aAll.end(), aOfThread.begin(), aOfThread.end());
    std::sort(aAll.begin(), aAll.end());
    EXPECT_EQ(nThreads * nTurns, lVariable);
    ASSERT_EQ(static_cast<std::size_t>(nThreads * nTurns), aAll.size());
    for (std::size_t nIndex = 0; nIndex < aAll.size(); ++nIndex)
        ASSERT_EQ(static_cast<long>(nIndex) + 1, aAll[nIndex]);
}
