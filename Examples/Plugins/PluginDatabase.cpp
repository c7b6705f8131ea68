#include "PluginDatabase.h"

namespace
{
typedef ITOVRefCount* (*tCreatePlugin)();

IFilter* AskForFilter(ITOVRefCount* pObject)
{
    return static_cast<IFilter*>(pObject->QueryInterface(IFilter::GetClass()));
}
} // namespace

CTOVHandle CPluginDatabase::GetHandle(long lHandle)
{
    const auto oFound = m_aPlugins.find(lHandle);
    return oFound != m_aPlugins.end() ? NewHandle(lHandle, oFound->second.pObject) : CTOVHandle::Null();
}

CTOVHandle CPluginDatabase::GetHandle(ITOVRefCount* pObject)
{
    for (const auto& [lHandle, oPlugin] : m_aPlugins)
    {
        if (oPlugin.pObject == pObject)
            return NewHandle(lHandle, pObject);
    }
    return CTOVHandle::Null();
}

void CPluginDatabase::RemoveHandle(long lHandle)
{
    m_aPlugins.erase(lHandle);
}

CTOVHandle CPluginDatabase::Load(const char* szFile)
{
    auto pModule = std::make_unique<CModule>(szFile);
    if (!pModule->IsLoaded())
        throw CPluginError("cannot be loaded");
    const auto fnCreate = reinterpret_cast<tCreatePlugin>(pModule->Find("CreatePlugin"));
    if (fnCreate == nullptr)
        throw CPluginError("is no plug-in");

    ITOVRefCount* const pObject = fnCreate();
    if (AskForFilter(pObject) == nullptr)
    {
        const std::string sClass = pObject->GetRuntimeClass().GetName();
        pObject->Release();
        throw CPluginError("is no filter but a " + sClass);
    }
    const long lHandle = m_lNextHandle++;
    m_aPlugins[lHandle] = {std::move(pModule), pObject};
    const CTOVHandle oHandle = NewHandle(lHandle, pObject);
    pObject->Release(); // the reference with which it was made: from here on the handles have all
    return oHandle;
}

IFilter& FilterOf(const CTOVHandle& oHandle)
{
    return *AskForFilter(oHandle.Get());
}
