// An object whose destructor only the test calls, if anybody does: a copy, say, of an object that releases what both
// share.
#pragma once

#include <new>
#include <utility>

//     CUnended<CTOVMutex> oCopy(oMutex);
//     oCopy->Lock();
template<class T> class CUnended
{
public:
    template<class... TArguments>
    explicit CUnended(TArguments&&... oArguments)
        : m_pObject(new (m_aMemory) T(std::forward<TArguments>(oArguments)...))
    {
    }

    CUnended(const CUnended&) = delete;
    CUnended& operator=(const CUnended&) = delete;

    T& operator*() const { return *m_pObject; }
    T* operator->() const { return m_pObject; }

    void End() { m_pObject->~T(); }

private:
    alignas(T) unsigned char m_aMemory[sizeof(T)];
    T* const m_pObject;
};
