// Counted holder of a process-wide object that can be needed before its holder exists.
#pragma once

#include <Debug/TOVCheck.h>

// Keeps the one T of the process alive. The holders of one T share it, and it dies with the last of them. A call of
// T::Instance() that comes before the first holder, or after the last, creates the object without counting: a later
// holder adopts it; without one nothing deletes it, and it stays reachable until the process ends.
//
// T writes its entry point over GetInstance(), and both statics are open to T as a friend. Nothing here locks: creation
// is expected during start-up, on one thread.
//
// The statics exist once in the process, also across the library's boundary, if T sets it up like this:
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
// A T without a public default constructor makes CTOVDynamicSingleton<T> its friend. A T that is built with arguments
// has a static T* CreateInstance(), which is called instead of new T().
template<class T> class CTOVDynamicSingleton
{
public:
    // Virtual operation. Counts down; at 0 deletes the object. The object can still reach itself by its entry point
    // while its destructor runs; what that destructor throws ends here.
    virtual ~CTOVDynamicSingleton();

    // Creates the object if there is none, and counts up. When the creation throws, the exception goes through and the
    // count has gone up all the same.
    CTOVDynamicSingleton();
    CTOVDynamicSingleton(const CTOVDynamicSingleton&) = delete;
    CTOVDynamicSingleton& operator=(const CTOVDynamicSingleton&) = delete;

private:
    friend T;

    // The object; created, but not counted, if there is none.
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
    // Settled: a failed creation is counted as well.
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
