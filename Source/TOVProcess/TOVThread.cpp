#include <TOVProcess/TOVThread.h>

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVSynchronization.h>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
constexpr tDword NO_TIMEOUT = 0xFFFFFFFF;
constexpr unsigned long OLD_THREAD_TIMEOUT = 10000; // milliseconds

// The thread of an object that deletes itself can be through before Start has stored its handle in that object. So both
// pass here: Start from before the creation to the storing, the thread before the deletion. One lock serves all such
// objects; it lives as long as the process.
class CStartGate
{
public:
    explicit CStartGate(bool bNeeded) : m_hSection(bNeeded ? GetSection() : 0)
    {
        if (m_hSection != 0)
            CriticalSection::Enter(m_hSection);
    }

    ~CStartGate()
    {
        if (m_hSection != 0)
            CriticalSection::Leave(m_hSection);
    }

    CStartGate(const CStartGate&) = delete;
    CStartGate& operator=(const CStartGate&) = delete;

private:
    static unsigned long long GetSection()
    {
        static std::atomic<unsigned long long> s_hSection;

        unsigned long long hSection = s_hSection.load(std::memory_order_acquire);
        if (hSection != 0)
            return hSection;
        const unsigned long long hCreated = CriticalSection::Create(0);
        if (s_hSection.compare_exchange_strong(hSection, hCreated, std::memory_order_acq_rel))
            return hCreated;
        CriticalSection::Destroy(hCreated); // another thread was first
        return hSection;
    }

    const unsigned long long m_hSection;
};

void LogError(int nLine, const char* szMessage)
{
    TOVDebug::_Log(__FILE__, static_cast<unsigned long>(nLine), 0x11, eSeverityError, "%s", szMessage);
}
} // namespace

CTOVThread::~CTOVThread()
{
    m_hThread.store(0, std::memory_order_relaxed);
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
    // Settled: whether the old thread has stopped in that time is not looked at.
    if (IsRunning())
        Stop(true, OLD_THREAD_TIMEOUT);
    return StartNew(ulUserParam, ePriority);
}

bool CTOVThread::StartNew(unsigned long ulUserParam, Thread::eThreadPriority ePriority)
{
    m_ulThreadId.store(0, std::memory_order_relaxed);
    m_bStopPending.store(false, std::memory_order_relaxed);
    m_ulUserParam.store(static_cast<tDword>(ulUserParam), std::memory_order_relaxed);

    unsigned long long hThread = 0;
    {
        const CStartGate oGate(m_bAutoDelete);
        static_assert(sizeof m_ulThreadId == sizeof(unsigned long),
                      "the system stores the id in the atomic's own word");
        hThread = Thread::Create(&CTOVThread::ThreadProcess, this, reinterpret_cast<unsigned long*>(&m_ulThreadId));
        m_hThread.store(hThread, std::memory_order_relaxed);
    }
    if (hThread == 0)
        return false;

    // From here on an object that deletes itself may be gone.
    Thread::SetPriority(hThread, ePriority);
    return true;
}

bool CTOVThread::Stop(bool bWait, unsigned long ulTimeout)
{
    if (!IsRunning())
        return true;

    m_bStopPending.store(true, std::memory_order_relaxed);
    if (!bWait)
        return true;

    const unsigned long long hThread = m_hThread.load(std::memory_order_relaxed);
    if (static_cast<tDword>(ulTimeout) == NO_TIMEOUT)
        Thread::WaitForExitInfinite(hThread);
    else
        Thread::WaitForExit(hThread, ulTimeout);
    return true; // Settled: also when the time ran out.
}

bool CTOVThread::IsStopPending() const
{
    return m_bStopPending.load(std::memory_order_relaxed);
}

bool CTOVThread::IsRunning() const
{
    return m_hThread.load(std::memory_order_relaxed) != 0;
}

CTOVThread::CTOVThread(bool bAutoDelete, bool bStart)
    : m_ulThreadId(0), m_hThread(0), m_ulUserParam(0), m_bStopPending(false), m_bAutoDelete(bAutoDelete)
{
    if (bStart)
        StartNew(0, Thread::eThreadPriorityNormal); // as Start, for nothing runs yet
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
    Thread::SetPriority(m_hThread.load(std::memory_order_relaxed), ePriority);
}

Thread::eThreadPriority CTOVThread::GetPriority() const
{
    return Thread::GetPriority(m_hThread.load(std::memory_order_relaxed));
}

unsigned long CTOVThread::GetUserParam() const
{
    return m_ulUserParam.load(std::memory_order_relaxed);
}

void CTOVThread::CopyMembers(const CTOVThread& oOther)
{
    constexpr std::memory_order eOrder = std::memory_order_relaxed;
    m_ulThreadId.store(oOther.m_ulThreadId.load(eOrder), eOrder);
    m_hThread.store(oOther.m_hThread.load(eOrder), eOrder);
    m_ulUserParam.store(oOther.m_ulUserParam.load(eOrder), eOrder);
    m_bStopPending.store(oOther.m_bStopPending.load(eOrder), eOrder);
    m_bAutoDelete = oOther.m_bAutoDelete;
}

unsigned long CTOVThread::ThreadProcess(unsigned long long ullParam)
{
    // A pointer's worth of low bits is defined.
    CTOVThread* const pThread = reinterpret_cast<CTOVThread*>(static_cast<std::uintptr_t>(ullParam));
    if (pThread == nullptr)
    {
        LogError(__LINE__, "CTOVThread::ThreadProcess() : Invalid thread object pointer specified.");
        Thread::Exit(-1);
    }
    if (!pThread->InitInstance())
    {
        // Settled: the id stays, and an object that deletes itself is not deleted here.
        LogError(__LINE__, "CTOVThread::ThreadProcess() : CTOVThread::InitInstance() failed.");
        Thread::Exit(-1);
    }

    pThread->Run();
    pThread->ExitInstance();
    pThread->m_ulThreadId.store(0, std::memory_order_relaxed);
    if (pThread->m_bAutoDelete)
    {
        {
            const CStartGate oGate(true);
        }
        delete pThread;
    }
    Thread::Exit(0);
}
