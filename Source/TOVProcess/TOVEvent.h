// A signal between threads.
#pragma once

#include <Debug/TOVBase.h>

// Owns one system event, from the constructor to the destructor.
//
// Copies share the handle: copy and original are one event, and each destructor closes it, the second time in vain.
// operator= drops the old handle without closing it. Who keeps two live copies takes that risk.
//
// Threads: any. Destroying an event on which a thread still waits is the caller's error.
class TOV_EXPORT CTOVEvent
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVEvent();

    // Not signalled. With manual reset it stays signalled until Reset, otherwise the wait that it releases clears it.
    // A failure to create it is logged; the object then has handle 0 and its operations do nothing.
    CTOVEvent(bool bManualReset = false);
    CTOVEvent(const CTOVEvent& oOther);
    CTOVEvent& operator=(const CTOVEvent& oOther);

    void Signal();
    void Reset();
    void Wait();

    // Milliseconds; -1 waits for ever. False only when the time ran out.
    bool TimedWait(long lMilliseconds);

    // For waits for several objects.
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
