#include <TOVDesignPatterns/TOVRefCount.h>

#include <TOVRtti/TOVClass.h>

const CTOVClass& ITOVRefCount::GetRuntimeClass() const
{
    return GetClass();
}

void* ITOVRefCount::QueryInterface(const CTOVClass& oClass)
{
    return oClass == GetClass() ? this : nullptr;
}

bool ITOVRefCount::IsInstanceOf(const CTOVClass& oClass) const
{
    return GetClass() == oClass;
}

bool ITOVRefCount::IsKindOf(const CTOVClass& oClass) const
{
    return GetClass().IsKindOf(oClass);
}

ITOVRefCount::ITOVRefCount(const ITOVRefCount& /*oOther*/)
{
}

ITOVRefCount& ITOVRefCount::operator=(const ITOVRefCount& /*oOther*/)
{
    return *this;
}

const CTOVClass& ITOVRefCount::GetClass()
{
    static const CTOVClass _s_oClass("ITOVRefCount");
    return _s_oClass;
}

const CTOVClass& CTOVRefCount::GetRuntimeClass() const
{
    return GetClass();
}

void* CTOVRefCount::QueryInterface(const CTOVClass& oClass)
{
    return oClass == GetClass() ? this : ITOVRefCount::QueryInterface(oClass);
}

bool CTOVRefCount::IsInstanceOf(const CTOVClass& oClass) const
{
    return GetClass() == oClass;
}

bool CTOVRefCount::IsKindOf(const CTOVClass& oClass) const
{
    return GetClass().IsKindOf(oClass);
}

long CTOVRefCount::AddRef()
{
    return ++m_lRefCount;
}

long CTOVRefCount::Release()
{
    const long lRefCount = --m_lRefCount;
    TOV_ASSERT(lRefCount >= 0);

    if (lRefCount == 0)
        delete this;

    return lRefCount;
}

long CTOVRefCount::GetRefCount() const
{
    return m_lRefCount;
}

CTOVRefCount::CTOVRefCount() : m_lRefCount(1)
{
}

CTOVRefCount::CTOVRefCount(const CTOVRefCount& oOther) : ITOVRefCount(oOther), m_lRefCount(oOther.m_lRefCount)
{
}

CTOVRefCount::~CTOVRefCount()
{
}

CTOVRefCount& CTOVRefCount::operator=(const CTOVRefCount& oOther)
{
    m_lRefCount = oOther.m_lRefCount;
    return *this;
}

const CTOVClass& CTOVRefCount::GetClass()
{
    static const CTOVClass _s_oClass("CTOVRefCount", &ITOVRefCount::GetClass());
    return _s_oClass;
}
