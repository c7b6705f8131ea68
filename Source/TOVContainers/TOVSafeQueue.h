// Declares CTOVSafeQueue, a first-in first-out store between threads.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVMutex.h>

#include <list>

// Passes elements from any number of producer threads to any number of consumer threads. It owns copies of the
// elements. The mutex guards every access to the list and is held for that alone. The event signals that there may be
// an element; it is set as long as there are any. Consumers wait for it only while the list is empty, and hold no lock
// meanwhile: a wait takes the signal, so that otherwise one consumer would have to wait for the next step of another.
//
//   producer   lock, append, unlock, signal
//   consumer   lock, take the first, signal again if there are more or else reset, unlock;
//              as long as the list is empty: lock, find it empty, unlock, wait
//
//   operation                       cost                            when a copy or an allocation throws
//   Enqueue                         1 node, 1 copy under the lock   unchanged
//   Dequeue                         blocks; 1 copy under the lock   unchanged
//   IsEmpty, GetCount, GetSize      the lock                        -
//
// Elements are copied by T's copy constructor, into the list by the producer and out of it by the consumer. Threads
// then share whatever a copy shares with its original. Copies of CTOVStringA, CTOVPath, CTOVBuffer and CTOVSmartPointer
// share a block whose count is not guarded: producer and consumer must not use such copies at the same time. As the
// producer's own object is one of them, do not enqueue these classes at all, not even a temporary. Put a text into an
// element that copies the characters:
//
//   struct sLine
//   {
//       explicit sLine(const char* szText) : sText(szText) {}
//       sLine(const sLine& oOther) : sText(~oOther.sText) {}
//       const CTOVStringA sText;
//   };
//
// A consumer of an empty queue is blocked until the next Enqueue: there is no time-out and no way to cancel the wait.
// Destroying the queue does not release its consumers, so that the owner must stop them first. There is no virtual
// destructor: do not delete a queue through a base class. Each operation also throws what CTOVMutex throws for a mutex
// that could not be created.
template<class T> class TOV_TEMPLATE CTOVSafeQueue
{
public:
    // Virtual operations; their order is part of the exported design.

    // Returns whether there is no element at this moment.
    virtual bool IsEmpty() const;
    // Returns the number of elements, which other threads may change at any moment. GetSize calls GetCount.
    virtual long GetCount() const;
    virtual long GetSize() const;

    CTOVSafeQueue();
    CTOVSafeQueue(const CTOVSafeQueue&) = delete;
    CTOVSafeQueue& operator=(const CTOVSafeQueue&) = delete;

    // Adds a copy at the end and wakes a consumer.
    void Enqueue(const T& oElement);

    // Waits for an element, removes the oldest one and returns it.
    T Dequeue();

private:
    // Holds the mutex for a scope. A check that fails while locking throws; one that fails while unlocking is only
    // reported to the listeners.
    class CLock
    {
    public:
        explicit CLock(const CTOVMutex& oMutex) : m_oMutex(oMutex) { m_oMutex.Lock(); }
        ~CLock()
        {
            // RunInDestructor would do the same by two calls.
            try
            {
                m_oMutex.Unlock();
            }
            catch (...)
            {
            }
        }
        CLock(const CLock&) = delete;
        CLock& operator=(const CLock&) = delete;

    private:
        const CTOVMutex& m_oMutex;
    };

    // Removes the first element and returns it. The caller holds the mutex.
    T TakeFirst();

    std::list<T> m_aQueue;
    CTOVMutex m_oMutex;
    CTOVEvent m_oEvent;
};

template<class T> CTOVSafeQueue<T>::CTOVSafeQueue() : m_oEvent(false)
{
}

template<class T> bool CTOVSafeQueue<T>::IsEmpty() const
{
    const CLock oLock(m_oMutex);
    return m_aQueue.empty();
}

template<class T> long CTOVSafeQueue<T>::GetCount() const
{
    const CLock oLock(m_oMutex);
    return static_cast<long>(m_aQueue.size());
}

template<class T> long CTOVSafeQueue<T>::GetSize() const
{
    return GetCount();
}

template<class T> void CTOVSafeQueue<T>::Enqueue(const T& oElement)
{
    {
        const CLock oLock(m_oMutex);
        m_aQueue.push_back(oElement);
    }
    TOVPlatform::TOVSynchronization::Event::SignalIfClear(m_oEvent.GetHandle());
}

template<class T> T CTOVSafeQueue<T>::Dequeue()
{
    for (;;)
    {
        {
            const CLock oLock(m_oMutex);
            if (!m_aQueue.empty())
                return TakeFirst();
        }
        m_oEvent.Wait(); // another consumer may take the element for which this signal is sent
    }
}

template<class T> T CTOVSafeQueue<T>::TakeFirst()
{
    // A wait of this consumer has reset the event. If elements remain, also because the copy throws, it is set again
    // for the next consumer.
    struct sSignalRest
    {
        CTOVSafeQueue& oQueue;
        ~sSignalRest()
        {
            if (oQueue.m_aQueue.empty())
                TOVPlatform::TOVSynchronization::Event::Reset(oQueue.m_oEvent.GetHandle());
            else
                TOVPlatform::TOVSynchronization::Event::SignalIfClear(oQueue.m_oEvent.GetHandle());
        }
    } oSignalRest = {*this};

    T oElement(m_aQueue.front());
    m_aQueue.pop_front();
    return oElement;
}
