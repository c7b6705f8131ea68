// Shared ownership by counting: the interface, a base for classes that count themselves, and a control block that
// counts references to something else.
#pragma once

#include <Debug/TOVCheck.h>

#include <new>
#include <type_traits>
#include <utility>

class CTOVClass;
template<class T> class CTOVBuffer;
template<class T> class CTOVSmartPointer;

// A counted object that can be asked for its runtime class. It has no virtual destructor: it dies by Release, and is
// not to be deleted through this interface. Counts are plain numbers: one thread at a time.
class TOV_EXPORT ITOVRefCount
{
public:
    // Virtual operations; their order is part of the exported design.

    // The descriptor of the object's own class.
    virtual const CTOVClass& GetRuntimeClass() const;
    // The object as oClass, which is its class or one of its bases; NULL if it is neither.
    virtual void* QueryInterface(const CTOVClass& oClass);
    // Whether oClass is the object's own class.
    virtual bool IsInstanceOf(const CTOVClass& oClass) const;
    // Whether oClass is the object's own class or one of its super classes, near or far.
    virtual bool IsKindOf(const CTOVClass& oClass) const;
    // One reference more. Returns the new count.
    virtual long AddRef() = 0;
    // One reference less; the object destroys itself at 0. Returns the new count. Throws unless "lRefCount >= 0", and
    // destroys nothing then.
    virtual long Release() = 0;
    virtual long GetRefCount() const = 0;

    ITOVRefCount();
    ITOVRefCount(const ITOVRefCount& oOther);
    ITOVRefCount& operator=(const ITOVRefCount& oOther);

    // The descriptor of this interface, made and registered at the first call.
    static const CTOVClass& GetClass();
};

// Base of classes that count themselves. Whoever makes one holds its first reference and has to Release it.
class TOV_EXPORT CTOVRefCount : public ITOVRefCount
{
public:
    // Virtual operations, as in ITOVRefCount.
    const CTOVClass& GetRuntimeClass() const override;
    void* QueryInterface(const CTOVClass& oClass) override;
    bool IsInstanceOf(const CTOVClass& oClass) const override;
    bool IsKindOf(const CTOVClass& oClass) const override;
    long AddRef() override;
    long Release() override;
    long GetRefCount() const override;
    virtual ~CTOVRefCount();

    // Count 1.
    CTOVRefCount();
    // Settled: a copy starts with the source's count, and assignment overwrites the target's count with it.
    CTOVRefCount(const CTOVRefCount& oOther);
    CTOVRefCount& operator=(const CTOVRefCount& oOther);

    // The descriptor of this class, whose super class is ITOVRefCount.
    static const CTOVClass& GetClass();

protected:
    long m_lRefCount;
};

// How a control block frees what it owns. Storage of a type that needs no destructor goes back to where "operator new"
// took it, whatever its size: so a block of many elements, and an object behind an interface without a virtual
// destructor, are freed rightly by the single-object form. Everything else is deleted, and what
// its destructor throws ends there: a check that failed in it has been told.
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
    // Whether T's storage goes back by itself. False for a type that brings its own operator delete.
    static constexpr bool IsPlainStorage()
    {
        return std::is_trivially_destructible_v<T> && !sOwnDelete<void, T>::value &&
               !sOwnDelete<void, T, std::size_t>::value;
    }

    // Storage that Free takes back, not initialised. T is plain storage.
    static void* Allocate(std::size_t nBytes)
    {
        if constexpr (alignof(T) > __STDCPP_DEFAULT_NEW_ALIGNMENT__)
            return ::operator new(nBytes, std::align_val_t(alignof(T)));
        else
            return ::operator new(nBytes);
    }

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

// Control block: owns a T, which may be absent, and counts the references to it. Its runtime class is ITOVRefCount for
// every T.
//
//   CTOVSmartPointer<T> --+
//   CTOVSmartPointer<T> --+--> | m_lRefCount 3 | m_pObject --> T
//   CTOVBuffer<T> --------+
//
// The T is freed with the single-object delete, also when it is the first of an array: an array held this way must be
// of a type without destructors. Its memory is best taken with operator new, as CTOVBuffer does, since delete of what
// new[] made is undefined in the language.
template<class T> class TOV_TEMPLATE CTOVRefCountObject : public ITOVRefCount
{
public:
    // Virtual operations, as in ITOVRefCount.
    long AddRef() override;
    long Release() override;
    long GetRefCount() const override;
    // Frees the T.
    virtual ~CTOVRefCountObject();

    // Count 1. Takes over pObject.
    CTOVRefCountObject(T* pObject = 0);
    CTOVRefCountObject(const CTOVRefCountObject&) = delete;
    CTOVRefCountObject& operator=(const CTOVRefCountObject&) = delete;

    // Whether there is a T.
    bool IsValid() const;

private:
    friend class CTOVSmartPointer<T>;

    // Takes over pObject and frees the T held so far: what a sole owner does instead of making a new control block.
    void Replace(T* pObject);

    // Ends this block. A compiler that merges it into a function with several handles warns of uses after the delete,
    // as it does not know that only the last handle comes here.
    TOV_NOINLINE void Destroy();

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
    // The new object is in place before the old one goes, as the old one's destructor may look in here.
    T* const pOld = m_pObject;
    m_pObject = pObject;

    if (pOld != nullptr)
        CTOVOwnedObject<T>::Free(pOld);
}
