// The registry of runtime classes.
#pragma once

#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVString/TOVStringA.h>

#include <map>

class CTOVClass;

// Maps names to descriptors and allots class ids, from 0 on. Descriptors enter and leave by themselves; the server does
// not own them. Names are case-sensitive, compared bytewise. Each look-up is one search in an ordered map. No lock:
// registration is expected during start-up or on one thread, and so is the end. A listener may add and remove classes
// while the server logs.
class TOV_EXPORT CTOVClassServer
{
public:
    // Virtual operation. The process's server unregisters the descriptors that are left; a copy of it just goes. What a
    // listener throws meanwhile goes through.
    virtual ~CTOVClassServer() noexcept(false);

    CTOVClassServer();
    // Copy the map and the counter. Not meant to be used.
    CTOVClassServer(const CTOVClassServer& oOther);
    CTOVClassServer& operator=(const CTOVClassServer& oOther);

    // The process's server, created on first need.
    static CTOVClassServer& Instance();

    // Enters a descriptor under a name and returns its new id. A name that is held already is logged as a warning; the
    // map stays as it is, no id is used up, and the result is the id of the descriptor that holds it.
    // Throws unless pClass != NULL, then "m_dwNextClassId != -1".
    unsigned long AddClass(const CTOVStringA& oName, CTOVClass* pClass);

    // Removes a name. Its descriptor is not told and keeps its id. An unknown name is ignored.
    void RemoveClass(const CTOVStringA& oName);

    bool HasClass(const CTOVStringA& oName) const;
    long GetNumClasses() const;

    // Walk over the names in map order. Return false at the end, with the result untouched; GetNextClass also for an
    // unknown name. Each step is a fresh search, so that other classes may leave meanwhile.
    bool GetFirstClass(CTOVStringA& oName) const;
    bool GetNextClass(const CTOVStringA& oName, CTOVStringA& oNext) const;

private:
    friend class CTOVClass;
    friend TOV_EXPORT const CTOVClass& TOVRuntimeClass(const CTOVStringA& oName);

    struct sClassEntry
    {
        CTOVClass* pClass;
        unsigned long dwClassId;
    };

    CTOVClass* FindClass(const CTOVStringA& oName) const;
    unsigned long NextClassId();

    // Removes the name of a descriptor that dies from the process's server, if there still is one, and drops every
    // other entry of that descriptor, also when a listener throws meanwhile. Allocates nothing.
    static void ForgetClass(const CTOVClass* pClass);

    // The map's address as log lines show it, in 32 bits.
    unsigned int GetMapNumber() const;

    std::map<CTOVStringA, sClassEntry> m_oClasses;
    unsigned long m_dwNextClassId;
};

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVClassServer>;

// The class of this name, CTOVClass::Invalid() if there is none.
TOV_EXPORT const CTOVClass& TOVRuntimeClass(const CTOVStringA& oName);
