// A prepared wait for several events: CTOVEventCondition.
#pragma once

#include <Debug/TOVBase.h>

template<class T> class CTOVArray;
class CTOVEvent;

// Takes the handles of the events at its construction, so that a wait allocates nothing and needs no look at them. The
// events must outlive it; up to 64 can be waited for, and each wait for more fails.
//
// Copies share the handles, and each destructor frees them: a copy is safe only if one of the two never ends. operator=
// drops the old handles without freeing them.
//
// Threads: any number may wait on one condition.
class TOV_EXPORT CTOVEventCondition
{
public:
    enum eConditionType : int // any other value acts as eConditionTypeAny
    {
        eConditionTypeAny = 0, // one event is signalled
        eConditionTypeAll = 1  // all are, at once
    };

    // Virtual operation. Tells the listeners of the check "m_pEventHandles != NULL" and does not throw.
    virtual ~CTOVEventCondition();

    // Over an array of events, or of pointers to events. Throw unless "pEvents != NULL", "nNumEvents > 0", and
    // "m_pEventHandles != NULL" when there is no memory.
    CTOVEventCondition(eConditionType eType, CTOVEvent* pEvents, int nNumEvents);
    CTOVEventCondition(eConditionType eType, CTOVEvent** pEvents, int nNumEvents);
    // Throws unless "!oEvents.IsEmpty()", and "m_pEventHandles != NULL" when there is no memory. What the array's size
    // and element access throw goes through.
    CTOVEventCondition(eConditionType eType, const CTOVArray<CTOVEvent>& oEvents);
    CTOVEventCondition(const CTOVEventCondition& oOther);
    CTOVEventCondition& operator=(const CTOVEventCondition& oOther);

    // Wait until the condition is met; an event with automatic reset that ends the wait is cleared. The result is
    //
    //    0 to the number - 1   the event that ended the wait, the lowest if several are signalled; with
    //                          eConditionTypeAll any such value
    //    -1                    the wait failed, as it does when an event has handle 0
    //    -2                    the milliseconds ran out; 0xFFFFFFFF of them never do
    //
    // Throw unless "m_pEventHandles != NULL" and "m_nNumEvents > 0".
    int Wait();
    int TimedWait(unsigned long ulMilliseconds);

private:
    eConditionType m_eConditionType;
    tHandle* m_pEventHandles;
    int m_nNumEvents;
};
