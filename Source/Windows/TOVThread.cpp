#include <TOVPlatform/Backend/TOVThread.h>

#include <Windows/TOVNativeHandle.h>

#include <new>

namespace TOVPlatform
{
using TOVThread::tThreadEntry;

namespace
{
// The system's entry function has another calling convention and another parameter than ours.
struct sStart
{
    tThreadEntry pEntry;
    void* pParam;
};

DWORD WINAPI EnterThread(void* pParam)
{
    sStart* const pStart = static_cast<sStart*>(pParam);
    const sStart oStart = *pStart;
    delete pStart; // before the entry function: it need not return
    return oStart.pEntry(reinterpret_cast<ULONG_PTR>(oStart.pParam));
}
} // namespace

tHandle TOVThread::Create(tThreadEntry pEntry, void* pParam, unsigned long* pulThreadId)
{
    sStart* const pStart = new (std::nothrow) sStart{pEntry, pParam};
    if (pStart == nullptr)
        return 0;

    const HANDLE hThread = ::CreateThread(nullptr, 0, EnterThread, pStart, 0, pulThreadId);
    if (hThread == nullptr)
        delete pStart;
    return FromNative(hThread);
}

void TOVThread::Exit(int nExitCode)
{
    ::ExitThread(static_cast<DWORD>(nExitCode));
}

namespace Backend
{
static_assert(Thread::LEVEL_LOWEST == THREAD_PRIORITY_LOWEST && Thread::LEVEL_NORMAL == THREAD_PRIORITY_NORMAL &&
                  Thread::LEVEL_HIGHEST == THREAD_PRIORITY_HIGHEST &&
                  Thread::LEVEL_TIME_CRITICAL == THREAD_PRIORITY_TIME_CRITICAL &&
                  Thread::LEVEL_NONE == THREAD_PRIORITY_ERROR_RETURN,
              "levels are passed on as they stand");

int Thread::ReadPriority(tHandle hThread)
{
    return ::GetThreadPriority(ToNative(hThread));
}

void Thread::WritePriority(tHandle hThread, int nLevel)
{
    ::SetThreadPriority(ToNative(hThread), nLevel);
}

// The system calls a library at the end of a thread, but not after the thread's own objects.
bool Thread::CallAtEnd(void (* /*pfAtEnd*/)() noexcept)
{
    return false;
}
} // namespace Backend
} // namespace TOVPlatform
