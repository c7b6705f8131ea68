// Strings beside a plain model, on several threads at once, each of which also destroys strings that others have made.
#include "TOVString/TOVStringKinds.h"

#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace
{
template<class TString> class CTOVStringThreadsTest : public testing::Test
{
};
TYPED_TEST_SUITE(CTOVStringThreadsTest, tStrings, sStringName);

// A string and what it must hold.
template<class TString> struct sPair
{
    // Not a string of the standard library, whose functions for wchar_t may take it to be larger.
    typedef std::vector<tUnitOf<TString>> tModel;

    TString oString;
    tModel oModel;
    long lCapacity = 0;

    bool IsEqual() const
    {
        const tUnitOf<TString>* const pText = oString.GetString();
        return oString.GetLength() == static_cast<long>(oModel.size()) && oString.GetData()->GetSize() == lCapacity &&
               std::equal(oModel.begin(), oModel.end(), pText) && (pText == nullptr || pText[oModel.size()] == 0);
    }

    void Append(const tModel& oText)
    {
        oModel.insert(oModel.end(), oText.begin(), oText.end());
        if (!oText.empty())
            lCapacity = std::max(lCapacity, static_cast<long>(oModel.size()) + 1);
    }
};

// Where threads leave strings for each other. Nothing else is shared, as strings that share a block belong together.
template<class TString> class CExchange
{
public:
    void Swap(sPair<TString>& oPair)
    {
        const std::lock_guard<std::mutex> oLock(m_oMutex);
        // A copy would share the block with another thread.
        m_aPairs.push_back(std::move(oPair));
        oPair = std::move(m_aPairs.front());
        m_aPairs.erase(m_aPairs.begin());
    }

private:
    std::mutex m_oMutex;
    std::vector<sPair<TString>> m_aPairs{20};
};

// Lengths whose blocks end on both sides of a size of the lists, and longer ones.
template<class TRandom> int NextLength(TRandom& oRandom)
{
    return static_cast<int>((oRandom() % 20 == 0 ? oRandom() % 3000 : oRandom() % 70) + 1);
}

template<class TString> int RunSteps(unsigned uSeed, int nSteps, CExchange<TString>* pExchange)
{
    typedef tUnitOf<TString> tUnit;
    typedef typename sPair<TString>::tModel tModel;
    std::mt19937 oRandom(uSeed);
    std::vector<sPair<TString>> aPairs(30);
    int nUnequal = 0;
    for (int nStep = 0; nStep < nSteps; ++nStep)
    {
        sPair<TString>& oPair = aPairs[oRandom() % aPairs.size()];
        const tModel oText(NextLength(oRandom), static_cast<tUnit>('a' + oRandom() % 26));
        const int nLength = static_cast<int>(oText.size());
        tModel oTerminated(oText);
        oTerminated.push_back(0);
        switch (oRandom() % 9)
        {
        case 0:
            oPair = {TString(oTerminated.data()), oText, nLength + 1};
            break;
        case 1:
            oPair.oString = oTerminated.data();
            oPair.oModel = oText;
            oPair.lCapacity = nLength + 1;
            break;
        case 2:
        case 3:
            oPair.oString += oTerminated.data();
            oPair.Append(oText);
            break;
        case 4:
            oPair.oString += oText[0];
            oPair.Append(tModel(1, oText[0]));
            break;
        case 5:
        {
            // What a string joins may be its own text, and a sharer keeps its block.
            const sPair<TString> oSharer(oPair);
            oPair.oString.ConcatCopy(nLength, oText.data(), static_cast<int>(oPair.oModel.size()),
                                     oPair.oString.GetString());
            nUnequal += oSharer.IsEqual() ? 0 : 1;
            oPair.oModel = oText;
            oPair.lCapacity = 0;
            oPair.Append(oSharer.oModel);
            oPair.lCapacity = static_cast<long>(oPair.oModel.size()) + 1;
            break;
        }
        case 6:
            oPair = {};
            break;
        case 7:
            if (oPair.lCapacity < 10000)
            {
                oPair.oString += oPair.oString;
                oPair.Append(tModel(oPair.oModel));
            }
            break;
        default:
            if (pExchange != nullptr)
                pExchange->Swap(oPair);
            break;
        }
        if (!oPair.IsEqual())
            ++nUnequal;
    }
    for (const sPair<TString>& oPair : aPairs)
        nUnequal += oPair.IsEqual() ? 0 : 1;
    return nUnequal;
}
} // namespace

TYPED_TEST(CTOVStringThreadsTest, OneThreadsStringsAreLikeTheModel)
{
    EXPECT_EQ(0, RunSteps<TypeParam>(1, 20000, nullptr));
}

TYPED_TEST(CTOVStringThreadsTest, StringsThatGoFromThreadToThreadAreLikeTheModel)
{
    CExchange<TypeParam> oExchange;
    std::vector<int> anUnequal(4);
    std::vector<std::thread> aThreads;
    for (unsigned uThread = 0; uThread < anUnequal.size(); ++uThread)
        aThreads.emplace_back(
            [&, uThread] { anUnequal[uThread] = RunSteps<TypeParam>(uThread + 2, 10000, &oExchange); });
    for (std::thread& oThread : aThreads)
        oThread.join();

    EXPECT_EQ(std::vector<int>(4), anUnequal);
}
