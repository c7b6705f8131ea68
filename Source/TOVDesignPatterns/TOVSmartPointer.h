// Declares CTOVSmartPointer, which shares the ownership of any object.
#pragma once

#include <TOVDesignPatterns/TOVRefCount.h>

// Refers to a control block that owns a T (CTOVRefCountObject) and counts its smart pointers. The last of them destroys
// the T. There is always a control block: the block of a null smart pointer has no T.
//
// The T is freed with the single-object delete; see CTOVRefCountObject for arrays. Nothing is locked: use all smart
// pointers of one block from one thread at a time.
//
//   operation                       allocates   remarks
//   construct from T*               1 block     also for a null pointer
//   copy, assign a smart pointer    nothing     one count
//   assign a T*                     0 or 1      a sole owner keeps its block
//
// If an allocation fails, std::bad_alloc reaches the caller, the smart pointer is unchanged, and the caller still owns
// the T. An exception of T's destructor is caught and never leaves a smart pointer; listeners are notified of checks
// that fail there.
template<class T> class TOV_TEMPLATE CTOVSmartPointer
{
public:
    // Makes a new control block with count 1, which owns pObject.
    CTOVSmartPointer(T* pObject = 0);
    // Shares oOther's control block.
    CTOVSmartPointer(const CTOVSmartPointer& oOther);
    ~CTOVSmartPointer();

    // Shares oOther's control block, then releases the old one, so that a pointer can walk a list: p = p->pNext.
    // Settled: a sole owner that is assigned to itself frees its T and becomes a null smart pointer.
    CTOVSmartPointer& operator=(const CTOVSmartPointer& oOther);
    // Releases the old control block and makes one with count 1 that owns pObject, which may be null. Other smart
    // pointers keep their T. Settled: a sole owner keeps its block, and assigning the pointer that it holds changes
    // nothing.
    CTOVSmartPointer& operator=(T* pObject);

    // These access the T. They throw unless "m_pObject->IsValid()".
    T* operator->();
    const T* operator->() const;
    T& operator*();
    const T& operator*() const;
    // Returns the element nIndex of the array that begins at the T. Throws as above; the index is not checked.
    T& operator[](int nIndex);

    // These return the held pointer, which is null for a null smart pointer. Comparisons use them and therefore compare
    // held pointers.
    operator T*();
    operator const T*() const;
    T* Get();
    const T* Get() const;

    // Returns whether there is a T.
    bool IsValid() const;
    // Returns the number of smart pointers that share the control block.
    long GetRefCount() const;

private:
    friend class CTOVBuffer<T>;

    // Takes over a reference to pBlock.
    struct sAdopt
    {
        CTOVRefCountObject<T>* pBlock;
    };
    explicit CTOVSmartPointer(sAdopt oAdopt) : m_pObject(oAdopt.pBlock) {}

    // These do what AddRef and Release of the block do, whose exact class is known.
    static CTOVRefCountObject<T>* Share(CTOVRefCountObject<T>* pBlock);
    static void Release(CTOVRefCountObject<T>* pBlock);

    CTOVRefCountObject<T>* m_pObject;
};

template<class T> CTOVRefCountObject<T>* CTOVSmartPointer<T>::Share(CTOVRefCountObject<T>* pBlock)
{
    ++pBlock->m_lRefCount;
    return pBlock;
}

template<class T> void CTOVSmartPointer<T>::Release(CTOVRefCountObject<T>* pBlock)
{
    if (--pBlock->m_lRefCount <= 0)
        pBlock->DestroyExact();
}

template<class T> CTOVSmartPointer<T>::CTOVSmartPointer(T* pObject) : m_pObject(new CTOVRefCountObject<T>(pObject))
{
}

template<class T>
CTOVSmartPointer<T>::CTOVSmartPointer(const CTOVSmartPointer& oOther) : m_pObject(Share(oOther.m_pObject))
{
}

template<class T> TOV_OUTSIDE_INLINE CTOVSmartPointer<T>::~CTOVSmartPointer()
{
    if (m_pObject == nullptr || --m_pObject->m_lRefCount > 0)
        return;
    // The usual case of a plain object passes its check, and has no destructor that could throw.
    if (m_pObject->m_lRefCount == 0 && CTOVOwnedObject<T>::IsPlainStorage())
        m_pObject->DestroyExact();
    else
        TOVDebug::RunInDestructor([this] { m_pObject->DestroyExact(); });
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

    // Settled: oOther's block is counted before the old one is released, as oOther may be part of the old block's T.
    m_pObject = Share(oOther.m_pObject);
    Release(pOld);
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
        Release(m_pObject);
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
