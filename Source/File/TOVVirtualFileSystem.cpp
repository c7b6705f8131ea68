#include <File/TOVVirtualFileSystem.h>

#include <File/TOVOwnPath.h>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVVirtualFileSystem>;

namespace
{
constexpr int MIN_NAME_LENGTH = 2;
} // namespace

ITOVVirtualFileSystem::ITOVVirtualFileSystem() = default;
ITOVVirtualFileSystem::ITOVVirtualFileSystem(const ITOVVirtualFileSystem& oOther) = default;
ITOVVirtualFileSystem& ITOVVirtualFileSystem::operator=(const ITOVVirtualFileSystem& oOther) = default;

const CTOVClass& ITOVVirtualFileSystem::GetClass()
{
    static CTOVClass _s_oClass("ITOVVirtualFileSystem");
    return _s_oClass;
}

const CTOVClass& ITOVVirtualFileSystem::GetRuntimeClass() const
{
    return GetClass();
}

void* ITOVVirtualFileSystem::QueryInterface(const CTOVClass& oClass)
{
    return oClass == GetClass() ? this : nullptr;
}

bool ITOVVirtualFileSystem::IsInstanceOf(const CTOVClass& oClass) const
{
    return GetClass() == oClass;
}

bool ITOVVirtualFileSystem::IsKindOf(const CTOVClass& oClass) const
{
    return GetClass().IsKindOf(oClass);
}

CTOVVirtualFileSystem::Exception::Exception(unsigned short usErrorCode) : CTOVException(eClassFile, usErrorCode)
{
}

CTOVVirtualFileSystem::Exception::Exception(const Exception& oOther) = default;

CTOVVirtualFileSystem::Exception& CTOVVirtualFileSystem::Exception::operator=(const Exception& oOther) = default;

CTOVVirtualFileSystem::CTOVVirtualFileSystem() = default;

CTOVVirtualFileSystem::CTOVVirtualFileSystem(const CTOVVirtualFileSystem& oOther) = default;

CTOVVirtualFileSystem& CTOVVirtualFileSystem::operator=(const CTOVVirtualFileSystem& oOther) = default;

CTOVVirtualFileSystem::~CTOVVirtualFileSystem() = default;

CTOVVirtualFileSystem& CTOVVirtualFileSystem::Instance()
{
    return CTOVDynamicSingleton<CTOVVirtualFileSystem>::GetInstance();
}

const CTOVClass& CTOVVirtualFileSystem::GetClass()
{
    return _s_oClass;
}

const CTOVClass& CTOVVirtualFileSystem::GetRuntimeClass() const
{
    return GetClass();
}

void* CTOVVirtualFileSystem::QueryInterface(const CTOVClass& oClass)
{
    return oClass == GetClass() ? this : ITOVVirtualFileSystem::QueryInterface(oClass);
}

bool CTOVVirtualFileSystem::IsInstanceOf(const CTOVClass& oClass) const
{
    return GetClass() == oClass;
}

bool CTOVVirtualFileSystem::IsKindOf(const CTOVClass& oClass) const
{
    return GetClass().IsKindOf(oClass);
}

void CTOVVirtualFileSystem::SetAssign(const CTOVStringA& oName, const CTOVPath& oPath)
{
    if (oName.GetLength() < MIN_NAME_LENGTH || oPath.IsEmpty())
        return;

    m_oAssigns[oName] = oPath.AsString();
}

const CTOVStringA& CTOVVirtualFileSystem::GetAssign(const CTOVStringA& oName) const
{
    const auto oFound = m_oAssigns.find(oName);
    return oFound != m_oAssigns.end() ? oFound->second.AsString() : CTOVStringA::Null();
}

CTOVPath CTOVVirtualFileSystem::ResolvePath(const CTOVPath& oPath)
{
    if (oPath.IsEmpty())
        return oPath;

    const int nColon = oPath.AsString().Find(':');
    if (nColon == -1)
        return oPath;

    const CTOVStringA& oAssigned = GetAssign(oPath.AsString().Left(nColon));
    if (oAssigned.IsEmpty())
        return oPath;

    // The rest is made from the characters. Mid would count the terminator, and an empty rest would not be empty.
    CTOVPath oResolved = MakeOwnPath(oAssigned);
    oResolved.Append(CTOVPath(~oPath + nColon + 1));
    return oResolved;
}
