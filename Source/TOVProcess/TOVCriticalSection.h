// Declares CTOVCriticalSection, the light lock between the threads of one process.
#pragma once

#include <Debug/TOVBase.h>

// Owns one critical section, from the constructor to the destructor. The thread that has entered it may enter it again,
// and must leave it as often.
//
// Copies share the handle: a copy enters the same lock. However, each destructor destroys that lock, and on Windows the
// second one releases memory twice, so never let two copies be destroyed. operator= overwrites the old handle and does
// not destroy its critical section.
//
// Any thread may use it. Every operation, the constructor included, throws unless "m_hCriticalSection != NULL". The
// destructor does not throw: it reports that check to the listeners and continues.
class TOV_EXPORT CTOVCriticalSection
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVCriticalSection();

    // The spin count is accepted and has no effect.
    CTOVCriticalSection(unsigned long ulSpinCount = 2000);
    CTOVCriticalSection(const CTOVCriticalSection& oOther);
    CTOVCriticalSection& operator=(const CTOVCriticalSection& oOther);

    // Enter waits until no other thread is inside. Leave must be called by the thread that is inside, once for each
    // Enter.
    void Enter() const;
    void Leave() const;

private:
    tHandle m_hCriticalSection;
};
