// Declares CPluginDatabase, which loads plug-ins and unloads each when its last handle is gone.
#pragma once

#include "Filter.h"
#include "Module.h"

#include <TOVDesignPatterns/TOVHandle.h>

#include <map>
#include <memory>
#include <stdexcept>

class CPluginError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Knows each plug-in by a number. A handle holds a reference to the plug-in's object; when the last one goes, so does
// the object, and then its code. The database must outlive its handles.
class CPluginDatabase : public ITOVHandleDatabase
{
public:
    // These return the empty handle if there is no such plug-in.
    CTOVHandle GetHandle(long lHandle) override;
    CTOVHandle GetHandle(ITOVRefCount* pObject) override;

    // Unloads the plug-in whose object is gone. The last handle calls it.
    void RemoveHandle(long lHandle) override;

    // Throws CPluginError if the file cannot be loaded, is no plug-in, or has an object that is no filter. After any
    // exception, nothing is left of the plug-in.
    CTOVHandle Load(const char* szFile);

    int GetNumPlugins() const { return static_cast<int>(m_aPlugins.size()); }

private:
    struct sPlugin
    {
        std::unique_ptr<CModule> pModule;
        ITOVRefCount* pObject = nullptr; // belongs to the handles
    };

    std::map<long, sPlugin> m_aPlugins;
    long m_lNextHandle = 0;
};

// Returns the filter of a valid handle of the database.
IFilter& FilterOf(const CTOVHandle& oHandle);
