// Declares CTOVClassServer, the registry of runtime classes.
#pragma once

#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVString/TOVStringA.h>

#include <map>
#include <type_traits>

class CTOVClass;

// Maps names to descriptors and assigns class ids, beginning at 0. Descriptors register and unregister themselves; the
// server does not own them. Names are case-sensitive and compared bytewise. The process's server finds a class that it
// holds in constant time; every other look-up is one search in an ordered map. The server has no lock: register and
// unregister classes during start-up and at the end of the process, or on one thread. A listener may add and remove
// classes while the server logs.
class TOV_EXPORT CTOVClassServer
{
public:
    // Virtual operation. The destructor of the process's server unregisters the remaining descriptors; that of a copy
    // does not. An exception that a listener throws meanwhile reaches the caller.
    virtual ~CTOVClassServer() noexcept(false);

    CTOVClassServer();
    // These copy the map and the counter. They are not meant to be used.
    CTOVClassServer(const CTOVClassServer& oOther);
    CTOVClassServer& operator=(const CTOVClassServer& oOther);

    // Returns the process's server, which the first call creates.
    static CTOVClassServer& Instance();

    // Registers a descriptor under a name and returns its new id. If the name is already registered, a warning is
    // logged, the map is unchanged, no id is used up, and the result is the id of the registered descriptor.
    // Throws unless "pClass != NULL", then "m_dwNextClassId != -1"; and std::bad_alloc, with the map unchanged, but
    // the id used up.
    unsigned long AddClass(const CTOVStringA& oName, CTOVClass* pClass);

    // Removes a name. Its descriptor is not notified and keeps its id. An unknown name is ignored.
    void RemoveClass(const CTOVStringA& oName);

    // These return whether a name is registered, and the number of registered names.
    bool HasClass(const CTOVStringA& oName) const;
    long GetNumClasses() const;

    // These iterate over the names in map order. They return false at the end, with the result unchanged; GetNextClass
    // also does so for an unknown name. Each step searches again, so that other classes may be removed meanwhile.
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

    // Removes the name of a descriptor that is being destroyed from the process's server, if that still exists, and
    // every other entry of the descriptor, even if a listener throws meanwhile. Allocates nothing.
    static void ForgetClass(const CTOVClass* pClass);

    // Returns the map's address as log lines show it, in 32 bits.
    unsigned int GetMapNumber() const;

    std::map<CTOVStringA, sClassEntry> m_oClasses;
    unsigned long m_dwNextClassId;
};

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVClassServer>;

// Returns the class of this name, or CTOVClass::Invalid() if there is none.
TOV_EXPORT const CTOVClass& TOVRuntimeClass(const CTOVStringA& oName);

// Does the same for a text, of which it makes a string only if the text is a string id or names no class.
TOV_EXPORT const CTOVClass& TOVRuntimeClassOfText(const char* szName);

// A template takes characters alone, so that an object that converts to a string and to characters still becomes a
// string.
template<class TCharacter, std::enable_if_t<std::is_same_v<std::remove_cv_t<TCharacter>, char>, int> = 0>
inline const CTOVClass& TOVRuntimeClass(TCharacter* szName)
{
    return TOVRuntimeClassOfText(szName);
}
