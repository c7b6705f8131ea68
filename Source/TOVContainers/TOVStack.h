// Declares CTOVStack, a last-in first-out store.
#pragma once

#include <Debug/TOVCheck.h>

#include <deque>

// Owns its elements; the top is the back of the deque. It has no lock: use it from one thread at a time.
//
//   operation                          cost               when a copy or an allocation throws
//   Push                               constant, 1 copy   unchanged
//   Pop, GetTop                        constant           -
//   GetSize, GetCount, IsEmpty         constant           -
//   Clear, destruction                 linear             -
template<class T> class TOV_TEMPLATE CTOVStack
{
public:
    // Virtual operation.
    virtual ~CTOVStack();

    CTOVStack();
    CTOVStack(const CTOVStack& oStack);
    CTOVStack& operator=(const CTOVStack& oStack);

    // Adds a copy on top. oElement may be an element of this stack.
    void Push(const T& oElement);
    // Removes the top element. Throws unless "m_aStack.size() > 0".
    void Pop();
    // Returns the top element. Throws unless "m_aStack.size() > 0".
    T& GetTop();

    // These return the number of elements.
    long GetSize() const;
    long GetCount() const;
    bool IsEmpty() const;
    // Removes all elements.
    void Clear();

private:
    std::deque<T> m_aStack;
};

template<class T> CTOVStack<T>::CTOVStack()
{
}

template<class T> CTOVStack<T>::CTOVStack(const CTOVStack& oStack) : m_aStack(oStack.m_aStack)
{
}

template<class T> CTOVStack<T>::~CTOVStack()
{
}

template<class T> CTOVStack<T>& CTOVStack<T>::operator=(const CTOVStack& oStack)
{
    m_aStack = oStack.m_aStack;
    return *this;
}

template<class T> void CTOVStack<T>::Push(const T& oElement)
{
    m_aStack.push_back(oElement);
}

template<class T> void CTOVStack<T>::Pop()
{
    TOV_ASSERT_TEXT(!m_aStack.empty(), "m_aStack.size() > 0");
    m_aStack.pop_back();
}

template<class T> T& CTOVStack<T>::GetTop()
{
    TOV_ASSERT_TEXT(!m_aStack.empty(), "m_aStack.size() > 0");
    return m_aStack.back();
}

template<class T> long CTOVStack<T>::GetSize() const
{
    return static_cast<long>(m_aStack.size());
}

template<class T> long CTOVStack<T>::GetCount() const
{
    return static_cast<long>(m_aStack.size());
}

template<class T> bool CTOVStack<T>::IsEmpty() const
{
    return m_aStack.empty();
}

template<class T> void CTOVStack<T>::Clear()
{
    m_aStack.clear();
}
