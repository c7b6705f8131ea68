// Declares CTOVEventCondition, a prepared wait for several events.
#pragma once

#include <Debug/TOVBase.h>

template<class T> class CTOVArray;
class CTOVEvent;

// Copies the handles of the events when it is constructed, so that a wait allocates nothing and does not read the
// events. The events must outlive it. A wait for more than 64 events fails.
//
// Copies share the array of handles, and each destructor frees it: a copy is safe only if one of the two is never
// destroyed. operator= overwrites the old array without freeing it.
//
// Any number of threads may wait for one condition.
class TOV_EXPORT CTOVEventCondition
{
public:
    // Says how many of the events a wait is for.
    enum eConditionType : int // any other value acts as eConditionTypeAny
    {
        eConditionTypeAny = 0, // one event is signalled
        eConditionTypeAll = 1  // all events are signalled at the same time
    };

    // Virtual operation. It reports the check "m_pEventHandles != NULL" to the listeners and does not throw.
    virtual ~CTOVEventCondition();

    // These take an array of events, or of pointers to events. They throw unless "pEvents != NULL", "nNumEvents > 0",
    // and "m_pEventHandles != NULL" when there is no memory.
    CTOVEventCondition(eConditionType eType, CTOVEvent* pEvents, int nNumEvents);
    CTOVEventCondition(eConditionType eType, CTOVEvent** pEvents, int nNumEvents);
    // Throws unless "!oEvents.IsEmpty()", and "m_pEventHandles != NULL" when there is no memory. Exceptions of the
    // array's size and element access reach the caller.
    CTOVEventCondition(eConditionType eType, const CTOVArray<CTOVEvent>& oEvents);
    CTOVEventCondition(const CTOVEventCondition& oOther);
    CTOVEventCondition& operator=(const CTOVEventCondition& oOther);

    // These wait until the condition is met. An event with automatic reset that ends the wait is cleared. They return
    //
    //    0 to the number - 1   the event that ended the wait, the lowest if several are signalled; with
    //                          eConditionTypeAll any such value
    //    -1                    the wait failed, as it does when an event has handle 0
    //    -2                    the time ran out; 0xFFFFFFFF milliseconds are unlimited
    //
    // They throw unless "m_pEventHandles != NULL" and "m_nNumEvents > 0".
    int Wait();
    int TimedWait(unsigned long ulMilliseconds);

private:
    eConditionType m_eConditionType;
    tHandle* m_pEventHandles;
    int m_nNumEvents;
};
