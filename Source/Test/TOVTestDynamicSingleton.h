// Counted holder of the test framework's process-wide objects.
#pragma once

#include <Test/TOVTestSuiteFactory.h>

namespace TOVTest
{
// As CTOVDynamicSingleton, with statics of its own and open to all, since T knows nothing of it. An object that is
// asked for after the last holder has gone is made anew, and stays.
template<class T> class CTOVTestDynamicSingleton
{
public:
    // Virtual operation. Counts down; at 0 deletes the object.
    virtual ~CTOVTestDynamicSingleton();

    // Makes the object if there is none, and counts up. When the making throws, the exception goes through and the
    // count has gone up all the same.
    CTOVTestDynamicSingleton();
    CTOVTestDynamicSingleton(const CTOVTestDynamicSingleton&) = delete;
    CTOVTestDynamicSingleton& operator=(const CTOVTestDynamicSingleton&) = delete;

    // The object; made, but not counted, if there is none.
    static T& GetInstance();

private:
    static T* s_pInstance;
    static long s_lRefCount;
};

template<class T> T* CTOVTestDynamicSingleton<T>::s_pInstance = nullptr;
template<class T> long CTOVTestDynamicSingleton<T>::s_lRefCount = 0;

template<class T> CTOVTestDynamicSingleton<T>::CTOVTestDynamicSingleton()
{
    // Settled: a failed creation is counted as well.
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
