#include <TOVRtti/TOVClass.h>

#include <TOVRtti/TOVClassServer.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>

namespace
{
constexpr unsigned long NO_CLASS_ID = 0xFFFFFFFFul; // -1 in 32 bits

// Returns the number of owners, which is stored before the name.
long& OwnersOf(char* szName)
{
    return *reinterpret_cast<long*>(szName - sizeof(long));
}
} // namespace

CTOVClass::CTOVClass(const char* szClassName, const CTOVClass* pSuper1, const CTOVClass* pSuper2,
                     const CTOVClass* pSuper3, const CTOVClass* pSuper4)
    : m_szName(nullptr), m_dwClassId(NO_CLASS_ID), m_bRegistered(false)
{
    TOV_ASSERT(szClassName != NULL);

    m_szName = NewName(szClassName);
    try
    {
        const CTOVClass* const apSuperClasses[] = {pSuper1, pSuper2, pSuper3, pSuper4};
        m_aSuperClasses.reserve(std::size(apSuperClasses) -
                                std::count(std::begin(apSuperClasses), std::end(apSuperClasses), nullptr));
        for (const CTOVClass* pSuper : apSuperClasses)
        {
            if (pSuper != nullptr)
                m_aSuperClasses.push_back(pSuper);
        }
        Register();
    }
    catch (...)
    {
        ReleaseName(m_szName);
        throw;
    }
}

CTOVClass::CTOVClass(const CTOVClass& oOther)
    : m_szName(nullptr), m_dwClassId(oOther.m_dwClassId), m_bRegistered(oOther.m_bRegistered),
      m_aSuperClasses(oOther.m_aSuperClasses)
{
    m_szName = ShareName(oOther.m_szName);
}

CTOVClass::~CTOVClass() noexcept(false)
{
    // The name is released even if a listener throws at the log line of the removal.
    struct sNameRelease
    {
        char*& szName;
        ~sNameRelease()
        {
            ReleaseName(szName);
            szName = nullptr;
        }
    } const oNameRelease = {m_szName};

    if (m_dwClassId != NO_CLASS_ID)
        CTOVClassServer::ForgetClass(this);
}

CTOVClass& CTOVClass::operator=(const CTOVClass& oOther)
{
    m_aSuperClasses = oOther.m_aSuperClasses;
    char* const szOldName = m_szName;
    m_szName = ShareName(oOther.m_szName);
    ReleaseName(szOldName);
    m_dwClassId = oOther.m_dwClassId;
    m_bRegistered = oOther.m_bRegistered;
    return *this;
}

const char* CTOVClass::GetName() const
{
    return m_szName;
}

CTOVClass::operator const char*() const
{
    return m_szName;
}

CTOVClass::operator CTOVStringA() const
{
    return m_szName;
}

unsigned long CTOVClass::GetClassId() const
{
    return m_dwClassId;
}

int CTOVClass::GetNumSuperClasses() const
{
    return static_cast<int>(m_aSuperClasses.size());
}

bool CTOVClass::HasSuperClasses() const
{
    return !m_aSuperClasses.empty();
}

const CTOVClass& CTOVClass::GetSuperClass(int nSuperClass) const
{
    TOV_ASSERT((0 <= nSuperClass) && (nSuperClass < GetNumSuperClasses()));
    return *m_aSuperClasses[static_cast<std::size_t>(nSuperClass)];
}

bool CTOVClass::operator==(const CTOVClass& oOther) const
{
    return m_dwClassId == oOther.m_dwClassId;
}

bool CTOVClass::operator!=(const CTOVClass& oOther) const
{
    return m_dwClassId != oOther.m_dwClassId;
}

bool CTOVClass::IsInstanceOf(const CTOVClass& oOther) const
{
    return *this == oOther;
}

bool CTOVClass::IsKindOf(const CTOVClass& oOther) const
{
    if (*this == oOther)
        return true;

    for (int nSuperClass = 0; nSuperClass < GetNumSuperClasses(); ++nSuperClass)
    {
        if (GetSuperClass(nSuperClass).IsKindOf(oOther))
            return true;
    }
    return false;
}

const CTOVClass& CTOVClass::Invalid()
{
    return _s_oInvalid;
}

void CTOVClass::Register()
{
    m_dwClassId = CTOVClassServer::Instance().AddClass(CTOVStringA(m_szName), this);
}

void CTOVClass::Unregister()
{
    if (m_dwClassId != NO_CLASS_ID)
        CTOVClassServer::Instance().RemoveClass(CTOVStringA(m_szName));
}

void CTOVClass::AddSuperClass(const CTOVClass& oClass)
{
    m_aSuperClasses.push_back(&oClass);
}

void CTOVClass::RemoveSuperClass(const CTOVClass& oClass)
{
    // Settled: the index is incremented after a removal as well, and so skips the entry that has just moved down.
    for (std::size_t nIndex = 0; nIndex < m_aSuperClasses.size(); ++nIndex)
    {
        if (m_aSuperClasses[nIndex] == &oClass)
            m_aSuperClasses.erase(m_aSuperClasses.begin() + static_cast<std::ptrdiff_t>(nIndex));
    }
}

char* CTOVClass::NewName(const char* szName)
{
    const std::size_t nSize = std::strlen(szName) + 1;
    char* const pBlock = static_cast<char*>(::operator new(sizeof(long) + nSize));
    new (pBlock) long(1);
    std::memcpy(pBlock + sizeof(long), szName, nSize);
    return pBlock + sizeof(long);
}

char* CTOVClass::ShareName(char* szName)
{
    ++OwnersOf(szName);
    return szName;
}

void CTOVClass::ReleaseName(char* szName)
{
    if (--OwnersOf(szName) == 0)
        ::operator delete(szName - sizeof(long));
}
