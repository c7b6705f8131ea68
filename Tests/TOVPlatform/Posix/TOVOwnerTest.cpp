// The biased lock of streams and objects, without these. The test program contains its source, which the library does
// not export.
#include "Support/TOVTestSupport.h"

#include <Posix/Base/TOVOwner.h>

#include <cstddef>
#include <linux/filter.h>
#include <linux/membarrier.h>
#include <linux/seccomp.h>
#include <random>
#include <signal.h>
#include <sys/prctl.h>
#include <thread>
#include <ucontext.h>

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
#if !TOV_THREAD_SANITIZER
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

#if !TOV_THREAD_SANITIZER
namespace
{
constexpr int REVOCATIONS = 10;

COwner* s_pRevoked = nullptr;
std::uintptr_t s_nOwnersNumber = 0;
int s_nBarriers = 0;
bool s_bInTime = true;

// Stands for the system's barrier. The owner is at work until then, so that whoever asked for its last use before the
// barrier would wait for ever.
void OnBarrier(int, siginfo_t*, void* pContext)
{
    ++s_nBarriers;
    s_bInTime = s_bInTime && !s_pRevoked->CanRead(s_nOwnersNumber) && !s_pRevoked->IsShared();
    s_pRevoked->Leave();
#if defined(__x86_64__)
    static_cast<ucontext_t*>(pContext)->uc_mcontext.gregs[REG_RAX] = 0;
#else
    static_cast<void>(pContext);
#endif
}

// Lets this thread's calls for a barrier come to the handler.
bool CatchBarriers()
{
    struct sigaction oAction = {};
    oAction.sa_sigaction = &OnBarrier;
    oAction.sa_flags = SA_SIGINFO;
    sock_filter aSteps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_membarrier, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, MEMBARRIER_CMD_PRIVATE_EXPEDITED, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog oFilter = {sizeof aSteps / sizeof *aSteps, aSteps};
    return ::sigaction(SIGSYS, &oAction, nullptr) == 0 && ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &oFilter) == 0;
}
} // namespace

// Ends with the number of barriers, if each came at the right time. Without a deadline, a wrong order would never end.
TOV_CHILD(RevokesAtBarriers)
{
    ::alarm(60);
    COwner::Prepare();
    if (!CatchBarriers())
        std::exit(98);
    for (int nRevocation = 0; nRevocation < REVOCATIONS; ++nRevocation)
    {
        COwner oOwner;
        oOwner.Admit();
        std::thread([&oOwner] {
            s_nOwnersNumber = Self();
            if (!oOwner.Enter(s_nOwnersNumber))
                std::exit(97);
        }).join();
        s_pRevoked = &oOwner;
        oOwner.Share(Self());
    }
    std::exit(s_bInTime ? s_nBarriers : 96);
}

// Without the barrier, the owner's mark could still be on its way when the revoking thread looks for it. Processors do
// that so seldom that no load shows it reliably.
TEST(TOVOwnerTest, WaitsForTheStoresOfAllProcessorsBeforeItLooksForTheOwnersMark)
{
    EXPECT_EQ(REVOCATIONS, RunChild("RevokesAtBarriers").nExitCode);
}
#endif
