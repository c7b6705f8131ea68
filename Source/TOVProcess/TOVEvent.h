// Declares CTOVEvent, a signal between threads.
#pragma once

#include <Debug/TOVBase.h>

// Owns one system event, from the constructor to the destructor.
//
// Copies share the handle: copy and original are one event. Each destructor closes the handle, and the second close
// fails without a report. operator= overwrites the old handle without closing it. Two live copies close the same handle
// twice; the caller must prevent that.
//
// Any thread may use it. Do not destroy an event while a thread waits for it.
class TOV_EXPORT CTOVEvent
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVEvent();

    // Creates an event that is not signalled. With manual reset, a signalled event stays signalled until Reset;
    // otherwise, it releases one wait and is then no longer signalled. A failure to create it is logged; the object
    // then has handle 0, and its operations do nothing.
    CTOVEvent(bool bManualReset = false);
    CTOVEvent(const CTOVEvent& oOther);
    CTOVEvent& operator=(const CTOVEvent& oOther);

    // Signal lets a wait go on, or with manual reset all waits; Reset takes an unused signal back. Wait waits for a
    // signal without a limit.
    void Signal();
    void Reset();
    void Wait();

    // Waits for at most lMilliseconds; -1 waits without a limit. Returns false only if the time has run out.
    bool TimedWait(long lMilliseconds);

    // These return the handle, for a wait for several objects.
    tHandle GetHandle() const;
    operator tHandle() const;

private:
    tHandle m_hEvent;
};

TOV_EXPORT_INLINE tHandle CTOVEvent::GetHandle() const
{
    return m_hEvent;
}

TOV_EXPORT_INLINE CTOVEvent::operator tHandle() const
{
    return m_hEvent;
}
