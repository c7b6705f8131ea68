#include "Support/TOVAllocationCounter.h"
#include "Support/TOVBlockableThread.h"
#include "Support/TOVUnended.h"
#include "TOVProcess/TOVLockInstruments.h"

#include <type_traits>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;

namespace
{
static_assert(std::has_virtual_destructor<CTOVCriticalSection>::value);
static_assert(std::is_constructible<CTOVCriticalSection, unsigned long>::value);
static_assert(std::is_same<decltype(&CTOVCriticalSection::Enter), void (CTOVCriticalSection::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVCriticalSection::Leave), void (CTOVCriticalSection::*)() const>::value);

// A thread that enters and leaves.
std::function<void()> Passage(const CTOVCriticalSection& oSection)
{
    return [&oSection] {
        oSection.Enter();
        oSection.Leave();
    };
}
} // namespace

TEST(CTOVCriticalSectionTest, KeepsAnotherThreadOutUntilItsOwnerHasLeftAsOftenAsItEntered)
{
    const CTOVCriticalSection oSection;
    oSection.Enter();
    oSection.Enter();
    CBlockableThread oOther(Passage(oSection));
    oSection.Leave();
    EXPECT_TRUE(oOther.IsBlocked());

    oSection.Leave();

    EXPECT_TRUE(oOther.Finishes());
}

TEST(CTOVCriticalSectionTest, IsTheSameLockInACopy)
{
    CTOVCriticalSection oSection;
    CUnended<CTOVCriticalSection> oCopy(oSection); // one destructor for the two
    EXPECT_EQ(HandleOf(oSection), HandleOf(*oCopy));

    oCopy->Enter();
    CBlockableThread oOther(Passage(oSection));
    EXPECT_TRUE(oOther.IsBlocked());
    oSection.Leave();

    EXPECT_TRUE(oOther.Finishes());
}

TEST(CTOVCriticalSectionTest, IsTheSameLockAfterAnAssignmentThatLeavesTheOldOne)
{
    CTOVCriticalSection oSource;
    CTOVCriticalSection oTarget;
    const unsigned long long hOld = HandleOf(oTarget);

    EXPECT_EQ(&oTarget, &(oTarget = oSource));
    EXPECT_EQ(HandleOf(oSource), HandleOf(oTarget));
    oTarget.Enter();
    CBlockableThread oOther(Passage(oSource));
    EXPECT_TRUE(oOther.IsBlocked());
    oTarget.Leave();
    EXPECT_TRUE(oOther.Finishes());

    CriticalSection::Enter(hOld);
    CriticalSection::Leave(hOld);
    HandleOf(oTarget) = hOld; // a destructor for each
}

TEST(CTOVCriticalSectionTest, ReleasesItsRecordAtTheEnd)
{
    {
        // The first one may bring a table to life that stays.
        const CTOVCriticalSection oFirst;
    }
    CAllocationCounter oCounter;
    for (int nTurn = 0; nTurn < 100; ++nTurn)
        const CTOVCriticalSection oSection;
    const long lKept = oCounter.Kept();

    EXPECT_GE(0, lKept);
}
