// The light lock inside one process.
#pragma once

#include <Debug/TOVBase.h>

// Owns one critical section, from the constructor to the destructor. Its owner may enter repeatedly, and leaves as
// often.
//
// Copies share the handle: a copy enters the same lock. Each destructor destroys it, though, and on Windows the second
// one releases memory twice, so never let two copies run into their destructors. operator= drops the old handle without
// destroying the section behind it.
//
// Threads: any. Every operation, the constructor included, throws unless m_hCriticalSection != NULL. The destructor
// does not throw: it tells the listeners of that check and goes on.
class TOV_EXPORT CTOVCriticalSection
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVCriticalSection();

    // The spin count is accepted and has no effect.
    CTOVCriticalSection(unsigned long ulSpinCount = 2000);
    CTOVCriticalSection(const CTOVCriticalSection& oOther);
    CTOVCriticalSection& operator=(const CTOVCriticalSection& oOther);

    void Enter() const;
    void Leave() const;

private:
    tHandle m_hCriticalSection;
};
