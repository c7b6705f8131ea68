#include <TOVDesignPatterns/TOVHandle.h>

#include <Debug/TOVCheck.h>
#include <TOVDesignPatterns/TOVRefCount.h>

namespace
{
constexpr long NO_HANDLE = -1;

template<class T> int CompareValues(T oFirst, T oSecond)
{
    return oFirst < oSecond ? -1 : oFirst > oSecond ? 1 : 0;
}

std::uintptr_t AddressOf(const void* pThing)
{
    return reinterpret_cast<std::uintptr_t>(pThing);
}

// The arguments are values, since the handle may be part of the object that Release destroys.
void ReleaseReference(ITOVRefCount* pObject, long lHandle, ITOVHandleDatabase* pDatabase)
{
    if (pObject != nullptr && pObject->Release() == 0)
        pDatabase->RemoveHandle(lHandle);
}
} // namespace

CTOVHandle::~CTOVHandle()
{
    TOVDebug::RunInDestructor([this] { Release(); });
}

CTOVHandle::CTOVHandle() : m_pObject(nullptr), m_lHandle(NO_HANDLE), m_pDatabase(nullptr)
{
}

CTOVHandle::CTOVHandle(ITOVHandleDatabase& oDatabase, long lHandle, ITOVRefCount* pObject)
    : m_pObject(pObject), m_lHandle(lHandle), m_pDatabase(&oDatabase)
{
    if (m_pObject != nullptr)
        m_pObject->AddRef();
}

CTOVHandle::CTOVHandle(ITOVHandleDatabase& oDatabase, ITOVRefCount* pObject)
    : m_pObject(nullptr), m_lHandle(NO_HANDLE), m_pDatabase(&oDatabase)
{
    if (pObject != nullptr)
        operator=(pObject);
}

CTOVHandle::CTOVHandle(ITOVHandleDatabase& oDatabase, long lHandle)
    : m_pObject(nullptr), m_lHandle(NO_HANDLE), m_pDatabase(&oDatabase)
{
    if (lHandle != NO_HANDLE)
        operator=(lHandle);
}

CTOVHandle::CTOVHandle(const CTOVHandle& oOther)
    : m_pObject(oOther.m_pObject), m_lHandle(oOther.m_lHandle), m_pDatabase(oOther.m_pDatabase)
{
    if (m_pObject != nullptr)
        m_pObject->AddRef();
}

const CTOVHandle& CTOVHandle::operator=(const CTOVHandle& oOther)
{
    // Settled: the last handle of an object, assigned to itself, releases the object and no longer has one.
    const bool bOwnLast = this == &oOther && IsValid() && m_pObject->GetRefCount() == 1;
    ITOVRefCount* const pNewObject = bOwnLast ? nullptr : oOther.m_pObject;
    // Settled: only a valid handle releases its object.
    ITOVRefCount* const pOldObject = IsValid() ? m_pObject : nullptr;
    const long lOldHandle = m_lHandle;
    ITOVHandleDatabase* const pOldDatabase = m_pDatabase;

    // The source may be part of the old object. So its object is counted and its members are read before the release.
    if (pNewObject != nullptr)
        pNewObject->AddRef();
    m_pObject = pNewObject;
    m_lHandle = oOther.m_lHandle;
    m_pDatabase = oOther.m_pDatabase;
    ReleaseReference(pOldObject, lOldHandle, pOldDatabase);
    return *this;
}

const CTOVHandle& CTOVHandle::operator=(long lHandle)
{
    TOV_ASSERT(m_pDatabase != NULL);
    return *this = m_pDatabase->GetHandle(lHandle);
}

const CTOVHandle& CTOVHandle::operator=(ITOVRefCount* pObject)
{
    TOV_ASSERT(m_pDatabase != NULL);
    return *this = m_pDatabase->GetHandle(pObject);
}

const CTOVHandle& CTOVHandle::Null()
{
    static const CTOVHandle s_oNull;
    return s_oNull;
}

bool CTOVHandle::IsValid() const
{
    return m_lHandle != NO_HANDLE && m_pObject != nullptr && m_pDatabase != nullptr;
}

ITOVRefCount* CTOVHandle::Get()
{
    TOV_ASSERT(IsValid());
    return m_pObject;
}

ITOVRefCount* CTOVHandle::Get() const
{
    TOV_ASSERT(IsValid());
    return m_pObject;
}

CTOVHandle::operator long() const
{
    return m_lHandle;
}

int CTOVHandle::Compare(const CTOVHandle& oOther) const
{
    if (const int nResult = CompareValues(m_lHandle, oOther.m_lHandle))
        return nResult;
    if (const int nResult = CompareValues(AddressOf(m_pObject), AddressOf(oOther.m_pObject)))
        return nResult;
    return CompareValues(AddressOf(m_pDatabase), AddressOf(oOther.m_pDatabase));
}

void CTOVHandle::Delete()
{
    Release();
}

void CTOVHandle::Release()
{
    ReleaseReference(m_pObject, m_lHandle, m_pDatabase);
}

ITOVHandleDatabase::ITOVHandleDatabase() = default;

ITOVHandleDatabase::ITOVHandleDatabase(const ITOVHandleDatabase& oOther) = default;

ITOVHandleDatabase& ITOVHandleDatabase::operator=(const ITOVHandleDatabase& oOther) = default;

CTOVHandle ITOVHandleDatabase::NewHandle(long lHandle, ITOVRefCount* pObject)
{
    return CTOVHandle(*this, lHandle, pObject);
}
