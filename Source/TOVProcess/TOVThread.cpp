#include <TOVProcess/TOVThread.h>

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVSynchronization.h>

#include <atomic>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
constexpr tDword NO_TIMEOUT = 0xFFFFFFFF;
constexpr unsigned long OLD_THREAD_TIMEOUT = 10000; // milliseconds

// A new thread can run, and even end, before Start has stored its handle in the object. So both take this lock: Start
// holds it from before the creation until the handle is stored, and the thread enters it before it uses the object. One
// lock serves all objects; it is never destroyed.
class CStartGate
{
public:
    CStartGate() : m_hSection(GetSection())
    {
        if (IsThere())
            CriticalSection::Enter(m_hSection);
    }

    ~CStartGate()
    {
        if (IsThere())
            CriticalSection::Leave(m_hSection);
    }

    CStartGate(const CStartGate&) = delete;
    CStartGate& operator=(const CStartGate&) = delete;

    // Returns false if the system could not create the lock. Then nothing is started.
    bool IsThere() const { return m_hSection != 0; }

private:
    static tHandle GetSection()
    {
        static std::atomic<tHandle> s_hSection;

        tHandle hSection = s_hSection.load(std::memory_order_acquire);
        if (hSection != 0)
            return hSection;
        const tHandle hCreated = CriticalSection::Create(0);
        if (s_hSection.compare_exchange_strong(hSection, hCreated, std::memory_order_acq_rel))
            return hCreated;
        CriticalSection::Destroy(hCreated); // another thread was first
        return hSection;
    }

    const tHandle m_hSection;
};

void LogError(int nLine, const char* szMessage)
{
    TOVDebug::_Log(__FILE__, static_cast<unsigned long>(nLine), 0x11, eSeverityError, "%s", szMessage);
}
} // namespace

CTOVThread::~CTOVThread()
{
    TOVAtomic::Store(m_hThread, 0ull);
}

bool CTOVThread::InitInstance()
{
    return true;
}

void CTOVThread::ExitInstance()
{
}

bool CTOVThread::Start(unsigned long ulUserParam, Thread::eThreadPriority ePriority)
{
    // Settled: it is not checked whether the old thread has stopped in that time.
    if (IsRunning())
        Stop(true, OLD_THREAD_TIMEOUT);
    return StartNew(ulUserParam, ePriority);
}

bool CTOVThread::StartNew(unsigned long ulUserParam, Thread::eThreadPriority ePriority)
{
    TOVAtomic::Store(m_ulThreadId, 0ul);
    TOVAtomic::Store(m_bStopPending, false);
    TOVAtomic::Store<unsigned long>(m_ulUserParam, static_cast<tDword>(ulUserParam));

    tHandle hThread = 0;
    {
        const CStartGate oGate;
        if (oGate.IsThere())
            hThread = Thread::Create(&CTOVThread::ThreadProcess, this, &m_ulThreadId);
        TOVAtomic::Store(m_hThread, hThread);
    }
    if (hThread == 0)
        return false;

    // From here on, an object that deletes itself may already be gone.
    Thread::SetPriority(hThread, ePriority);
    return true;
}

bool CTOVThread::Stop(bool bWait, unsigned long ulTimeout)
{
    if (!IsRunning())
        return true;

    TOVAtomic::Store(m_bStopPending, true);
    if (!bWait)
        return true;

    const tHandle hThread = TOVAtomic::Load(m_hThread);
    if (static_cast<tDword>(ulTimeout) == NO_TIMEOUT)
        Thread::WaitForExitInfinite(hThread);
    else
        Thread::WaitForExit(hThread, ulTimeout);
    return true; // Settled: the result is true even if the time has run out.
}

bool CTOVThread::IsStopPending() const
{
    return TOVAtomic::Load(m_bStopPending);
}

bool CTOVThread::IsRunning() const
{
    return TOVAtomic::Load(m_hThread) != 0;
}

CTOVThread::CTOVThread(bool bAutoDelete, bool bStart)
    : m_ulThreadId(0), m_hThread(0), m_ulUserParam(0), m_bStopPending(false), m_bAutoDelete(bAutoDelete)
{
    if (bStart)
        StartNew(0, Thread::eThreadPriorityNormal); // does the same as Start, as no old thread runs
}

CTOVThread::CTOVThread(const CTOVThread& oOther)
{
    CopyMembers(oOther);
}

CTOVThread& CTOVThread::operator=(const CTOVThread& oOther)
{
    CopyMembers(oOther);
    return *this;
}

void CTOVThread::SetPriority(Thread::eThreadPriority ePriority)
{
    Thread::SetPriority(TOVAtomic::Load(m_hThread), ePriority);
}

Thread::eThreadPriority CTOVThread::GetPriority() const
{
    return Thread::GetPriority(TOVAtomic::Load(m_hThread));
}

unsigned long CTOVThread::GetUserParam() const
{
    return TOVAtomic::Load(m_ulUserParam);
}

void CTOVThread::CopyMembers(const CTOVThread& oOther)
{
    TOVAtomic::Store(m_ulThreadId, TOVAtomic::Load(oOther.m_ulThreadId));
    TOVAtomic::Store(m_hThread, TOVAtomic::Load(oOther.m_hThread));
    TOVAtomic::Store(m_ulUserParam, TOVAtomic::Load(oOther.m_ulUserParam));
    TOVAtomic::Store(m_bStopPending, TOVAtomic::Load(oOther.m_bStopPending));
    TOVAtomic::Store(m_bAutoDelete, TOVAtomic::Load(oOther.m_bAutoDelete));
}

unsigned long CTOVThread::ThreadProcess(unsigned long long ullParam)
{
    // Only as many low bits as a pointer has are defined.
    CTOVThread* const pThread = reinterpret_cast<CTOVThread*>(static_cast<std::uintptr_t>(ullParam));
    if (pThread == nullptr)
    {
        LogError(__LINE__, "CTOVThread::ThreadProcess() : Invalid thread object pointer specified.");
        Thread::Exit(-1);
    }

    {
        const CStartGate oGate;
    }
    if (!pThread->InitInstance())
    {
        // Settled: the id stays, and an object that deletes itself is not deleted here.
        LogError(__LINE__, "CTOVThread::ThreadProcess() : CTOVThread::InitInstance() failed.");
        Thread::Exit(-1);
    }

    pThread->Run();
    pThread->ExitInstance();
    TOVAtomic::Store(pThread->m_ulThreadId, 0ul);
    if (TOVAtomic::Load(pThread->m_bAutoDelete))
        delete pThread;
    Thread::Exit(0);
}
