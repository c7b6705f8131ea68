// What the tests of class descriptors share.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>

#include <cstdarg>
#include <functional>
#include <string>
#include <utility>

// Opens what derived classes may do.
class COpenClass : public CTOVClass
{
public:
    using CTOVClass::AddSuperClass;
    using CTOVClass::CTOVClass;
    using CTOVClass::Register;
    using CTOVClass::RemoveSuperClass;
    using CTOVClass::Unregister;

    std::string DescribeSuperClasses() const
    {
        std::string sNames;
        for (int nIndex = 0; nIndex < GetNumSuperClasses(); ++nIndex)
            sNames += GetSuperClass(nIndex).GetName();
        return sNames;
    }
};

// Does something at each line that is logged while it lives.
class CActingRecorder : public CLogRecorder
{
public:
    explicit CActingRecorder(std::function<void()> fnAction) : m_fnAction(std::move(fnAction)) {}

    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override
    {
        CLogRecorder::OnLogV(szFile, ulLine, eSeverity, szFormat, pArguments);
        m_fnAction();
    }

private:
    std::function<void()> m_fnAction;
};

inline bool IsHeld(const char* szName)
{
    return CTOVClassServer::Instance().HasClass(CTOVStringA(szName));
}

inline long GetNumHeld()
{
    return CTOVClassServer::Instance().GetNumClasses();
}
