// Declares CTOVQueue, a first-in first-out store for one thread.
#pragma once

#include <Debug/TOVCheck.h>

#include <deque>

// Owns its elements; the oldest is the front of the deque. It has no lock: use it from one thread at a time, and
// CTOVSafeQueue between threads.
//
//   operation                          cost                when a copy or an allocation throws
//   Enqueue                            constant, 1 copy    unchanged
//   Dequeue                            constant, 1 copy    unchanged
//   GetSize, GetCount, IsEmpty         constant            -
template<class T> class TOV_TEMPLATE CTOVQueue
{
public:
    // Virtual operation.
    virtual ~CTOVQueue();

    CTOVQueue();
    CTOVQueue(const CTOVQueue& oQueue);
    CTOVQueue& operator=(const CTOVQueue& oQueue);

    // Adds a copy at the end. oElement may be an element of this queue.
    void Enqueue(const T& oElement);
    // Removes the oldest element and returns it. Throws unless "m_aQueue.size() > 0".
    T Dequeue();

    // These return the number of elements.
    long GetSize() const;
    long GetCount() const;
    bool IsEmpty() const;

private:
    std::deque<T> m_aQueue;
};

template<class T> CTOVQueue<T>::CTOVQueue()
{
}

template<class T> CTOVQueue<T>::CTOVQueue(const CTOVQueue& oQueue) : m_aQueue(oQueue.m_aQueue)
{
}

template<class T> CTOVQueue<T>::~CTOVQueue()
{
}

template<class T> CTOVQueue<T>& CTOVQueue<T>::operator=(const CTOVQueue& oQueue)
{
    m_aQueue = oQueue.m_aQueue;
    return *this;
}

template<class T> void CTOVQueue<T>::Enqueue(const T& oElement)
{
    m_aQueue.push_back(oElement);
}

template<class T> T CTOVQueue<T>::Dequeue()
{
    TOV_ASSERT_TEXT(!m_aQueue.empty(), "m_aQueue.size() > 0");

    T oElement(m_aQueue.front());
    m_aQueue.pop_front();
    return oElement;
}

template<class T> long CTOVQueue<T>::GetSize() const
{
    return static_cast<long>(m_aQueue.size());
}

template<class T> long CTOVQueue<T>::GetCount() const
{
    return static_cast<long>(m_aQueue.size());
}

template<class T> bool CTOVQueue<T>::IsEmpty() const
{
    return m_aQueue.empty();
}
