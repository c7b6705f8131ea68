#include "Support/TOVAllocationCounter.h"
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVRuntimeClassFacts.h"
#include "Support/TOVTestSupport.h"
#include "TOVDesignPatterns/TOVMortal.h"

#include <TOVDesignPatterns/TOVRefCount.h>

#include <cstring>
#include <type_traits>

namespace
{
// Counts its own references, and tells when it dies.
class CCounted : public CTOVRefCount
{
public:
    explicit CCounted(int* pDeaths = nullptr) : m_pDeaths(pDeaths) {}
    ~CCounted() override
    {
        if (m_pDeaths != nullptr)
            ++*m_pDeaths;
    }
    CCounted(const CCounted&) = default;
    CCounted& operator=(const CCounted&) = default;

    void SetRefCount(long lRefCount) { m_lRefCount = lRefCount; }

private:
    int* m_pDeaths;
};

// Leaves the runtime identity as the interface has it.
class CPlainCounted : public ITOVRefCount
{
public:
    long AddRef() override { return ++m_lCount; }
    long Release() override { return --m_lCount; }
    long GetRefCount() const override { return m_lCount; }

private:
    long m_lCount = 1;
};

typedef CTOVRefCountObject<sMortal> tMortalBlock;
TOV_PRIVATE_MEMBER(BlockRefCount, tMortalBlock, long, m_lRefCount)
TOV_PRIVATE_MEMBER(BlockObject, tMortalBlock, sMortal*, m_pObject)
} // namespace

TEST(CTOVRefCountTest, StartsWithOneReference)
{
    const CCounted oCounted;

    EXPECT_EQ(1, oCounted.GetRefCount());
}

TEST(CTOVRefCountTest, AddRefGivesTheNewCount)
{
    CCounted oCounted;

    EXPECT_EQ(2, oCounted.AddRef());
    EXPECT_EQ(3, oCounted.AddRef());
    EXPECT_EQ(3, oCounted.GetRefCount());
}

TEST(CTOVRefCountTest, ReleaseGivesTheNewCount)
{
    int nDeaths = 0;
    CCounted oCounted(&nDeaths);
    oCounted.AddRef();
    oCounted.AddRef();

    EXPECT_EQ(2, oCounted.Release());
    EXPECT_EQ(1, oCounted.Release());
    EXPECT_EQ(1, oCounted.GetRefCount());
    EXPECT_EQ(0, nDeaths);
}

TEST(CTOVRefCountTest, DiesAsWhatItIsWithItsLastReference)
{
    int nDeaths = 0;
    ITOVRefCount* pCounted = new CCounted(&nDeaths);
    pCounted->AddRef();
    pCounted->Release();
    EXPECT_EQ(0, nDeaths);

    EXPECT_EQ(0, pCounted->Release());
    EXPECT_EQ(1, nDeaths);
}

TEST(CTOVRefCountTest, FreesItselfWithItsLastReference)
{
    CAllocationCounter oCounter;
    CTOVRefCount* pCounted = new CTOVRefCount;
    pCounted->Release();

    EXPECT_EQ(0, oCounter.Kept());
}

TEST(CTOVRefCountTest, CountsWithoutAllocations)
{
    CCounted oCounted;
    CAllocationCounter oCounter;
    oCounted.AddRef();
    oCounted.Release();
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0u, ulTaken);
}

TEST(CTOVRefCountTest, CopyStartsWithTheCountOfItsSource)
{
    CCounted oSource;
    oSource.AddRef();
    oSource.AddRef();

    CCounted oCopy(oSource);

    EXPECT_EQ(3, oCopy.GetRefCount());
    EXPECT_EQ(2, oCopy.Release());
    EXPECT_EQ(3, oSource.GetRefCount());
}

TEST(CTOVRefCountTest, AssignmentOverwritesTheCount)
{
    CCounted oSource;
    oSource.AddRef();
    CCounted oTarget;
    for (int nIndex = 0; nIndex < 4; ++nIndex)
        oTarget.AddRef();

    oTarget = oSource;

    EXPECT_EQ(2, oTarget.GetRefCount());
    EXPECT_EQ(2, oSource.GetRefCount());
}

TEST(CTOVRefCountTest, OverReleaseIsReportedAndDestroysNothing)
{
    int nDeaths = 0;
    CCounted oCounted(&nDeaths);
    oCounted.SetRefCount(0);

    EXPECT_CHECK_AT("TOVDesignPatterns/TOVRefCount", "lRefCount >= 0", oCounted.Release());
    EXPECT_EQ(0, nDeaths);
}

TEST(CTOVRefCountTest, OverReleaseCountsOnBelowZero)
{
    CCounted oCounted;
    oCounted.SetRefCount(0);

    EXPECT_CHECK("lRefCount >= 0", oCounted.Release());
    EXPECT_EQ(-1, oCounted.GetRefCount());
    EXPECT_CHECK("lRefCount >= 0", oCounted.Release());
    EXPECT_EQ(-2, oCounted.GetRefCount());
}

TEST(CTOVRefCountTest, CountThatComesBackToZeroFromBelowDestroysNothing)
{
    int nDeaths = 0;
    CCounted oCounted(&nDeaths);
    oCounted.SetRefCount(-1);

    EXPECT_EQ(0, oCounted.AddRef());
    EXPECT_EQ(0, nDeaths);
}

TEST(CTOVRefCountTest, HoldsItsCountAlone)
{
    EXPECT_EQ(SizeWithMembers<long>(), sizeof(CTOVRefCount));
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVRefCount>);
}

TEST(CTOVRefCountTest, AnswersForItsOwnClassThroughTheInterface)
{
    CTOVRefCount oCounted;

    ExpectClassBelowItsInterface<ITOVRefCount>(oCounted, "CTOVRefCount", "ITOVRefCount");
}

TEST(ITOVRefCountTest, AnswersForTheInterface)
{
    CPlainCounted oPlain;

    ExpectInterfaceAlone<CTOVRefCount>(static_cast<ITOVRefCount&>(oPlain));
}

TEST(ITOVRefCountTest, CopiesNothing)
{
    CPlainCounted oSource;
    CPlainCounted oTarget;

    ITOVRefCount& oResult = static_cast<ITOVRefCount&>(oTarget).operator=(oSource);

    EXPECT_EQ(&oTarget, &oResult);
    EXPECT_EQ(sizeof(void*), sizeof(ITOVRefCount));
    EXPECT_FALSE(std::has_virtual_destructor_v<ITOVRefCount>);
}

TEST(CTOVRefCountObjectTest, StartsWithOneReference)
{
    CTOVRefCountObject<int>* pBlock = new CTOVRefCountObject<int>(new int(7));

    EXPECT_EQ(1, pBlock->GetRefCount());
    EXPECT_TRUE(pBlock->IsValid());

    EXPECT_EQ(0, pBlock->Release());
}

TEST(CTOVRefCountObjectTest, ExistsWithoutAnObject)
{
    CTOVRefCountObject<int>* pBlock = new CTOVRefCountObject<int>;

    EXPECT_EQ(1, pBlock->GetRefCount());
    EXPECT_FALSE(pBlock->IsValid());

    EXPECT_EQ(0, pBlock->Release());
}

TEST(CTOVRefCountObjectTest, CountsUpAndDown)
{
    CTOVRefCountObject<int> oBlock;

    EXPECT_EQ(2, oBlock.AddRef());
    EXPECT_EQ(3, oBlock.AddRef());
    EXPECT_EQ(2, oBlock.Release());
    EXPECT_EQ(2, oBlock.GetRefCount());
}

TEST(CTOVRefCountObjectTest, DestroysItsObjectWithTheLastReference)
{
    int nDeaths = 0;
    ITOVRefCount* pBlock = new tMortalBlock(new sMortal(nDeaths));
    pBlock->AddRef();
    pBlock->Release();
    EXPECT_EQ(0, nDeaths);

    EXPECT_EQ(0, pBlock->Release());
    EXPECT_EQ(1, nDeaths);
}

TEST(CTOVRefCountObjectTest, DestroysItsObjectAtItsOwnEnd)
{
    int nDeaths = 0;
    {
        const tMortalBlock oBlock(new sMortal(nDeaths));
    }

    EXPECT_EQ(1, nDeaths);
}

TEST(CTOVRefCountObjectTest, FreesObjectAndBlock)
{
    int nDeaths = 0;
    CAllocationCounter oCounter;
    tMortalBlock* pBlock = new tMortalBlock(new sMortal(nDeaths));
    pBlock->Release();

    EXPECT_EQ(0, oCounter.Kept());
}

TEST(CTOVRefCountObjectTest, FreesAnArrayOfPlainElements)
{
    CAllocationCounter oCounter;
    wchar_t* pText = static_cast<wchar_t*>(::operator new(100 * sizeof(wchar_t)));
    std::memset(pText, 0, 100 * sizeof(wchar_t));
    CTOVRefCountObject<wchar_t>* pBlock = new CTOVRefCountObject<wchar_t>(pText);
    pBlock->Release();

    EXPECT_EQ(0, oCounter.Kept());
}

TEST(CTOVRefCountObjectTest, OverReleaseIsReportedAndDestroysNothing)
{
    int nDeaths = 0;
    tMortalBlock oBlock(new sMortal(nDeaths));
    BlockRefCount(oBlock) = 0;

    EXPECT_CHECK_AT("TOVDesignPatterns/TOVRefCount", "lRefCount >= 0", oBlock.Release());
    EXPECT_EQ(-1, oBlock.GetRefCount());
    EXPECT_TRUE(oBlock.IsValid());
    EXPECT_EQ(0, nDeaths);
}

TEST(CTOVRefCountObjectTest, OnlyTellsOfACheckAtItsObjectsEnd)
{
    CTOVRefCountObject<sReluctant>* pBlock = new CTOVRefCountObject<sReluctant>(new sReluctant);
    CAllocationCounter oCounter;
    EXPECT_TOLD_CHECK("bMayDie", pBlock->Release());

    // Both blocks are gone all the same.
    EXPECT_EQ(-2, oCounter.Kept());
}

TEST(CTOVRefCountObjectTest, HasTheClassOfTheInterfaceForEveryType)
{
    CTOVRefCountObject<tByte> oBytes;
    CTOVRefCountObject<char> oText;
    CTOVRefCountObject<wchar_t> oWideText;
    CTOVRefCountObject<sReluctant> oOther;

    for (ITOVRefCount* pBlock : {static_cast<ITOVRefCount*>(&oBytes), static_cast<ITOVRefCount*>(&oText),
                                 static_cast<ITOVRefCount*>(&oWideText), static_cast<ITOVRefCount*>(&oOther)})
    {
        EXPECT_EQ(&ITOVRefCount::GetClass(), &pBlock->GetRuntimeClass());
        EXPECT_TRUE(pBlock->IsInstanceOf(ITOVRefCount::GetClass()));
        EXPECT_FALSE(pBlock->IsKindOf(CTOVRefCount::GetClass()));
        EXPECT_EQ(pBlock, pBlock->QueryInterface(ITOVRefCount::GetClass()));
    }
}

TEST(CTOVRefCountObjectTest, HoldsCountAndPointer)
{
    tMortalBlock oBlock;

    ExpectMembersInOrder(oBlock, BlockRefCount(oBlock), BlockObject(oBlock));
    EXPECT_TRUE(std::has_virtual_destructor_v<tMortalBlock>);
}
