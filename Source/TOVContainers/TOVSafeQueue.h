// First-in first-out store between threads: CTOVSafeQueue.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVMutex.h>

#include <list>

// One thread hands elements to another; any number of threads on both sides. Owns copies of the elements. The mutex
// guards every access to the list and is held for that alone. The event tells consumers that there may be an element;
// it is waited on with no lock held, so the order is event, then mutex.
//
//   producer   lock, append, unlock, signal
//   consumer   wait, lock, take the first, signal again if there are more, unlock
//
//   operation                       cost                            when a copy or an allocation throws
//   Enqueue                         1 node, 1 copy under the lock   unchanged
//   Dequeue                         blocks; 1 copy under the lock   unchanged
//   IsEmpty, GetCount, GetSize      the lock                        -
//
// Elements are copied by T's own copy, into the list by the producer and out of it by the consumer. Whatever a copy
// shares with its original is then shared by threads. CTOVStringA, CTOVPath, CTOVBuffer and CTOVSmartPointer share a
// block, without a lock and with a plain count: producer and consumer must not both keep one, and as the producer's own
// object is one, not even a temporary may be enqueued. Texts go in an element that copies the characters:
//
//   struct sLine
//   {
//       explicit sLine(const char* szText) : sText(szText) {}
//       sLine(const sLine& oOther) : sText(~oOther.sText) {}
//       const CTOVStringA sText;
//   };
//
// A consumer on an empty queue stays blocked until the next Enqueue: there is no time-out and no cancel. Nothing
// releases it when the queue is destroyed, so the owner stops consumers first. There is no virtual destructor: a queue
// is not deleted through a base class. Each operation also throws what CTOVMutex throws for a mutex that was not
// created.
template<class T> class TOV_TEMPLATE CTOVSafeQueue
{
public:
    // Virtual operations; their order is part of the exported design.

    virtual bool IsEmpty() const;
    // The number of elements, as of this moment. GetSize forwards to GetCount.
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
    // Holds the mutex for a block. Locking throws what the mutex throws; unlocking only tells of it.
    class CLock
    {
    public:
        explicit CLock(const CTOVMutex& oMutex) : m_oMutex(oMutex) { m_oMutex.Lock(); }
        ~CLock()
        {
            TOVDebug::RunInDestructor([this] { m_oMutex.Unlock(); });
        }
        CLock(const CLock&) = delete;
        CLock& operator=(const CLock&) = delete;

    private:
        const CTOVMutex& m_oMutex;
    };

    // Removes the first element and returns it. With the mutex held.
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
    m_oEvent.Signal();
}

template<class T> T CTOVSafeQueue<T>::Dequeue()
{
    for (;;)
    {
        m_oEvent.Wait();

        const CLock oLock(m_oMutex);
        // A signal that comes after another consumer has taken its element wakes for nothing.
        if (!m_aQueue.empty())
            return TakeFirst();
    }
}

template<class T> T CTOVSafeQueue<T>::TakeFirst()
{
    // The event was reset for this consumer: as long as elements remain, also when the copy throws, it is set again for
    // the next one.
    struct sSignalRest
    {
        CTOVSafeQueue& oQueue;
        ~sSignalRest()
        {
            if (!oQueue.m_aQueue.empty())
                oQueue.m_oEvent.Signal();
        }
    } oSignalRest = {*this};

    T oElement(m_aQueue.front());
    m_aQueue.pop_front();
    return oElement;
}
