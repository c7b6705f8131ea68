// What the tests of class descriptors share.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>

#include <string>

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

inline bool IsHeld(const char* szName)
{
    return CTOVClassServer::Instance().HasClass(CTOVStringA(szName));
}

inline long GetNumHeld()
{
    return CTOVClassServer::Instance().GetNumClasses();
}
