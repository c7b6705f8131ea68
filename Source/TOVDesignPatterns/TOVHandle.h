// Declares CTOVHandle, a counted reference to an object that a database knows by a number, and ITOVHandleDatabase.
#pragma once

#include <Debug/TOVBase.h>

class ITOVHandleDatabase;
class ITOVRefCount;

// Identifies an object by its id in a database, and holds one reference to the object. When the last handle releases
// its reference, the database is asked to remove the id. A handle does not own the database. It has no lock: use it
// from one thread at a time.
//
// A handle is either empty, or valid and holds a reference. Each copy costs one AddRef.
class TOV_EXPORT CTOVHandle
{
public:
    // Virtual operation. Does the same as Delete, but catches what the object or the database throws.
    virtual ~CTOVHandle();

    // Makes a handle without an object or a database, with id -1.
    CTOVHandle();
    // These make an empty handle on this database. If pObject is not null, or lHandle is not -1, they then assign what
    // the database returns for it.
    CTOVHandle(ITOVHandleDatabase& oDatabase, ITOVRefCount* pObject);
    CTOVHandle(ITOVHandleDatabase& oDatabase, long lHandle);
    CTOVHandle(const CTOVHandle& oOther);

    // Counts the source's object and copies the source's members before it releases its own object. A handle can
    // therefore walk a list in which each element owns the handle of the next one. If the release throws, the handle
    // already has the new object.
    // Settled: only a valid handle releases its object; one with an object but without an id keeps its reference for
    // ever. If the last handle of an object is assigned to itself, the object is destroyed, and the handle has no
    // object any more.
    const CTOVHandle& operator=(const CTOVHandle& oOther);

    // These assign what the database returns for an id, or for an object. They throw unless "m_pDatabase != NULL".
    const CTOVHandle& operator=(long lHandle);
    const CTOVHandle& operator=(ITOVRefCount* pObject);

    // Returns the shared empty handle.
    static const CTOVHandle& Null();

    // Returns whether this handle has an object, a database, and an id that is not -1.
    bool IsValid() const;

    // Returns the object. Throws unless "IsValid()".
    ITOVRefCount* Get();
    ITOVRefCount* Get() const;

    // Returns the id.
    operator long() const;

    // Returns -1, 0 or 1. It compares the ids, then the addresses of the objects, then those of the databases.
    int Compare(const CTOVHandle& oOther) const;

    // Releases the reference. If it was the object's last one, the database is asked to remove the id. Settled: the
    // handle keeps its members, and the destructor releases the reference a second time. After Delete, therefore,
    // neither use nor destroy this handle while the object may be gone.
    void Delete();

protected:
    friend class ITOVHandleDatabase;

    // Adds a reference if pObject is not null.
    CTOVHandle(ITOVHandleDatabase& oDatabase, long lHandle, ITOVRefCount* pObject);

private:
    void Release();

    ITOVRefCount* m_pObject;
    long m_lHandle; // -1: no id
    ITOVHandleDatabase* m_pDatabase;
};

// Assigns ids to objects and finds the objects. Applications implement it: they decide how ids are assigned, and what
// an unknown id or object yields. Do not delete a database through this interface. It has no lock.
class TOV_EXPORT ITOVHandleDatabase
{
public:
    // Virtual operations; their order is part of the exported design.

    // These return the handle for an id, or for an object.
    virtual CTOVHandle GetHandle(long lHandle) = 0;
    virtual CTOVHandle GetHandle(ITOVRefCount* pObject) = 0;

protected:
    // Makes a handle on this database, for the implementation of GetHandle.
    virtual CTOVHandle NewHandle(long lHandle, ITOVRefCount* pObject);

public:
    // Called when the last reference has been released and the object is gone: only the id may be used.
    virtual void RemoveHandle(long lHandle) = 0;

    ITOVHandleDatabase();
    ITOVHandleDatabase(const ITOVHandleDatabase& oOther);
    ITOVHandleDatabase& operator=(const ITOVHandleDatabase& oOther);
};
