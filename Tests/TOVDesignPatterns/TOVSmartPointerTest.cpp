#include "Support/TOVAllocationCounter.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"
#include "TOVDesignPatterns/TOVSmartPointerInstruments.h"

#include <TOVProcess/TOVMutex.h>

#include <memory>
#include <new>
#include <optional>
#include <type_traits>
#include <utility>

namespace
{
typedef CTOVSmartPointer<sReluctant> tReluctantPointer;

TOV_PRIVATE_MEMBER(BlockOf, tNumberPointer, CTOVRefCountObject<sNumber>*, m_pObject)
TOV_PRIVATE_MEMBER(CountOf, CTOVRefCountObject<sNumber>, long, m_lRefCount)
TOV_PRIVATE_MEMBER(MutexHandle, CTOVMutex, unsigned long long, m_hMutex)
} // namespace

TEST(CTOVSmartPointerTest, IsNullByDefault)
{
    tNumberPointer oPointer;
    const tNumberPointer& oConst = oPointer;

    EXPECT_FALSE(oConst.IsValid());
    EXPECT_EQ(1, oConst.GetRefCount());
    EXPECT_EQ(nullptr, oPointer.Get());
    EXPECT_EQ(nullptr, oConst.Get());
    EXPECT_EQ(nullptr, (sNumber*)oPointer);
    EXPECT_EQ(nullptr, (const sNumber*)oConst);
    EXPECT_EQ(nullptr, (const sNumber*)oPointer);
}

TEST(CTOVSmartPointerTest, NullRaisesAtEveryAccess)
{
    tNumberPointer oPointer;
    const tNumberPointer& oConst = oPointer;

    EXPECT_CHECK_AT("TOVDesignPatterns/TOVSmartPointer", "m_pObject->IsValid()", (void)oPointer->A);
    EXPECT_CHECK_AT("TOVDesignPatterns/TOVSmartPointer", "m_pObject->IsValid()", (void)oConst->A);
    EXPECT_CHECK_AT("TOVDesignPatterns/TOVSmartPointer", "m_pObject->IsValid()", (void)*oPointer);
    EXPECT_CHECK_AT("TOVDesignPatterns/TOVSmartPointer", "m_pObject->IsValid()", (void)*oConst);
    EXPECT_CHECK_AT("TOVDesignPatterns/TOVSmartPointer", "m_pObject->IsValid()", (void)oPointer[0]);
    EXPECT_FALSE(oPointer.IsValid());
}

TEST(CTOVSmartPointerTest, NullPointersAreSharedToo)
{
    tNumberPointer oPtr1;
    tNumberPointer oPtr2;

    oPtr2 = oPtr1;

    EXPECT_FALSE(oPtr1.IsValid());
    EXPECT_EQ(2, oPtr1.GetRefCount());
    EXPECT_EQ(2, oPtr2.GetRefCount());
    EXPECT_TRUE(oPtr1 == oPtr2);
    EXPECT_TRUE(oPtr1 == 0);
    EXPECT_TRUE(oPtr2 == 0);
}

TEST(CTOVSmartPointerTest, NullAssignedToASharedNullPartsThem)
{
    tNumberPointer oPtr1;
    tNumberPointer oPtr2(oPtr1);

    oPtr1 = 0;

    EXPECT_EQ(1, oPtr1.GetRefCount());
    EXPECT_EQ(1, oPtr2.GetRefCount());
    EXPECT_FALSE(oPtr1.IsValid());
}

TEST(CTOVSmartPointerTest, RawPointerAssignedToASharerPartsThem)
{
    sNumber* pOld = NewNumber(1);
    sNumber* pNew = NewNumber(2);
    tNumberPointer oPtr1(pOld);
    tNumberPointer oPtr2(oPtr1);

    tNumberPointer& oResult = (oPtr1 = pNew);

    EXPECT_EQ(&oPtr1, &oResult);
    EXPECT_EQ(1, oPtr1.GetRefCount());
    EXPECT_EQ(1, oPtr2.GetRefCount());
    EXPECT_EQ(pNew, oPtr1.Get());
    EXPECT_EQ(pOld, oPtr2.Get());
    EXPECT_EQ(1, oPtr2->A);
}

TEST(CTOVSmartPointerTest, RawPointerAssignedToANullSharerPartsThem)
{
    sNumber* pNumber = NewNumber(1);
    tNumberPointer oPtr1;
    tNumberPointer oPtr2(oPtr1);

    oPtr1 = pNumber;

    EXPECT_EQ(1, oPtr1.GetRefCount());
    EXPECT_EQ(1, oPtr2.GetRefCount());
    EXPECT_TRUE(oPtr1.IsValid());
    EXPECT_FALSE(oPtr2.IsValid());
}

TEST(CTOVSmartPointerTest, NullAssignedToASharerLeavesTheObjectToTheOther)
{
    int nDeaths = 0;
    sMortal* pMortal = new sMortal(nDeaths);
    tMortalPointer oPtr3(pMortal);
    tMortalPointer oPtr4(oPtr3);

    oPtr3 = 0;

    EXPECT_EQ(1, oPtr3.GetRefCount());
    EXPECT_EQ(1, oPtr4.GetRefCount());
    EXPECT_FALSE(oPtr3.IsValid());
    EXPECT_EQ(pMortal, oPtr4.Get());
    EXPECT_EQ(0, nDeaths);

    oPtr3 = oPtr4;

    EXPECT_EQ(2, oPtr3.GetRefCount());
    EXPECT_EQ(2, oPtr4.GetRefCount());
    EXPECT_EQ(pMortal, oPtr3.Get());
}

TEST(CTOVSmartPointerTest, ReadsItsObjectThroughAllAccesses)
{
    tNumberPointer oPointer(NewNumber(1234));
    const tNumberPointer& oConst = oPointer;

    EXPECT_EQ(1234, oPointer->A);
    EXPECT_EQ(1234, oConst->A);
    EXPECT_EQ(1234, (*oPointer).A);
    EXPECT_EQ(1234, (*oConst).A);
}

TEST(CTOVSmartPointerTest, ReadsAnArrayByIndex)
{
    tNumberPointer oPointer(NewNumbers(4321, 8765));

    EXPECT_EQ(4321, oPointer[0].A);
    EXPECT_EQ(8765, oPointer[1].A);
}

TEST(CTOVSmartPointerTest, WritesReachEverySharer)
{
    tNumberPointer oPtr1(NewNumbers(1, 2));
    const tNumberPointer oPtr2(oPtr1);

    oPtr1->A = 10;
    EXPECT_EQ(10, oPtr2->A);

    (*oPtr1).A = 20;
    EXPECT_EQ(20, oPtr2->A);

    oPtr1[1].A = 30;
    EXPECT_EQ(30, oPtr2.Get()[1].A);
}

TEST(CTOVSmartPointerTest, CopySharesTheObject)
{
    sNumber* pNumber = NewNumber(1);
    tNumberPointer oPtr3(pNumber);
    const tNumberPointer oPtr4(oPtr3);

    EXPECT_TRUE(oPtr3.IsValid());
    EXPECT_TRUE(oPtr4.IsValid());
    EXPECT_EQ(2, oPtr3.GetRefCount());
    EXPECT_EQ(2, oPtr4.GetRefCount());
    EXPECT_EQ(pNumber, oPtr3.Get());
    EXPECT_EQ(pNumber, oPtr4.Get());
}

TEST(CTOVSmartPointerTest, ComparesHeldPointers)
{
    sNumber* pNumber = NewNumber(1);
    tNumberPointer oPtr1(pNumber);
    const tNumberPointer oPtr2(oPtr1);
    tNumberPointer oOther(NewNumber(1));

    EXPECT_TRUE(oPtr1 == oPtr2);
    EXPECT_FALSE(oPtr1 != oPtr2);
    EXPECT_TRUE(oPtr1 == pNumber);
    EXPECT_TRUE(pNumber == oPtr2);
    EXPECT_TRUE(oPtr1 != oOther);
    EXPECT_FALSE(oPtr1 == oOther);
    EXPECT_TRUE(oPtr2 != 0);
}

TEST(CTOVSmartPointerTest, ObjectDiesWithTheLastHandle)
{
    int nDeaths = 0;
    std::optional<tMortalPointer> oPtr1(std::in_place, new sMortal(nDeaths));
    std::optional<tMortalPointer> oPtr2(*oPtr1);

    oPtr1.reset();
    EXPECT_EQ(0, nDeaths);
    EXPECT_EQ(1, oPtr2->GetRefCount());

    oPtr2.reset();
    EXPECT_EQ(1, nDeaths);
}

TEST(CTOVSmartPointerTest, AssignmentEndsTheObjectOfASoleOwner)
{
    int nFirstDeaths = 0;
    int nSecondDeaths = 0;
    tMortalPointer oPtr1(new sMortal(nFirstDeaths));
    tMortalPointer oPtr2(new sMortal(nSecondDeaths));

    tMortalPointer& oResult = (oPtr1 = oPtr2);

    EXPECT_EQ(&oPtr1, &oResult);
    EXPECT_EQ(1, nFirstDeaths);
    EXPECT_EQ(0, nSecondDeaths);
    EXPECT_EQ(2, oPtr1.GetRefCount());
    EXPECT_EQ(2, oPtr2.GetRefCount());

    oPtr2 = new sMortal(nFirstDeaths);
    oPtr1 = 0;
    EXPECT_EQ(1, nSecondDeaths);
}

TEST(CTOVSmartPointerTest, TakesOverWhatItsOldObjectOwns)
{
    struct sNode
    {
        explicit sNode(int nSetNumber) : nNumber(nSetNumber) {}

        int nNumber;
        CTOVSmartPointer<sNode> oNext;
    };
    CTOVSmartPointer<sNode> oHead(new sNode(1));
    oHead->oNext = new sNode(2);

    oHead = std::as_const(oHead->oNext);

    ASSERT_TRUE(oHead.IsValid());
    EXPECT_EQ(2, oHead->nNumber);
    EXPECT_EQ(1, oHead.GetRefCount());
}

TEST(CTOVSmartPointerTest, SoleOwnerAssignedToItselfLosesItsObject)
{
    int nDeaths = 0;
    tMortalPointer oPointer(new sMortal(nDeaths));

    oPointer = std::as_const(oPointer);

    EXPECT_EQ(1, nDeaths);
    EXPECT_FALSE(oPointer.IsValid());
    EXPECT_EQ(1, oPointer.GetRefCount());
}

TEST(CTOVSmartPointerTest, SharerAssignedToItselfStaysAsItIs)
{
    int nDeaths = 0;
    tMortalPointer oPtr1(new sMortal(nDeaths));
    const tMortalPointer oPtr2(oPtr1);

    oPtr1 = std::as_const(oPtr1);

    EXPECT_EQ(0, nDeaths);
    EXPECT_EQ(2, oPtr1.GetRefCount());
    EXPECT_EQ(oPtr2.Get(), oPtr1.Get());
}

TEST(CTOVSmartPointerTest, OwnPointerAssignedAgainIsNotFreed)
{
    int nDeaths = 0;
    sMortal* pMortal = new sMortal(nDeaths);
    tMortalPointer oPointer(pMortal);

    oPointer = pMortal;

    EXPECT_EQ(0, nDeaths);
    EXPECT_EQ(pMortal, oPointer.Get());
    EXPECT_EQ(1, oPointer.GetRefCount());
}

TEST(CTOVSmartPointerTest, HoldsTypesOfWideAlignment)
{
    struct alignas(64) sWide
    {
        int nValue = 7;
    };
    const CTOVSmartPointer<sWide> oPointer(new sWide);

    EXPECT_EQ(7, oPointer->nValue);
    EXPECT_EQ(0u, reinterpret_cast<std::size_t>(oPointer.Get()) % 64);
}

TEST(CTOVSmartPointerTest, OnlyTellsOfACheckAtTheObjectsEnd)
{
    const tReluctantPointer* pPointer = new tReluctantPointer(new sReluctant);
    CAllocationCounter oCounter;
    EXPECT_TOLD_CHECK("bMayDie", delete pPointer);

    // Handle, control block and object are gone all the same.
    EXPECT_EQ(-3, oCounter.Kept());
}

TEST(CTOVSmartPointerTest, AnEarlierHandleDoesNotMeetTheObjectsCheck)
{
    tReluctantPointer oPtr1(new sReluctant);
    {
        const tReluctantPointer oPtr2(oPtr1);
    }

    EXPECT_EQ(1, oPtr1.GetRefCount());
    oPtr1->bMayDie = true;
}

TEST(CTOVSmartPointerTest, OnlyTellsOfACheckAtTheObjectsEndOnAssignment)
{
    tReluctantPointer oPtr1(new sReluctant);
    tReluctantPointer oPtr2(new sReluctant);
    const tReluctantPointer oNull;

    EXPECT_TOLD_CHECK("bMayDie", oPtr1 = oNull);
    EXPECT_TOLD_CHECK("bMayDie", oPtr2 = 0);
    EXPECT_FALSE(oPtr1.IsValid());
    EXPECT_FALSE(oPtr2.IsValid());
}

TEST(CTOVSmartPointerTest, OnlyTellsOfTheCheckOfAMutex)
{
    CTOVMutex* pMutex = new CTOVMutex;
    const CTOVMutex oCloser(*pMutex);
    MutexHandle(*pMutex) = 0;
    const CTOVSmartPointer<CTOVMutex>* pPointer = new CTOVSmartPointer<CTOVMutex>(pMutex);

    EXPECT_TOLD_CHECK("m_hMutex != NULL", delete pPointer);
}

TEST(CTOVSmartPointerTest, HasADestructorThatDoesNotThrowWhateverItHolds)
{
    EXPECT_FALSE(std::is_nothrow_destructible_v<sReluctant>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<tReluctantPointer>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<tNumberPointer>);
}

// Somebody has let go of the block too often.
TEST(CTOVSmartPointerTest, OnlyTellsOfACountBelowZeroAtItsEnd)
{
    tNumberPointer oKeeper;
    const tNumberPointer* const pPointer = new tNumberPointer(oKeeper);
    CTOVRefCountObject<sNumber>* const pBlock = BlockOf(oKeeper);
    BlockOf(oKeeper) = nullptr;
    CountOf(*pBlock) = 0;

    EXPECT_TOLD_CHECK_AT("TOVDesignPatterns/TOVRefCount", "lRefCount >= 0", delete pPointer);

    EXPECT_EQ(-1, pBlock->GetRefCount());
    delete pBlock;
}

TEST(CTOVSmartPointerTest, IsOnePointerWithoutVirtualOperations)
{
    EXPECT_EQ(sizeof(void*), sizeof(tNumberPointer));
    EXPECT_FALSE(std::is_polymorphic_v<tNumberPointer>);
}

// No handle is without a block but one that others have torn to pieces.
TEST(CTOVSmartPointerTest, CountsNobodyAndEndsInPeaceWithoutABlock)
{
    tNumberPointer oPointer(NewNumber(1));
    {
        tNumberPointer oTorn(oPointer);
        CTOVRefCountObject<sNumber>* const pBlock = BlockOf(oTorn);
        BlockOf(oTorn) = nullptr;
        EXPECT_EQ(0, oTorn.GetRefCount());
        EXPECT_EQ(2, oPointer.GetRefCount());
        pBlock->Release();
    }
    EXPECT_EQ(1, oPointer.GetRefCount());
}
