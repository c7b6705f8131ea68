// Declares CTOVDynamicSingleton, the counted holder of a process-wide object that can be needed before its holder
// exists.
#pragma once

#include <Debug/TOVCheck.h>

// Keeps the one T of the process alive. The holders of one T share it, and the destructor of the last holder deletes
// it. A call of T::Instance() before the first holder exists, or after the last is gone, creates the object without
// counting: a later holder adopts it; without such a holder the object is never deleted, and stays reachable until the
// process ends.
//
// T implements T::Instance() with GetInstance(), to which it has access as a friend. Nothing is locked here: create the
// object during start-up, on one thread.
//
// The statics exist once in the process, even across the library's boundary, if T declares them like this:
//
//   header   class TOV_EXPORT CTOVThing
//            {
//            public:
//                static CTOVThing& Instance();
//                ...
//            };
//            extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVThing>;
//
//   source   template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVThing>;
//
//            CTOVThing& CTOVThing::Instance() { return CTOVDynamicSingleton<CTOVThing>::GetInstance(); }
//
//   startup  static const CTOVDynamicSingleton<CTOVThing> s_oThingHolder;
//
// A T without a public default constructor makes CTOVDynamicSingleton<T> its friend. A T whose constructor needs
// arguments has a static T* CreateInstance(), which is called instead of new T().
template<class T> class CTOVDynamicSingleton
{
public:
    // Virtual operation. Decrements the count and deletes the object at 0. The object's entry point still returns the
    // object while its destructor runs. An exception of that destructor is caught here.
    virtual ~CTOVDynamicSingleton();

    // Creates the object if it does not exist, and increments the count. If the creation throws, the exception reaches
    // the caller, and the count has been incremented all the same.
    CTOVDynamicSingleton();
    CTOVDynamicSingleton(const CTOVDynamicSingleton&) = delete;
    CTOVDynamicSingleton& operator=(const CTOVDynamicSingleton&) = delete;

private:
    friend T;

    // Returns the object. Creates it, without counting, if it does not exist.
    static T& GetInstance();

    template<class TObject> static auto Create(int) -> decltype(TObject::CreateInstance());
    template<class TObject> static TObject* Create(...);

    static T* s_pInstance;
    static long s_lRefCount;
};

template<class T> T* CTOVDynamicSingleton<T>::s_pInstance = nullptr;
template<class T> long CTOVDynamicSingleton<T>::s_lRefCount = 0;

template<class T> CTOVDynamicSingleton<T>::CTOVDynamicSingleton()
{
    // Settled: a failed creation is counted as well, by this object's destructor.
    struct sCountUp
    {
        ~sCountUp() { ++s_lRefCount; }
    } oCountUp;

    GetInstance();
}

template<class T> CTOVDynamicSingleton<T>::~CTOVDynamicSingleton()
{
    if (--s_lRefCount == 0)
    {
        TOVDebug::RunInDestructor([] { delete s_pInstance; });
        s_pInstance = nullptr;
    }
}

template<class T> T& CTOVDynamicSingleton<T>::GetInstance()
{
    if (s_pInstance == nullptr)
        s_pInstance = Create<T>(0);

    return *s_pInstance;
}

template<class T>
template<class TObject>
auto CTOVDynamicSingleton<T>::Create(int) -> decltype(TObject::CreateInstance())
{
    return TObject::CreateInstance();
}

template<class T> template<class TObject> TObject* CTOVDynamicSingleton<T>::Create(...)
{
    return new TObject();
}
