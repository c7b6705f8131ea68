// The library's own runtime type information: CTOVClass describes one class.
#pragma once

#include <TOVString/TOVStringA.h>

#include <vector>

// Descriptor of a class: name, id, up to four direct super classes. It registers itself in the class server when it is
// constructed. Identity of classes is identity of ids: descriptors with the same id are the same class, and a second
// descriptor of a name gets the id of the first. Ids are dense, begin at 0 in the order of construction, differ from
// run to run and may not be stored.
//
// A class takes part by carrying these members. Each body is one line; a class without interfaces needs no
// QueryInterface.
//
//   static const CTOVClass& GetClass();                             the class's descriptor
//   virtual const CTOVClass& GetRuntimeClass() const;               the same
//   virtual bool IsInstanceOf(const CTOVClass& oClass) const;       GetClass() == oClass
//   virtual bool IsKindOf(const CTOVClass& oClass) const;           GetClass().IsKindOf(oClass)
//   virtual void* QueryInterface(const CTOVClass& oClass);          this for the own class; else each base's answer in
//                                                                   base order; else NULL
//
// The descriptor is a static _s_oClass: inside GetClass() for interfaces and classes without a source file, where it
// comes to life at the first call, after those of its bases; or a data member of a class that has one.
//
// Copies share the name, the id and the list, and are for printing values only: the death of a copy removes the class
// from the server, as that goes by name alone. The text of the name lives as long as any descriptor that shares it.
//
// No lock: descriptors come to life during start-up or on one thread.
class TOV_EXPORT CTOVClass
{
public:
    // Virtual operation. Removes whatever class holds this name from the server. The server does not keep this object
    // under another name either. Allocates nothing. What a listener throws at the log line of the removal goes through,
    // and the server has forgotten this object all the same; so do not derive from this class, and do not hold it as a
    // member, where destructors must not throw.
    virtual ~CTOVClass() noexcept(false);

    // Copies the name, takes the super classes that are not NULL, in argument order, and registers. The super classes
    // are not owned. Throws unless szClassName != NULL.
    CTOVClass(const char* szClassName, const CTOVClass* pSuper1 = 0, const CTOVClass* pSuper2 = 0,
              const CTOVClass* pSuper3 = 0, const CTOVClass* pSuper4 = 0);
    CTOVClass(const CTOVClass& oOther);
    CTOVClass& operator=(const CTOVClass& oOther);

    // The name, and a string of it. Where a text and a string will both do, as in an assignment to a string, say
    // GetName.
    const char* GetName() const;
    operator const char*() const;
    operator CTOVStringA() const;
    unsigned long GetClassId() const;

    int GetNumSuperClasses() const;
    bool HasSuperClasses() const;
    // Throws unless "(0 <= nSuperClass) && (nSuperClass < GetNumSuperClasses())".
    const CTOVClass& GetSuperClass(int nSuperClass) const;

    // Whether both are the same class.
    bool operator==(const CTOVClass& oOther) const;
    bool operator!=(const CTOVClass& oOther) const;
    bool IsInstanceOf(const CTOVClass& oOther) const;
    // Whether the other is this class or one of its super classes, near or far: depth first, in list order.
    bool IsKindOf(const CTOVClass& oOther) const;

    // The descriptor named "<invalid class>", which stands where there is no class. Alive from the third
    // step of the library's start-up on.
    static const CTOVClass& Invalid();

protected:
    // Enters this descriptor in the server under its name, and takes the id that the server gives.
    void Register();
    // Removes this name from the server, if there is an id. Keeps the id.
    void Unregister();

    // The list takes the same class repeatedly.
    void AddSuperClass(const CTOVClass& oClass);
    // Removes the entries of this very object. Settled: the entry behind a removed one is skipped, so that of two equal
    // neighbours one remains.
    void RemoveSuperClass(const CTOVClass& oClass);

private:
    friend class CTOVClassServer;

    // The text stands behind the number of descriptors that share it, in one block:  | owners | n | a | m | e | 0 |
    static char* NewName(const char* szName);
    static char* ShareName(char* szName);
    static void ReleaseName(char* szName);

    static const CTOVClass _s_oInvalid;

    char* m_szName;
    unsigned long m_dwClassId;
    bool m_bRegistered; // false, and nothing reads it
    std::vector<const CTOVClass*> m_aSuperClasses;
};
