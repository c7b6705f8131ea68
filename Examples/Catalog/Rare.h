// Declares CRare, which holds a value that most objects of a kind do not have.
#pragma once

#include <memory>

// Without a value it takes the room of a pointer. A copy has a value of its own.
template<class T> class CRare
{
public:
    CRare() = default;
    CRare(const CRare& oOther) : m_pValue(oOther.m_pValue ? new T(*oOther.m_pValue) : nullptr) {}
    CRare(CRare&&) noexcept = default;

    CRare& operator=(CRare oOther) noexcept
    {
        m_pValue.swap(oOther.m_pValue);
        return *this;
    }

    // Returns null if there is no value.
    const T* Get() const { return m_pValue.get(); }

    // Returns the value, which is a new one if there was none.
    T& Make()
    {
        if (m_pValue == nullptr)
            m_pValue.reset(new T());
        return *m_pValue;
    }

private:
    std::unique_ptr<T> m_pValue;
};
