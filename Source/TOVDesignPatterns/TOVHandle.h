// A counted reference to an object that a database knows by number: CTOVHandle, ITOVHandleDatabase.
#pragma once

#include <Debug/TOVBase.h>

class ITOVHandleDatabase;
class ITOVRefCount;

// Names an object by its id in a database, and holds one reference to it. When the last handle lets go, the database is
// told to forget the id. Does not own the database. No lock: one thread at a time.
//
// A handle is empty, or valid with a reference. Each copy costs one AddRef.
class TOV_EXPORT CTOVHandle
{
public:
    // Virtual operation. Does the same as Delete, but lets out nothing that the object or the database throws.
    virtual ~CTOVHandle();

    // No object, no database, id -1.
    CTOVHandle();
    // Empty, on this database; then, if there is an object, or the id is not -1, what the database has for it.
    CTOVHandle(ITOVHandleDatabase& oDatabase, ITOVRefCount* pObject);
    CTOVHandle(ITOVHandleDatabase& oDatabase, long lHandle);
    CTOVHandle(const CTOVHandle& oOther);

    // Counts the source's object and takes its members before it lets go of its own, so that a handle can walk a list,
    // whose next handle dies with its element. When letting go throws, the handle has the new object already.
    // Settled: lets go only if it is valid, so that one with an object but without an id keeps a reference for ever. A
    // last handle that is assigned to itself destroys its object and is left without one.
    const CTOVHandle& operator=(const CTOVHandle& oOther);

    // What the database has for an id, or for an object. Both throw unless "m_pDatabase != NULL".
    const CTOVHandle& operator=(long lHandle);
    const CTOVHandle& operator=(ITOVRefCount* pObject);

    // The empty handle.
    static const CTOVHandle& Null();

    // Whether it has an object, a database, and an id that is not -1.
    bool IsValid() const;

    // The object. Throws unless "IsValid()".
    ITOVRefCount* Get();
    ITOVRefCount* Get() const;

    // The id.
    operator long() const;

    // -1, 0 or 1: by the id, then the object's, then the database's address.
    int Compare(const CTOVHandle& oOther) const;

    // Gives the reference up, and tells the database if it was the last. Settled: the handle keeps its members and lets
    // go once more at its end, so that one on which Delete ran is dead: do not use it, nor let it end while the object
    // may be gone.
    void Delete();

protected:
    friend class ITOVHandleDatabase;

    // Adds a reference, if there is an object.
    CTOVHandle(ITOVHandleDatabase& oDatabase, long lHandle, ITOVRefCount* pObject);

private:
    void Release();

    ITOVRefCount* m_pObject;
    long m_lHandle; // -1 for none
    ITOVHandleDatabase* m_pDatabase;
};

// Gives objects their ids, and finds them. Applications implement it: how ids are given out, and what an unknown id or
// object yields, is theirs to decide. It is not deleted through this interface. No lock.
class TOV_EXPORT ITOVHandleDatabase
{
public:
    // Virtual operations; their order is part of the exported design.

    // The handle for an id, and for an object.
    virtual CTOVHandle GetHandle(long lHandle) = 0;
    virtual CTOVHandle GetHandle(ITOVRefCount* pObject) = 0;

protected:
    // A handle on this database, for the implementation of the two above.
    virtual CTOVHandle NewHandle(long lHandle, ITOVRefCount* pObject);

public:
    // The last reference has gone, and the object with it: only the id may be used.
    virtual void RemoveHandle(long lHandle) = 0;

    ITOVHandleDatabase();
    ITOVHandleDatabase(const ITOVHandleDatabase& oOther);
    ITOVHandleDatabase& operator=(const ITOVHandleDatabase& oOther);
};
