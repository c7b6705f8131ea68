#include "Support/TOVBlockableThread.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVProcess/TOVCriticalSection.h>

#include <new>
#include <type_traits>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVCriticalSection, unsigned long long, m_hCriticalSection)

static_assert(std::has_virtual_destructor<CTOVCriticalSection>::value);
static_assert(std::is_same<decltype(&CTOVCriticalSection::Enter), void (CTOVCriticalSection::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVCriticalSection::Leave), void (CTOVCriticalSection::*)() const>::value);

// Memory for a section whose destructor is not called, or by the test.
struct sSectionStorage
{
    alignas(CTOVCriticalSection) unsigned char aMemory[sizeof(CTOVCriticalSection)];
};

// Takes the handle away for a time.
class CLostHandle
{
public:
    explicit CLostHandle(CTOVCriticalSection& oSection) : m_oSection(oSection), m_hKept(HandleOf(oSection))
    {
        HandleOf(m_oSection) = 0;
    }
    ~CLostHandle() { HandleOf(m_oSection) = m_hKept; }
    CLostHandle(const CLostHandle&) = delete;
    CLostHandle& operator=(const CLostHandle&) = delete;

private:
    CTOVCriticalSection& m_oSection;
    const unsigned long long m_hKept;
};

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

TEST(CTOVCriticalSectionTest, TakesAnySpinCount)
{
    for (const unsigned long ulSpinCount : {0ul, 1ul, 2000ul, 0xFFFFFFFFul})
    {
        const CTOVCriticalSection oSection(ulSpinCount);
        oSection.Enter();
        CBlockableThread oOther(Passage(oSection));
        EXPECT_TRUE(oOther.IsBlocked()) << ulSpinCount;
        oSection.Leave();
        EXPECT_TRUE(oOther.Finishes()) << ulSpinCount;
    }
}

TEST(CTOVCriticalSectionTest, ProtectsAPlainNumber)
{
    const int nTurns = 20000;
    const CTOVCriticalSection oSection;
    int nCount = 0;
    CThreadGroup oThreads;
    oThreads.Start(4, [&](int) {
        for (int nTurn = 0; nTurn < nTurns; ++nTurn)
        {
            oSection.Enter();
            ++nCount;
            oSection.Leave();
        }
    });
    oThreads.Join();

    EXPECT_EQ(4 * nTurns, nCount);
}

TEST(CTOVCriticalSectionTest, IsTheSameLockInACopy)
{
    CTOVCriticalSection oSection;
    sSectionStorage oStorage; // one destructor for the two
    CTOVCriticalSection& oCopy = *new (oStorage.aMemory) CTOVCriticalSection(oSection);
    EXPECT_EQ(HandleOf(oSection), HandleOf(oCopy));

    oCopy.Enter();
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

TEST(CTOVCriticalSectionTest, RefusesToBeEnteredWithoutAHandle)
{
    CTOVCriticalSection oSection;
    const CLostHandle oLost(oSection);
    EXPECT_CHECK_AT("TOVProcess/TOVCriticalSection", "m_hCriticalSection != NULL", oSection.Enter());
}

TEST(CTOVCriticalSectionTest, RefusesToBeLeftWithoutAHandle)
{
    CTOVCriticalSection oSection;
    const CLostHandle oLost(oSection);
    EXPECT_CHECK_AT("TOVProcess/TOVCriticalSection", "m_hCriticalSection != NULL", oSection.Leave());
}

TEST(CTOVCriticalSectionTest, TellsAtItsEndThatItHasNoHandle)
{
    sSectionStorage oStorage;
    CTOVCriticalSection* pSection = new (oStorage.aMemory) CTOVCriticalSection;
    const unsigned long long hSection = HandleOf(*pSection);
    HandleOf(*pSection) = 0;

    EXPECT_TOLD_CHECK_AT("TOVProcess/TOVCriticalSection", "m_hCriticalSection != NULL",
                         pSection->~CTOVCriticalSection());

    CriticalSection::Destroy(hSection);
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVCriticalSectionTest, CannotBeConstructedWhenTheSystemHasNoMore)
{
    CQuietRecorder oLog;
    bool bRaised = false;
    {
        CExhaustedSystem oNoMore;
        try
        {
            const CTOVCriticalSection oSection;
        }
        catch (const TOVDebug::CTOVAssertException&)
        {
            bRaised = true;
        }
    }
    EXPECT_TRUE(bRaised);
    EXPECT_EQ(1, oLog.Count());
    EXPECT_STREQ("m_hCriticalSection != NULL", oLog.Text());
    EXPECT_NE(std::string::npos, std::string(oLog.File()).find("TOVProcess/TOVCriticalSection"));
}
#endif
