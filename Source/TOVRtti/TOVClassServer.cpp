#include <TOVRtti/TOVClassServer.h>

#include <Debug/TOVCheck.h>
#include <Debug/TOVDebug.h>
#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassIndex.h>
#include <TOVString/TOVStringId.h>

#include <algorithm>
#include <iterator>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVClassServer>;

namespace
{
void LogRemoval(const char* szName, unsigned int nMap)
{
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo,
                   "CTOVClassServer::RemoveClass() : Removing class %s using map %x.", szName, nMap);
}

// The names of the process's server.
CTOVClassIndex s_oIndex;

const char* TextOf(const CTOVStringA& oName)
{
    const char* const szName = oName.GetString();
    return szName != nullptr ? szName : "";
}

// Erases entries of the process's server.
template<class TMap, class TCondition> void EraseIf(TMap& oMap, const TCondition& fnCondition)
{
    for (auto oEntry = oMap.begin(); oEntry != oMap.end();)
    {
        const auto oErased = oEntry++;
        if (!fnCondition(*oErased))
            continue;
        s_oIndex.Remove(TextOf(oErased->first));
        oMap.erase(oErased);
    }
}
} // namespace

CTOVClassServer::CTOVClassServer() : m_dwNextClassId(0)
{
}

CTOVClassServer::CTOVClassServer(const CTOVClassServer& oOther) = default;

CTOVClassServer& CTOVClassServer::operator=(const CTOVClassServer& oOther)
{
    const bool bIndexed = CTOVDynamicSingleton<CTOVClassServer>::s_pInstance == this;
    if (bIndexed)
        s_oIndex.RemoveAll();
    m_oClasses = oOther.m_oClasses;
    m_dwNextClassId = oOther.m_dwNextClassId;
    if (bIndexed)
    {
        for (const auto& oEntry : m_oClasses)
            s_oIndex.Set(TextOf(oEntry.first), oEntry.second.pClass);
    }
    return *this;
}

CTOVClassServer::~CTOVClassServer() noexcept(false)
{
    // Only the process's server unregisters descriptors: the entries of a copy are not theirs to remove.
    if (CTOVDynamicSingleton<CTOVClassServer>::s_pInstance != this)
        return;

    struct sIndexEnd
    {
        ~sIndexEnd() { s_oIndex.RemoveAll(); }
    } const oIndexEnd = {};
    while (!m_oClasses.empty())
    {
        // Does what Unregister does, and needs no memory for it. Only a descriptor without an id keeps its entry.
        const std::size_t nNumClasses = m_oClasses.size();
        const CTOVClass* const pClass = m_oClasses.begin()->second.pClass;
        if (pClass->GetClassId() != 0xFFFFFFFFul)
            ForgetClass(pClass);
        if (m_oClasses.size() == nNumClasses)
        {
            s_oIndex.Remove(TextOf(m_oClasses.begin()->first));
            m_oClasses.erase(m_oClasses.begin());
        }
    }
}

CTOVClassServer& CTOVClassServer::Instance()
{
    return CTOVDynamicSingleton<CTOVClassServer>::GetInstance();
}

unsigned long CTOVClassServer::AddClass(const CTOVStringA& oName, CTOVClass* pClass)
{
    TOV_ASSERT(pClass != NULL);

    if (const CTOVClass* pHeldClass = FindClass(oName))
    {
        const unsigned long dwHeldId = pHeldClass->GetClassId(); // a listener may destroy that class
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityWarning,
                       "CTOVClassServer::AddClass() : Class %s already registered!", oName.GetString());
        return dwHeldId;
    }

    const unsigned long dwClassId = NextClassId();
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo,
                   "CTOVClassServer::AddClass() : Adding class %s(%d) using map %x.", oName.GetString(),
                   static_cast<int>(dwClassId), GetMapNumber());
    const auto oEntry = m_oClasses.insert_or_assign(oName, sClassEntry{pClass, dwClassId}).first;
    if (CTOVDynamicSingleton<CTOVClassServer>::s_pInstance == this)
        s_oIndex.Set(TextOf(oEntry->first), pClass);
    return dwClassId;
}

void CTOVClassServer::RemoveClass(const CTOVStringA& oName)
{
    if (m_oClasses.find(oName) == m_oClasses.end())
        return;

    LogRemoval(oName.GetString(), GetMapNumber());
    const auto oEntry = m_oClasses.find(oName); // searches again, as a listener may have removed the entry
    if (oEntry == m_oClasses.end())
        return;
    if (CTOVDynamicSingleton<CTOVClassServer>::s_pInstance == this)
        s_oIndex.Remove(TextOf(oEntry->first));
    m_oClasses.erase(oEntry);
}

bool CTOVClassServer::HasClass(const CTOVStringA& oName) const
{
    return FindClass(oName) != nullptr;
}

long CTOVClassServer::GetNumClasses() const
{
    return static_cast<long>(m_oClasses.size());
}

bool CTOVClassServer::GetFirstClass(CTOVStringA& oName) const
{
    if (m_oClasses.empty())
        return false;

    oName = m_oClasses.begin()->first;
    return true;
}

bool CTOVClassServer::GetNextClass(const CTOVStringA& oName, CTOVStringA& oNext) const
{
    auto oEntry = m_oClasses.find(oName);
    if (oEntry == m_oClasses.end() || ++oEntry == m_oClasses.end())
        return false;

    oNext = oEntry->first;
    return true;
}

CTOVClass* CTOVClassServer::FindClass(const CTOVStringA& oName) const
{
    if (CTOVDynamicSingleton<CTOVClassServer>::s_pInstance == this)
    {
        if (CTOVClass* const pClass = s_oIndex.Find(TextOf(oName)))
            return pClass;
    }
    const auto oEntry = m_oClasses.find(oName);
    return oEntry != m_oClasses.end() ? oEntry->second.pClass : nullptr;
}

unsigned long CTOVClassServer::NextClassId()
{
    // The value -1, in 32 bits, marks a descriptor without an id.
    TOV_ASSERT_TEXT(m_dwNextClassId != 0xFFFFFFFFul, "m_dwNextClassId != -1");
    return m_dwNextClassId++;
}

void CTOVClassServer::ForgetClass(const CTOVClass* pClass)
{
    CTOVClassServer* const pServer = CTOVDynamicSingleton<CTOVClassServer>::s_pInstance;
    if (pServer == nullptr)
        return;

    struct sDrop
    {
        CTOVClassServer& oServer;
        const CTOVClass* const pClass;
        ~sDrop()
        {
            EraseIf(oServer.m_oClasses, [this](const auto& oEntry) { return oEntry.second.pClass == pClass; });
        }
    } const oDrop = {*pServer, pClass};

    // The search compares the text, as making a string of it would allocate memory.
    const auto IsNamed = [szName = pClass->GetName()](const auto& oEntry) { return oEntry.first == szName; };
    if (std::none_of(pServer->m_oClasses.begin(), pServer->m_oClasses.end(), IsNamed))
        return;

    LogRemoval(pClass->GetName(), pServer->GetMapNumber());
    EraseIf(pServer->m_oClasses, IsNamed);
}

unsigned int CTOVClassServer::GetMapNumber() const
{
    return static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(&m_oClasses));
}

const CTOVClass& TOVRuntimeClass(const CTOVStringA& oName)
{
    if (const CTOVClass* const pHeldClass = s_oIndex.Find(TextOf(oName)))
        return *pHeldClass;
    const CTOVClass* const pClass = CTOVClassServer::Instance().FindClass(oName);
    return pClass != nullptr ? *pClass : CTOVClass::Invalid();
}

const CTOVClass& TOVRuntimeClassOfText(const char* szName)
{
    // Only a string can load the text of an id.
    if (IsText(szName))
    {
        if (const CTOVClass* const pClass = s_oIndex.Find(szName))
            return *pClass;
    }
    return TOVRuntimeClass(CTOVStringA(szName));
}
