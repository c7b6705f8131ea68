// What holds for every class that owns one object of the system: copies share it, the first end closes it, and without
// a handle nearly all refuse.
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVRefusal.h"
#include "Support/TOVRowName.h"
#include "Support/TOVUnended.h"
#include "TOVProcess/TOVLockInstruments.h"

#include <optional>
#include <type_traits>

namespace
{
struct sNamesOfOwners
{
    template<class T> static std::string GetName(int)
    {
        return std::is_same_v<T, CTOVEvent> ? "Event" : std::is_same_v<T, CTOVMutex> ? "Mutex" : "Semaphore";
    }
};

template<class T> class TOVHandleOwnerTest : public testing::Test
{
};
typedef testing::Types<CTOVEvent, CTOVMutex, CTOVSemaphore> tOwners;
TYPED_TEST_SUITE(TOVHandleOwnerTest, tOwners, sNamesOfOwners);

// A member of a class, or its destructor, and the check that fails without a handle.
struct sRefusal
{
    const char* szName;
    const char* szFile;
    const char* szText;
    void (*fnCall)();
};

template<class TLock, auto fnMember, auto... aArguments> void CallWithoutHandle()
{
    TLock oLock;
    const CLostHandle oLost(HandleOf(oLock));
    try
    {
        (oLock.*fnMember)(aArguments...);
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        EXPECT_EQ(0u, HandleOf(oLock));
        throw;
    }
}

template<class TLock> void EndWithoutHandle()
{
    CUnended<TLock> oLock;
    const TLock oCloser(*oLock);
    HandleOf(*oLock) = 0;
    oLock.End();
}

constexpr char MUTEX[] = "TOVProcess/TOVMutex";
constexpr char SEMAPHORE[] = "TOVProcess/TOVSemaphore";
constexpr char SECTION[] = "TOVProcess/TOVCriticalSection";

const sRefusal REFUSALS[] = {
    {"MutexLock", MUTEX, "m_hMutex != NULL", &CallWithoutHandle<CTOVMutex, &CTOVMutex::Lock>},
    {"MutexUnlock", MUTEX, "m_hMutex != NULL", &CallWithoutHandle<CTOVMutex, &CTOVMutex::Unlock>},
    {"MutexIsLocked", MUTEX, "m_hMutex != NULL", &CallWithoutHandle<CTOVMutex, &CTOVMutex::IsLocked>},
    {"MutexGetHandle", MUTEX, "m_hMutex != NULL", &CallWithoutHandle<CTOVMutex, &CTOVMutex::GetHandle>},
    {"SemaphoreLock", SEMAPHORE, "m_hSemaphore != NULL", &CallWithoutHandle<CTOVSemaphore, &CTOVSemaphore::Lock>},
    {"SemaphoreTryLock", SEMAPHORE, "m_hSemaphore != NULL",
     &CallWithoutHandle<CTOVSemaphore, &CTOVSemaphore::TryLock, 0l>},
    {"SemaphoreUnlock", SEMAPHORE, "m_hSemaphore != NULL",
     &CallWithoutHandle<CTOVSemaphore, &CTOVSemaphore::Unlock, 1l>},
    {"CriticalSectionEnter", SECTION, "m_hCriticalSection != NULL",
     &CallWithoutHandle<CTOVCriticalSection, &CTOVCriticalSection::Enter>},
    {"CriticalSectionLeave", SECTION, "m_hCriticalSection != NULL",
     &CallWithoutHandle<CTOVCriticalSection, &CTOVCriticalSection::Leave>},
};

const sRefusal TOLD_AT_THE_END[] = {
    {"Mutex", MUTEX, "m_hMutex != NULL", &EndWithoutHandle<CTOVMutex>},
    {"CriticalSection", SECTION, "m_hCriticalSection != NULL", &EndWithoutHandle<CTOVCriticalSection>},
};

class TOVMissingHandleTest : public testing::TestWithParam<sRefusal>
{
};
INSTANTIATE_TEST_SUITE_P(Member, TOVMissingHandleTest, testing::ValuesIn(REFUSALS), sRowName());

class TOVMissingHandleEndTest : public testing::TestWithParam<sRefusal>
{
};
INSTANTIATE_TEST_SUITE_P(Class, TOVMissingHandleEndTest, testing::ValuesIn(TOLD_AT_THE_END), sRowName());
} // namespace

TYPED_TEST(TOVHandleOwnerTest, SharesItsHandleWithACopy)
{
    TypeParam oOwner;
    CUnended<TypeParam> oCopy(oOwner);

    EXPECT_NE(0ull, HandleOf(oOwner));
    EXPECT_EQ(HandleOf(oOwner), HandleOf(*oCopy));
}

TYPED_TEST(TOVHandleOwnerTest, SharesTheHandleThatIsAssignedAndLeavesItsOldOneOpen)
{
    TypeParam oTarget;
    const COwnHandle hOld(HandleOf(oTarget));
    CUnended<TypeParam> oSource;

    EXPECT_EQ(&oTarget, &(oTarget = *oSource));

    EXPECT_EQ(HandleOf(*oSource), HandleOf(oTarget));
    EXPECT_NE(-1, WaitForAny({hOld}, 0)) << "still there";
}

TYPED_TEST(TOVHandleOwnerTest, IsClosedByTheFirstDestructorOfTwoCopies)
{
    CLogRecorder oLog;
    {
        TypeParam oOwner;
        {
            EXPECT_NE(-1, WaitForAny({HandleOf(oOwner)}, 0));
            TypeParam oCopy(oOwner);
        }
        EXPECT_EQ(-1, WaitForAny({HandleOf(oOwner)}, 0));
    }
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST_P(TOVMissingHandleTest, IsRefused)
{
    EXPECT_CHECK_AT(GetParam().szFile, GetParam().szText, GetParam().fnCall());
}

TEST_P(TOVMissingHandleEndTest, IsToldAtTheEnd)
{
    EXPECT_TOLD_CHECK_AT(GetParam().szFile, GetParam().szText, GetParam().fnCall());
}

#if TOV_CAN_FAIL_ALLOCATIONS
namespace
{
// Makes one on a system that has no more to give: the constructor fails this check.
template<class TLock> void ExpectRefusalWithoutMemory(const char* szFile, const char* szText)
{
    CQuietRecorder oLog;
    bool bRefused = false;
    {
        CExhaustedSystem oNoMore;
        bRefused = FailsACheck([] { const TLock oLock; });
    }
    EXPECT_TRUE(bRefused);
    EXPECT_EQ(1, oLog.Count());
    EXPECT_STREQ(szText, oLog.Text());
    EXPECT_NE(std::string::npos, std::string(oLog.File()).find(szFile));
}

// Makes one on a system that has no more to give: the constructor logs this line, and there is no handle.
template<class TLock, class... TArguments>
void ExpectLineWithoutMemory(const char* szFile, const char* szLine, TArguments... oArguments)
{
    CQuietRecorder oLog;
    std::optional<TLock> oLock;
    {
        CExhaustedSystem oNoMore;
        oLock.emplace(oArguments...);
    }
    EXPECT_EQ(0ull, HandleOf(*oLock));
    EXPECT_EQ(1, oLog.Count());
    EXPECT_STREQ(szLine, oLog.Text());
    EXPECT_STREQ("%s", oLog.Format());
    EXPECT_EQ(600, oLog.Severity());
    EXPECT_NE(std::string::npos, std::string(oLog.File()).find(szFile));
}
} // namespace

TEST(CTOVMutexTest, LogsThatItCouldNotBeCreatedAndGoesOn)
{
    ExpectLineWithoutMemory<CTOVMutex>(
        MUTEX, "CTOVMutex::CTOVMutex(): TOVPlatform::TOVSynchronization::Mutex_Create() failed!");
}

TEST(CTOVEventTest, LogsThatItCouldNotBeCreatedAndGoesOn)
{
    for (const bool bManualReset : {false, true})
        ExpectLineWithoutMemory<CTOVEvent>(
            "TOVProcess/TOVEvent", "CTOVEvent::CTOVEvent(): TOVPlatform::TOVSynchronization::Event_Create() failed!",
            bManualReset);
}

TEST(CTOVSemaphoreTest, CannotBeConstructedWhenTheSystemHasNoMore)
{
    ExpectRefusalWithoutMemory<CTOVSemaphore>(SEMAPHORE, "m_hSemaphore != NULL");
}

TEST(CTOVCriticalSectionTest, CannotBeConstructedWhenTheSystemHasNoMore)
{
    ExpectRefusalWithoutMemory<CTOVCriticalSection>(SECTION, "m_hCriticalSection != NULL");
}
#endif
