// Shared ownership of any object: CTOVSmartPointer.
#pragma once

#include <TOVDesignPatterns/TOVRefCount.h>

// Value handle on a control block that owns a T (CTOVRefCountObject). The T dies with the last handle. There is always
// a control block: a null smart pointer is one on a block without a T.
//
// What it holds is freed with the single-object delete; see CTOVRefCountObject for arrays. No lock: one thread at a
// time for all handles of one block together.
//
//   operation                       allocates   remarks
//   construct from T*               1 block     also for a null pointer
//   copy, assign a smart pointer    nothing     one count
//   assign a T*                     0 or 1      a sole owner keeps its block
//
// When an allocation fails, std::bad_alloc goes through, the handle is as it was, and the T is still the caller's. What
// a T's destructor throws ends where the T does, and never leaves a handle; listeners hear of its failed checks.
template<class T> class TOV_TEMPLATE CTOVSmartPointer
{
public:
    // A new control block with count 1 around pObject, which it takes over.
    CTOVSmartPointer(T* pObject = 0);
    // Shares oOther's control block.
    CTOVSmartPointer(const CTOVSmartPointer& oOther);
    ~CTOVSmartPointer();

    // Shares oOther's control block, then lets go of the old one, so that a pointer can walk a list: p = p->pNext.
    // Settled: a sole owner that is assigned to itself loses its T, and is a null smart pointer then.
    CTOVSmartPointer& operator=(const CTOVSmartPointer& oOther);
    // Lets go of the old control block and holds pObject in one with count 1; also for a null pointer, so that other
    // handles keep what they have. Settled: a sole owner keeps its block, and the held pointer again changes nothing.
    CTOVSmartPointer& operator=(T* pObject);

    // Access to the T. Each throws unless "m_pObject->IsValid()".
    T* operator->();
    const T* operator->() const;
    T& operator*();
    const T& operator*() const;
    // Element nIndex, counted from the held pointer, with no bound check.
    T& operator[](int nIndex);

    // The held pointer, NULL for a null smart pointer. Comparisons go through these and so compare held pointers.
    operator T*();
    operator const T*() const;
    T* Get();
    const T* Get() const;

    // Whether there is a T.
    bool IsValid() const;
    // The number of handles on the control block.
    long GetRefCount() const;

private:
    CTOVRefCountObject<T>* m_pObject;
};

template<class T> CTOVSmartPointer<T>::CTOVSmartPointer(T* pObject) : m_pObject(new CTOVRefCountObject<T>(pObject))
{
}

template<class T> CTOVSmartPointer<T>::CTOVSmartPointer(const CTOVSmartPointer& oOther) : m_pObject(oOther.m_pObject)
{
    m_pObject->AddRef();
}

template<class T> CTOVSmartPointer<T>::~CTOVSmartPointer()
{
    if (m_pObject != nullptr)
        TOVDebug::RunInDestructor([this] { m_pObject->Release(); });
}

template<class T> CTOVSmartPointer<T>& CTOVSmartPointer<T>::operator=(const CTOVSmartPointer& oOther)
{
    CTOVRefCountObject<T>* const pOld = m_pObject;
    if (pOld == oOther.m_pObject)
    {
        if (pOld->m_lRefCount == 1)
            pOld->Replace(nullptr);
        return *this;
    }

    // Settled: oOther's block is counted before the old one goes, as oOther may be part of what the old block owns.
    m_pObject = oOther.m_pObject;
    m_pObject->AddRef();
    pOld->Release();
    return *this;
}

template<class T> CTOVSmartPointer<T>& CTOVSmartPointer<T>::operator=(T* pObject)
{
    if (pObject != nullptr && pObject == m_pObject->m_pObject)
        return *this;

    if (m_pObject->m_lRefCount == 1)
    {
        m_pObject->Replace(pObject);
    }
    else
    {
        CTOVRefCountObject<T>* const pNew = new CTOVRefCountObject<T>(pObject);
        m_pObject->Release();
        m_pObject = pNew;
    }
    return *this;
}

template<class T> T* CTOVSmartPointer<T>::operator->()
{
    TOV_ASSERT(m_pObject->IsValid());
    return m_pObject->m_pObject;
}

template<class T> const T* CTOVSmartPointer<T>::operator->() const
{
    TOV_ASSERT(m_pObject->IsValid());
    return m_pObject->m_pObject;
}

template<class T> T& CTOVSmartPointer<T>::operator*()
{
    TOV_ASSERT(m_pObject->IsValid());
    return *m_pObject->m_pObject;
}

template<class T> const T& CTOVSmartPointer<T>::operator*() const
{
    TOV_ASSERT(m_pObject->IsValid());
    return *m_pObject->m_pObject;
}

template<class T> T& CTOVSmartPointer<T>::operator[](int nIndex)
{
    TOV_ASSERT(m_pObject->IsValid());
    return m_pObject->m_pObject[nIndex];
}

template<class T> CTOVSmartPointer<T>::operator T*()
{
    return m_pObject->m_pObject;
}

template<class T> CTOVSmartPointer<T>::operator const T*() const
{
    return m_pObject->m_pObject;
}

template<class T> T* CTOVSmartPointer<T>::Get()
{
    return m_pObject->m_pObject;
}

template<class T> const T* CTOVSmartPointer<T>::Get() const
{
    return m_pObject->m_pObject;
}

template<class T> bool CTOVSmartPointer<T>::IsValid() const
{
    return m_pObject->IsValid();
}

template<class T> long CTOVSmartPointer<T>::GetRefCount() const
{
    return m_pObject != nullptr ? m_pObject->m_lRefCount : 0;
}
