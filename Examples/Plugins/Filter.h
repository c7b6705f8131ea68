// Declares IFilter, which every plug-in implements, and CreatePlugin, which it exports.
#pragma once

#include <TOVDesignPatterns/TOVRefCount.h>
#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>
#include <TOVString/TOVStringA.h>

// Changes a text. The program has the one descriptor of this class, and a plug-in finds it by its name: a second
// descriptor would take the name along when its plug-in is unloaded.
class IFilter : public CTOVRefCount
{
public:
    // A plug-in's class implements this one and GetRuntimeClass.
    virtual CTOVStringA Apply(const CTOVStringA& oText) const = 0;

    const CTOVClass& GetRuntimeClass() const override = 0;
    bool IsInstanceOf(const CTOVClass& oClass) const override { return GetRuntimeClass() == oClass; }
    bool IsKindOf(const CTOVClass& oClass) const override { return GetRuntimeClass().IsKindOf(oClass); }
    void* QueryInterface(const CTOVClass& oClass) override
    {
        return oClass == GetClass() ? this : CTOVRefCount::QueryInterface(oClass);
    }

    static const CTOVClass& GetClass() { return TOVRuntimeClass("IFilter"); }
};

// Returns a new object, with the one reference that the caller has to release.
extern "C" TOV_PROGRAM_EXPORT ITOVRefCount* CreatePlugin();
