// The memento pattern: ITOVMemento holds a state that ITOVMementoCreator made and takes back.
#pragma once

#include <Debug/TOVBase.h>

// A saved state, of which only its creator knows what it holds. Owned by whoever asked for it, until it is disposed of.
class TOV_EXPORT ITOVMemento
{
public:
    // Virtual operation.
    virtual ~ITOVMemento() = 0;

    ITOVMemento();
    ITOVMemento(const ITOVMemento& oOther);
    ITOVMemento& operator=(const ITOVMemento& oOther);
};

// An object whose state can be saved and restored (the pattern's originator). Not deleted through this interface.
class TOV_EXPORT ITOVMementoCreator
{
public:
    // Virtual operations; their order is part of the exported design.

    // The present state, for the caller to keep.
    virtual ITOVMemento* CreateMemento() = 0;
    // Takes a state on that this object has given out. The memento stays as it is, and can be used again.
    virtual void RestoreMemento(const ITOVMemento& oMemento) = 0;
    // Ends a memento that this object has given out.
    virtual void DisposeMemento(ITOVMemento* pMemento) = 0;

    ITOVMementoCreator();
    ITOVMementoCreator(const ITOVMementoCreator& oOther);
    ITOVMementoCreator& operator=(const ITOVMementoCreator& oOther);
};
