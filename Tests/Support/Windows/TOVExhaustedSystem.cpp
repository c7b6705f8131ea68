#include "Support/TOVExhaustedSystem.h"
#include "Support/Windows/TOVImportHook.h"

#include <windows.h>

#if TOV_CAN_FAIL_ALLOCATIONS
namespace
{
HANDLE WINAPI RefuseEvent(SECURITY_ATTRIBUTES*, BOOL, BOOL, const char*)
{
    return nullptr;
}

HANDLE WINAPI RefuseMutex(SECURITY_ATTRIBUTES*, BOOL, const char*)
{
    return nullptr;
}

HANDLE WINAPI RefuseSemaphore(SECURITY_ATTRIBUTES*, LONG, LONG, const char*)
{
    return nullptr;
}

HANDLE WINAPI RefuseThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*)
{
    return nullptr;
}
} // namespace

struct CExhaustedSystem::sRefusals
{
    CImportHook oEvent{"CreateEventA", &RefuseEvent};
    CImportHook oMutex{"CreateMutexA", &RefuseMutex};
    CImportHook oSemaphore{"CreateSemaphoreA", &RefuseSemaphore};
    CImportHook oThread{"CreateThread", &RefuseThread};
};

CExhaustedSystem::CExhaustedSystem() : m_pRefusals(new sRefusals), m_pFailure(new CAllocationFailure)
{
}

CExhaustedSystem::~CExhaustedSystem()
{
    m_pFailure.reset();
}
#endif
