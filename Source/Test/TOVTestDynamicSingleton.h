// Declares CTOVTestDynamicSingleton, the counted holder of the test framework's process-wide objects.
#pragma once

#include <Test/TOVTestSuiteFactory.h>

namespace TOVTest
{
// Does the same as CTOVDynamicSingleton, with its own statics. GetInstance is public, since T does not know this class.
// A call after the last holder is gone creates a new object, which is never deleted.
template<class T> class CTOVTestDynamicSingleton
{
public:
    // Virtual operation. Decrements the count and deletes the object at 0.
    virtual ~CTOVTestDynamicSingleton();

    // Creates the object if it does not exist, and increments the count. If the creation throws, the exception reaches
    // the caller, and the count has been incremented all the same.
    CTOVTestDynamicSingleton();
    CTOVTestDynamicSingleton(const CTOVTestDynamicSingleton&) = delete;
    CTOVTestDynamicSingleton& operator=(const CTOVTestDynamicSingleton&) = delete;

    // Returns the object. Creates it, without counting, if it does not exist.
    static T& GetInstance();

private:
    static T* s_pInstance;
    static long s_lRefCount;
};

template<class T> T* CTOVTestDynamicSingleton<T>::s_pInstance = nullptr;
template<class T> long CTOVTestDynamicSingleton<T>::s_lRefCount = 0;

template<class T> CTOVTestDynamicSingleton<T>::CTOVTestDynamicSingleton()
{
    // Settled: a failed creation is counted as well, by this object's destructor.
    struct sCountUp
    {
        ~sCountUp() { ++s_lRefCount; }
    } oCountUp;

    GetInstance();
}

template<class T> CTOVTestDynamicSingleton<T>::~CTOVTestDynamicSingleton()
{
    if (--s_lRefCount == 0)
    {
        delete s_pInstance;
        s_pInstance = nullptr;
    }
}

template<class T> T& CTOVTestDynamicSingleton<T>::GetInstance()
{
    if (s_pInstance == nullptr)
        s_pInstance = new T();
    return *s_pInstance;
}

extern template class TOV_TEMPLATE_DECLARE CTOVTestDynamicSingleton<tCreatorMap>;
} // namespace TOVTest
