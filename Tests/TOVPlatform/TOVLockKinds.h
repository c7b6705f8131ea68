// What lets in one thread at a time.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVSynchronization.h>

struct sLockKind
{
    const char* szName;
    unsigned long long (*fnCreate)();
    void (*fnLock)(unsigned long long hLock);
    void (*fnUnlock)(unsigned long long hLock);
    void (*fnDestroy)(unsigned long long hLock);
};

inline void DestroyObject(unsigned long long hObject)
{
    EXPECT_TRUE(TOVPlatform::TOVSynchronization::Event::Destroy(hObject));
}

inline const sLockKind LOCK_KINDS[] = {
    {"Section", [] { return TOVPlatform::TOVSynchronization::CriticalSection::Create(0); },
     &TOVPlatform::TOVSynchronization::CriticalSection::Enter, &TOVPlatform::TOVSynchronization::CriticalSection::Leave,
     &TOVPlatform::TOVSynchronization::CriticalSection::Destroy},
    {"Mutex", [] { return TOVPlatform::TOVSynchronization::Mutex::Create(false, nullptr); },
     &TOVPlatform::TOVSynchronization::Mutex::Lock, &TOVPlatform::TOVSynchronization::Mutex::Unlock, &DestroyObject},
    {"Semaphore", [] { return TOVPlatform::TOVSynchronization::Semaphore::Create(1, 1, nullptr); },
     &TOVPlatform::TOVSynchronization::Semaphore::Lock,
     [](unsigned long long hLock) { TOVPlatform::TOVSynchronization::Semaphore::Unlock(hLock, 1); }, &DestroyObject},
    {"Event", [] { return TOVPlatform::TOVSynchronization::Event::Create(false, true, nullptr); },
     &TOVPlatform::TOVSynchronization::Event::Wait, &TOVPlatform::TOVSynchronization::Event::Signal, &DestroyObject},
};
