// What the tests of events, mutexes and semaphores share, beside Support/TOVWaitInstruments.h.
#pragma once

#include "Support/TOVRowName.h"
#include "Support/TOVWaitInstruments.h"

// A kind of object.
struct sObjectKind
{
    const char* szName;
    unsigned long long (*fnCreate)(const char* szName); // can be had, once; nullptr makes one without a name
    bool (*fnDestroy)(unsigned long long hObject);
};

inline const sObjectKind OBJECT_KINDS[] = {
    {"Event", [](const char* szName) { return TOVPlatform::TOVSynchronization::Event::Create(false, true, szName); },
     &TOVPlatform::TOVSynchronization::Event::Destroy},
    {"Mutex", [](const char* szName) { return TOVPlatform::TOVSynchronization::Mutex::Create(false, szName); },
     &TOVPlatform::TOVSynchronization::Mutex::Destroy},
    {"Semaphore", [](const char* szName) { return TOVPlatform::TOVSynchronization::Semaphore::Create(1, 1, szName); },
     &TOVPlatform::TOVSynchronization::Semaphore::Destroy},
};

// A value that the compiler does not see through: narrowing it is the library's affair where long is wider.
inline long ToLong(unsigned long long ullValue)
{
    volatile unsigned long long ullHidden = ullValue;
    return static_cast<long>(ullHidden);
}

// How often an event or a semaphore can still be had. It is taken as often.
inline int Drain(unsigned long long hObject)
{
    int nCount = 0;
    while (TakesNow(hObject))
        ++nCount;
    return nCount;
}
