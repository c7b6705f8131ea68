// The program's pthread_create stands before the C library's in every module of the process.
#include "Timer/Posix/TOVThreadRefusal.h"

#include <cerrno>
#include <dlfcn.h>
#include <pthread.h>

static thread_local bool s_bRefused = false;

CThreadRefusal::CThreadRefusal()
{
    s_bRefused = true;
}

CThreadRefusal::~CThreadRefusal()
{
    s_bRefused = false;
}

typedef int (*tCreate)(pthread_t* pThread, const pthread_attr_t* pAttributes, void* (*fnStart)(void*), void* pArgument);

extern "C" __attribute__((visibility("default"))) int
pthread_create(pthread_t* pThread, const pthread_attr_t* pAttributes, void* (*fnStart)(void*), void* pArgument) noexcept
{
    if (s_bRefused)
        return EAGAIN;
    static const tCreate s_fnCreate = reinterpret_cast<tCreate>(::dlsym(RTLD_NEXT, "pthread_create"));
    return s_fnCreate(pThread, pAttributes, fnStart, pArgument);
}
