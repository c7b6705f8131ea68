#include "Support/TOVNativeThread.h"

#include <windows.h>

static HANDLE ToNative(unsigned long long hThread)
{
    return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(static_cast<LONG>(hThread)));
}

unsigned long NativeThreadId()
{
    return ::GetCurrentThreadId();
}

int NativePriority(const sNativeThread& oThread)
{
    return ::GetThreadPriority(ToNative(oThread.hThread));
}

bool SetNativePriority(const sNativeThread& oThread, int nPriority)
{
    return ::SetThreadPriority(ToNative(oThread.hThread), nPriority) != 0;
}

std::vector<int> NativePriorities()
{
    return {THREAD_PRIORITY_ABOVE_NORMAL, THREAD_PRIORITY_BELOW_NORMAL, THREAD_PRIORITY_IDLE,
            THREAD_PRIORITY_LOWEST,       THREAD_PRIORITY_NORMAL,       THREAD_PRIORITY_HIGHEST,
            THREAD_PRIORITY_TIME_CRITICAL};
}
