// What smart pointers take from the heap and give back, and what holds when it gives nothing.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVRefusal.h"
#include "Support/TOVTestSupport.h"
#include "TOVDesignPatterns/TOVSmartPointerInstruments.h"

#include <TOVContainers/TOVSorter.h>

#include <memory>
#include <random>
#include <vector>

TEST(CTOVSmartPointerMemoryTest, ConstructionTakesOneBlock)
{
    sNumber* pNumber = NewNumber(1);
    CAllocationCounter oCounter;
    const tNumberPointer oNull;
    const unsigned long ulForNull = oCounter.Taken();
    const tNumberPointer oPointer(pNumber);
    const unsigned long ulForBoth = oCounter.Taken();

    EXPECT_EQ(1u, ulForNull);
    EXPECT_EQ(2u, ulForBoth);
}

TEST(CTOVSmartPointerMemoryTest, CopyingTakesNoMemory)
{
    const tNumberPointer oPtr1(NewNumber(1));
    tNumberPointer oPtr2;
    CAllocationCounter oCounter;
    const tNumberPointer oPtr3(oPtr1);
    oPtr2 = oPtr3;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0u, ulTaken);
    EXPECT_EQ(3, oPtr1.GetRefCount());
}

TEST(CTOVSmartPointerMemoryTest, SoleOwnerKeepsItsBlockForANewObject)
{
    sNumber* pNumber = NewNumber(1);
    tNumberPointer oPointer;
    CAllocationCounter oCounter;
    oPointer = pNumber;
    oPointer = 0;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0u, ulTaken);
    EXPECT_FALSE(oPointer.IsValid());
}

TEST(CTOVSmartPointerMemoryTest, SharerTakesOneBlockForANewObject)
{
    sNumber* pNumber = NewNumber(1);
    tNumberPointer oPtr1;
    const tNumberPointer oPtr2(oPtr1);
    CAllocationCounter oCounter;
    oPtr1 = pNumber;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(1u, ulTaken);
}

TEST(CTOVSmartPointerMemoryTest, FreesEverything)
{
    CAllocationCounter oCounter;
    {
        tNumberPointer oPtr1(NewNumbers(1, 2));
        tNumberPointer oPtr2(oPtr1);
        const tNumberPointer oPtr3;
        oPtr2 = oPtr3;
        oPtr1 = NewNumber(3);
        oPtr2 = NewNumber(4);
    }

    EXPECT_EQ(0, oCounter.Kept());
}

// More control blocks than a list has room for are freed, with and without objects, by lists and without them.
TEST(CTOVSmartPointerMemoryTest, FreesEverythingWithAndWithoutLists)
{
    for (const bool bUseLists : {true, false})
    {
        CAllocationCounter oCounter;
        TOVPlatform::TOVMemoryList::UseLists(bUseLists);
        {
            std::mt19937 oRandom(1);
            std::vector<tNumberPointer> aPointers(1000);
            for (int nTime = 0; nTime < 10000; ++nTime)
            {
                tNumberPointer& oPointer = aPointers[oRandom() % aPointers.size()];
                if (oRandom() % 3 != 0)
                    oPointer = tNumberPointer(oRandom() % 4 != 0 ? NewNumber(nTime) : nullptr);
                else
                    oPointer = tNumberPointer(aPointers[oRandom() % aPointers.size()]);
            }
        }
        TOVPlatform::TOVMemoryList::UseLists(false);
        const long lKept = oCounter.Kept();
        EXPECT_EQ(0, lKept) << bUseLists;
    }
}

TEST(CTOVSmartPointerMemoryTest, FreesAnObjectBehindAnInterfaceWithoutAVirtualDestructor)
{
    typedef int (*tCompare)(const int&, const int&);
    class CIdleSorter : public ISorter<tCompare>
    {
    public:
        void Sort(tCompare) override {}

        int m_anState[10] = {};
    };
    CAllocationCounter oCounter;
    {
        CTOVSmartPointer<ISorter<tCompare>> oSorter;
        oSorter = new CIdleSorter;
        oSorter->Sort(nullptr);
    }

    EXPECT_EQ(0, oCounter.Kept());
}

TEST(CTOVSmartPointerMemoryTest, FreesByTheTypesOwnOperatorDelete)
{
    struct sPooled
    {
        static void operator delete(void* pMemory)
        {
            ++Freed();
            ::operator delete(pMemory);
        }
        static int& Freed()
        {
            static int s_nFreed = 0;
            return s_nFreed;
        }
    };
    {
        const CTOVSmartPointer<sPooled> oPointer(new sPooled);
    }

    EXPECT_EQ(1, sPooled::Freed());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVSmartPointerMemoryTest, FailedConstructionLeavesTheObjectToTheCaller)
{
    int nDeaths = 0;
    const std::unique_ptr<sMortal> pMortal(new sMortal(nDeaths));
    EXPECT_TRUE(RunsOutOfMemory([&] { const tMortalPointer oPointer(pMortal.get()); }));
    EXPECT_EQ(0, nDeaths);
}

TEST(CTOVSmartPointerMemoryTest, FailedAssignmentLeavesEverythingAsItWas)
{
    int nDeaths = 0;
    const std::unique_ptr<sMortal> pMortal(new sMortal(nDeaths));
    tMortalPointer oPtr1(new sMortal(nDeaths));
    const tMortalPointer oPtr2(oPtr1);
    EXPECT_TRUE(RunsOutOfMemory([&] { oPtr1 = pMortal.get(); }));
    EXPECT_EQ(2, oPtr1.GetRefCount());
    EXPECT_EQ(oPtr2.Get(), oPtr1.Get());
    EXPECT_EQ(0, nDeaths);
}
#endif
