// Declares the queue that a library's own mutex and condition variable make, for the rows of the queue between threads.
#pragma once

#include <deque>
#include <utility>

// TLocking has a mutex oMutex, a tLock that locks it as long as it lives, a Wait until something is the case, and a
// Wake of one that waits.
template<class TElement, class TLocking> class CLockedQueue
{
public:
    void Enqueue(const TElement& oElement)
    {
        {
            const typename TLocking::tLock oLock(m_oLocking.oMutex);
            m_oElements.push_back(oElement);
        }
        m_oLocking.Wake();
    }

    TElement Dequeue()
    {
        typename TLocking::tLock oLock(m_oLocking.oMutex);
        m_oLocking.Wait(oLock, [this] { return !m_oElements.empty(); });
        TElement oElement(std::move(m_oElements.front()));
        m_oElements.pop_front();
        return oElement;
    }

private:
    TLocking m_oLocking;
    std::deque<TElement> m_oElements;
};
