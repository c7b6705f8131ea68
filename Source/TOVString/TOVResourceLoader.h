// The hook through which strings get their text by number.
#pragma once

#include <Debug/TOVBase.h>

class CTOVStringA;

// The application implements this interface: it derives a class, implements LoadString, and calls SetInstance(this)
// when the object is ready and SetInstance(NULL) when it ends. The library has no implementation, does not own the
// object and never deletes it. There is never more than one loader.
//
// CTOVStringA::LoadStringResource and the assignment of a string id to a CTOVStringA ask the loader. No lock: install
// it before threads use strings by number.
//
// LoadString is also a macro of the Windows headers. Include them before this header, or undefine the macro, so that
// the interface and its implementation are both renamed or neither is.
class TOV_EXPORT ITOVResourceLoader
{
public:
    // Virtual operation. Fills oString with the text of the id and returns true, or returns false if it cannot.
    virtual bool LoadString(long lStringId, CTOVStringA& oString) = 0;

    ITOVResourceLoader();
    ITOVResourceLoader(const ITOVResourceLoader& oOther);
    ITOVResourceLoader& operator=(const ITOVResourceLoader& oOther); // nothing to copy

    // The installed loader. Throws unless m_pInstance != NULL.
    static ITOVResourceLoader& Instance();

protected:
    // Installs a loader; NULL removes the installed one. Throws unless m_pInstance == NULL, except for NULL.
    static void SetInstance(ITOVResourceLoader* pInstance);
    // Does the same as Instance.
    static ITOVResourceLoader* GetInstance();

    static ITOVResourceLoader* m_pInstance; // not owned; null until SetInstance is called
};
