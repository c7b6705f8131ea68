#include "PluginDatabase.h"

namespace
{
typedef ITOVRefCount* (*tCreatePlugin)();

struct sRelease
{
    void operator()(ITOVRefCount* pObject) const { pObject->Release(); }
};

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
    // The entry comes first, so that the object is released before its code is unloaded, and that nothing needs memory
    // once the handle counts.
    std::map<long, sPlugin> aLoaded;
    sPlugin& oPlugin = aLoaded[m_lNextHandle];
    oPlugin.pModule = std::make_unique<CModule>(szFile);
    if (!oPlugin.pModule->IsLoaded())
        throw CPluginError("cannot be loaded");
    const auto fnCreate = reinterpret_cast<tCreatePlugin>(oPlugin.pModule->Find("CreatePlugin"));
    if (fnCreate == nullptr)
        throw CPluginError("is no plug-in");

    // The reference with which it was made: after this function the handles have all.
    const std::unique_ptr<ITOVRefCount, sRelease> pObject(fnCreate());
    if (AskForFilter(pObject.get()) == nullptr)
        throw CPluginError(std::string("is no filter but a ") + pObject->GetRuntimeClass().GetName());
    oPlugin.pObject = pObject.get();
    m_aPlugins.merge(aLoaded);
    return NewHandle(m_lNextHandle++, pObject.get());
}

IFilter& FilterOf(const CTOVHandle& oHandle)
{
    return *AskForFilter(oHandle.Get());
}
