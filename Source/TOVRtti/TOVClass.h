// Declares CTOVClass, the descriptor of a class in the library's own runtime type information.
#pragma once

#include <TOVString/TOVStringA.h>

#include <vector>

// Describes a class: its name, its id and up to four direct super classes. The constructor registers it in the class
// server. Classes are identified by their ids: two descriptors with the same id describe the same class, and a second
// descriptor with the same name receives the id of the first. Ids are consecutive and begin at 0, in the order of
// construction. They differ from run to run and must not be stored.
//
// A class has a descriptor if it has these members. Each body is one line; a class without interfaces needs no
// QueryInterface.
//
//   static const CTOVClass& GetClass();                             the class's descriptor
//   virtual const CTOVClass& GetRuntimeClass() const;               the same
//   virtual bool IsInstanceOf(const CTOVClass& oClass) const;       GetClass() == oClass
//   virtual bool IsKindOf(const CTOVClass& oClass) const;           GetClass().IsKindOf(oClass)
//   virtual void* QueryInterface(const CTOVClass& oClass);          this for its own class; else the first result of a
//                                                                   base, in order, that is not null; else null
//
// The descriptor is a static object _s_oClass. An interface, or a class without a source file, defines it inside
// GetClass(): the first call constructs it, after the descriptors of the bases. A class with a source file has it as a
// static data member.
//
// Copies share the name, the id and the list of super classes. Use a copy only to print its values: its destructor
// removes the class from the server, which identifies a class by name alone. The text of the name lives as long as any
// descriptor that shares it.
//
// The class has no lock: construct descriptors during start-up or on one thread.
class TOV_EXPORT CTOVClass
{
public:
    // Virtual operation. Removes whatever class is registered under this name from the server. Also removes this object
    // if it is registered under another name. Allocates nothing. If a listener throws when the removal is logged, the
    // exception reaches the caller, and this object has been removed all the same. Where destructors must not throw,
    // neither derive from this class nor hold it as a member.
    virtual ~CTOVClass() noexcept(false);

    // Copies the name, keeps the super classes that are not null, in argument order, and registers the descriptor. It
    // does not own the super classes. Throws unless "szClassName != NULL".
    CTOVClass(const char* szClassName, const CTOVClass* pSuper1 = 0, const CTOVClass* pSuper2 = 0,
              const CTOVClass* pSuper3 = 0, const CTOVClass* pSuper4 = 0);
    CTOVClass(const CTOVClass& oOther);
    CTOVClass& operator=(const CTOVClass& oOther);

    // These return the name as a text or as a string. Call GetName where both conversions are possible, as in an
    // assignment to a string.
    const char* GetName() const;
    operator const char*() const;
    operator CTOVStringA() const;
    unsigned long GetClassId() const;

    // These return how many direct super classes there are, and whether there is any.
    int GetNumSuperClasses() const;
    bool HasSuperClasses() const;
    // Throws unless "(0 <= nSuperClass) && (nSuperClass < GetNumSuperClasses())".
    const CTOVClass& GetSuperClass(int nSuperClass) const;

    // These compare the ids.
    bool operator==(const CTOVClass& oOther) const;
    bool operator!=(const CTOVClass& oOther) const;
    bool IsInstanceOf(const CTOVClass& oOther) const;
    // Returns whether oOther is this class or one of its direct or indirect super classes. The search is depth first,
    // in list order.
    bool IsKindOf(const CTOVClass& oOther) const;

    // Returns the descriptor named "<invalid class>", which means that there is no class. The third step of the
    // library's start-up constructs it.
    static const CTOVClass& Invalid();

protected:
    // Registers this descriptor in the server under its name, and keeps the id that the server returns.
    void Register();
    // Removes this name from the server if this descriptor has an id. Keeps the id.
    void Unregister();

    // Adds a class to the list, even one that is already in it.
    void AddSuperClass(const CTOVClass& oClass);
    // Removes the entries that point to this very object. Settled: the entry after a removed one is skipped, so that
    // one of two equal neighbours remains.
    void RemoveSuperClass(const CTOVClass& oClass);

private:
    friend class CTOVClassServer;

    // One block holds the number of descriptors that share the text, and the text:  | owners | n | a | m | e | 0 |
    static char* NewName(const char* szName);
    static char* ShareName(char* szName);
    static void ReleaseName(char* szName);

    static const CTOVClass _s_oInvalid;

    char* m_szName;
    unsigned long m_dwClassId;
    bool m_bRegistered; // Settled: it is always false and nothing reads it, but the layout of the object is given.
    std::vector<const CTOVClass*> m_aSuperClasses;
};
