#include "../ProcessState.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

namespace
{
long CountThreads()
{
    const HANDLE hSnapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 oThread = {};
    oThread.dwSize = sizeof oThread;
    long lThreads = 0;
    for (BOOL bFound = ::Thread32First(hSnapshot, &oThread); bFound; bFound = ::Thread32Next(hSnapshot, &oThread))
        lThreads += oThread.th32OwnerProcessID == ::GetCurrentProcessId() ? 1 : 0;
    ::CloseHandle(hSnapshot);
    return lThreads;
}
} // namespace

sProcessState ReadProcessState()
{
    PROCESS_MEMORY_COUNTERS oMemory = {};
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &oMemory, sizeof oMemory);
    DWORD ulHandles = 0;
    ::GetProcessHandleCount(::GetCurrentProcess(), &ulHandles);
    const long lMemoryKb = static_cast<long>(oMemory.WorkingSetSize / 1024);
    return {lMemoryKb, lMemoryKb, static_cast<long>(ulHandles), CountThreads()};
}
