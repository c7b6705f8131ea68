// Declares ITOVResourceLoader, through which strings get their text by number.
#pragma once

#include <Debug/TOVBase.h>

class CTOVStringA;

// The application implements this interface: it derives a class, implements LoadString, and calls SetInstance(this)
// when the object is ready and SetInstance(NULL) before the object is destroyed. The library has no implementation,
// does not own the object and never deletes it. There is at most one loader.
//
// CTOVStringA::LoadStringResource and the assignment of a string id to a CTOVStringA ask the loader. There is no lock:
// install the loader before other threads load strings by number.
//
// The Windows headers define LoadString as a macro. Include them before this header, or undefine the macro: otherwise
// it renames LoadString in the implementation and not in the interface, or the reverse.
class TOV_EXPORT ITOVResourceLoader
{
public:
    // Virtual operation. Fills oString with the text of the id and returns true, or returns false if it cannot.
    virtual bool LoadString(long lStringId, CTOVStringA& oString) = 0;

    ITOVResourceLoader();
    ITOVResourceLoader(const ITOVResourceLoader& oOther);
    ITOVResourceLoader& operator=(const ITOVResourceLoader& oOther); // nothing to copy

    // Returns the installed loader. Throws unless "m_pInstance != NULL".
    static ITOVResourceLoader& Instance();

protected:
    // Installs a loader. Throws unless "m_pInstance == NULL". NULL removes the installed loader and does not throw.
    static void SetInstance(ITOVResourceLoader* pInstance);
    // Does the same as Instance.
    static ITOVResourceLoader* GetInstance();

    static ITOVResourceLoader* m_pInstance; // not owned; null until SetInstance is called
};
