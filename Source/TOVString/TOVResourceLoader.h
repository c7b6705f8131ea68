// The hook through which strings get their text by number.
#pragma once

#include <Debug/TOVBase.h>

class CTOVStringA;

// Declared here and implemented by the application: derive, implement LoadString, and call SetInstance(this) when the
// object is ready and SetInstance(NULL) when it ends. The library has no implementation, does not own the object and
// never deletes it. Two loaders never stand side by side.
//
// Asked by CTOVStringA::LoadStringResource and by assigning a string id to a CTOVStringA. No lock: install the loader
// before threads use strings by number.
//
// LoadString is also a macro of the Windows headers: include them above this header or undefine it, so that the
// interface and its implementation are both renamed or both not.
class TOV_EXPORT ITOVResourceLoader
{
public:
    // Virtual operation: fills oString with the text of the id; true if done.
    virtual bool LoadString(long lStringId, CTOVStringA& oString) = 0;

    ITOVResourceLoader();
    ITOVResourceLoader(const ITOVResourceLoader& oOther);
    ITOVResourceLoader& operator=(const ITOVResourceLoader& oOther); // nothing to copy

    // The installed loader. Throws unless m_pInstance != NULL.
    static ITOVResourceLoader& Instance();

protected:
    // Installs a loader, or none for NULL. Throws unless m_pInstance == NULL, except for NULL.
    static void SetInstance(ITOVResourceLoader* pInstance);
    // As Instance.
    static ITOVResourceLoader* GetInstance();

    static ITOVResourceLoader* m_pInstance; // not owned; NULL at load
};
