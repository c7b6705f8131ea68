// Declares shared ownership by reference counts: the interface ITOVRefCount, CTOVRefCount as the base of classes that
// count themselves, and CTOVRefCountObject, a control block that counts the references to another object.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVPlatform/TOVMemoryList.h>

#include <new>
#include <type_traits>
#include <utility>

class CTOVClass;
template<class T> class CTOVBuffer;
template<class T> class CTOVSharedBlock;
template<class T> class CTOVSmartPointer;

// A reference-counted object that returns its runtime class. It has no virtual destructor: Release destroys it; do not
// delete it through this interface. Counts are plain numbers: use an object from one thread at a time.
class TOV_EXPORT ITOVRefCount
{
public:
    // Virtual operations; their order is part of the exported design.

    // Returns the descriptor of the object's own class.
    virtual const CTOVClass& GetRuntimeClass() const;
    // Returns the object, converted to oClass, or null unless oClass is its own class or one of its bases.
    virtual void* QueryInterface(const CTOVClass& oClass);
    // Returns whether oClass is the object's own class.
    virtual bool IsInstanceOf(const CTOVClass& oClass) const;
    // Returns whether oClass is the object's own class or one of its direct or indirect super classes.
    virtual bool IsKindOf(const CTOVClass& oClass) const;
    // Increments the count and returns it.
    virtual long AddRef() = 0;
    // Decrements the count and returns it; at 0 the object destroys itself. Throws, and destroys nothing, unless
    // "lRefCount >= 0".
    virtual long Release() = 0;
    virtual long GetRefCount() const = 0;

    TOV_EXPORT_INLINE ITOVRefCount() {}
    ITOVRefCount(const ITOVRefCount& oOther);
    ITOVRefCount& operator=(const ITOVRefCount& oOther);

    // Returns the descriptor of this interface, which the first call creates and registers.
    static const CTOVClass& GetClass();
};

// Base of classes that count themselves. The code that creates an object holds its first reference and must release it.
class TOV_EXPORT CTOVRefCount : public ITOVRefCount
{
public:
    // Virtual operations of ITOVRefCount.
    const CTOVClass& GetRuntimeClass() const override;
    void* QueryInterface(const CTOVClass& oClass) override;
    bool IsInstanceOf(const CTOVClass& oClass) const override;
    bool IsKindOf(const CTOVClass& oClass) const override;
    long AddRef() override;
    long Release() override;
    long GetRefCount() const override;
    virtual ~CTOVRefCount();

    // Starts with count 1.
    CTOVRefCount();
    // Settled: a copy starts with the source's count, and an assignment overwrites the target's count with it.
    CTOVRefCount(const CTOVRefCount& oOther);
    CTOVRefCount& operator=(const CTOVRefCount& oOther);

    // Returns the descriptor of this class, whose super class is ITOVRefCount.
    static const CTOVClass& GetClass();

protected:
    long m_lRefCount; // references to this object, the one of its creator included
};

// Frees what a control block owns. If T needs no destructor, the storage is passed to "operator delete", which does not
// depend on its size: this also frees a block of many elements, and an object of which T is an interface without a
// virtual destructor. Every other object is deleted. An exception of its destructor is caught; if a check has failed
// there, listeners have been notified of it.
template<class T> class CTOVOwnedObject
{
    template<class TVoid, class TObject, class... TSize> struct sOwnDelete : std::false_type
    {
    };
    template<class TObject, class... TSize>
    struct sOwnDelete<std::void_t<decltype(TObject::operator delete(std::declval<void*>(), std::declval<TSize>()...))>,
                      TObject, TSize...> : std::true_type
    {
    };

public:
    // Returns whether T is freed as plain storage, without a destructor. A type with its own operator delete is not.
    static constexpr bool IsPlainStorage()
    {
        return std::is_trivially_destructible_v<T> && !sOwnDelete<void, T>::value &&
               !sOwnDelete<void, T, std::size_t>::value;
    }

    // Returns uninitialised storage that Free accepts. T must be plain storage.
    static void* Allocate(std::size_t nBytes)
    {
        if constexpr (alignof(T) > __STDCPP_DEFAULT_NEW_ALIGNMENT__)
            return ::operator new(nBytes, std::align_val_t(alignof(T)));
        else
            return ::operator new(nBytes);
    }

    // Destroys and frees the object, as the class's description says.
    static void Free(T* pObject) noexcept
    {
        if constexpr (!IsPlainStorage())
            TOVDebug::RunInDestructor([pObject] { delete pObject; });
        else if constexpr (alignof(T) > __STDCPP_DEFAULT_NEW_ALIGNMENT__)
            ::operator delete(const_cast<std::remove_cv_t<T>*>(pObject), std::align_val_t(alignof(T)));
        else
            ::operator delete(const_cast<std::remove_cv_t<T>*>(pObject));
    }
};

// Control block: it owns a T, which may be absent, and counts the references to it. Its runtime class is ITOVRefCount
// for every T.
//
//   CTOVSmartPointer<T> --+
//   CTOVSmartPointer<T> --+--> | m_lRefCount 3 | m_pObject --> T
//   CTOVBuffer<T> --------+
//
// The T is freed with the single-object delete, even if it is the first of an array: the elements of such an array must
// have no destructors. Allocate the array with operator new, as CTOVBuffer does, since the language does not define
// delete for memory of new[].
template<class T> class TOV_TEMPLATE CTOVRefCountObject : public ITOVRefCount
{
public:
    // Virtual operations of ITOVRefCount.
    long AddRef() override;
    long Release() override;
    long GetRefCount() const override;
    // Frees the T.
    virtual ~CTOVRefCountObject();

    // Starts with count 1 and owns pObject.
    CTOVRefCountObject(T* pObject = 0);
    CTOVRefCountObject(const CTOVRefCountObject&) = delete;
    CTOVRefCountObject& operator=(const CTOVRefCountObject&) = delete;

    // Returns whether there is a T.
    bool IsValid() const;

    // Control blocks are made and freed often: their memory comes from the thread's lists.
    static void* operator new(std::size_t nSize);
    static void operator delete(void* pBlock, std::size_t nSize);

private:
    friend class CTOVBuffer<T>;
    friend class CTOVSharedBlock<T>;
    friend class CTOVSmartPointer<T>;

    // Owns pObject from here on and frees the old T. A sole owner calls this instead of making a new control block.
    void Replace(T* pObject);

    // Deletes this block. A compiler that inlines it into a function with several handles warns of uses after the
    // delete, as it does not know that only the last handle calls it.
    TOV_NOINLINE void Destroy();

    // Does the same for a block that is known to be of this class and of none derived from it, when its count is no
    // longer positive.
    TOV_NOINLINE void DestroyExact();

    long m_lRefCount;
    T* m_pObject;
};

template<class T> CTOVRefCountObject<T>::CTOVRefCountObject(T* pObject) : m_lRefCount(1), m_pObject(pObject)
{
}

template<class T> CTOVRefCountObject<T>::~CTOVRefCountObject()
{
    if (m_pObject != nullptr)
        CTOVOwnedObject<T>::Free(m_pObject);
}

template<class T> void* CTOVRefCountObject<T>::operator new(std::size_t nSize)
{
    return TOVPlatform::TOVMemoryList::Allocate(TOVPlatform::TOVMemoryList::GetBlockSize(nSize));
}

// The module that frees the block may round up where the one that made it does not.
template<class T> void CTOVRefCountObject<T>::operator delete(void* pBlock, std::size_t nSize)
{
    TOVPlatform::TOVMemoryList::Free(pBlock, nSize);
}

template<class T> long CTOVRefCountObject<T>::AddRef()
{
    return ++m_lRefCount;
}

template<class T> long CTOVRefCountObject<T>::Release()
{
    const long lRefCount = --m_lRefCount;
    TOV_ASSERT(lRefCount >= 0);

    if (lRefCount == 0)
        Destroy();

    return lRefCount;
}

template<class T> void CTOVRefCountObject<T>::Destroy()
{
    delete this;
}

template<class T> void CTOVRefCountObject<T>::DestroyExact()
{
    const long lRefCount = m_lRefCount;
    TOV_ASSERT(lRefCount >= 0);

    if constexpr (CTOVOwnedObject<T>::IsPlainStorage())
    {
        // Nobody can see that the block goes first. What is left is one call, which returns to this one's caller.
        T* const pObject = m_pObject;
        if (pObject != nullptr && TOVPlatform::TOVMemoryList::PutFreed(this, sizeof(*this)))
            CTOVOwnedObject<T>::Free(pObject);
        else
            Destroy();
    }
    else
    {
        this->CTOVRefCountObject::~CTOVRefCountObject();
        operator delete(this, sizeof(*this));
    }
}

template<class T> long CTOVRefCountObject<T>::GetRefCount() const
{
    return m_lRefCount;
}

template<class T> bool CTOVRefCountObject<T>::IsValid() const
{
    return m_pObject != nullptr;
}

template<class T> void CTOVRefCountObject<T>::Replace(T* pObject)
{
    // The new object is stored before the old one is freed, as the destructor of the old one may use this block.
    T* const pOld = m_pObject;
    m_pObject = pObject;

    if (pOld != nullptr)
        CTOVOwnedObject<T>::Free(pOld);
}
