// Declares the memento pattern: ITOVMementoCreator saves its state in an ITOVMemento, and restores it from there.
#pragma once

#include <Debug/TOVBase.h>

// Holds a saved state, whose contents only its creator knows. The caller that asked for a memento owns it until it
// passes it to DisposeMemento.
class TOV_EXPORT ITOVMemento
{
public:
    // Virtual operation.
    virtual ~ITOVMemento() = 0;

    ITOVMemento();
    ITOVMemento(const ITOVMemento& oOther);
    ITOVMemento& operator=(const ITOVMemento& oOther);
};

// An object whose state can be saved and restored is called the pattern's originator. Do not delete it through this
// interface.
class TOV_EXPORT ITOVMementoCreator
{
public:
    // Virtual operations; their order is part of the exported design.

    // Saves the present state and returns it; the caller owns it.
    virtual ITOVMemento* CreateMemento() = 0;
    // Restores a state that this object has saved. The memento is unchanged and can be used again.
    virtual void RestoreMemento(const ITOVMemento& oMemento) = 0;
    // Destroys a memento that this object has created.
    virtual void DisposeMemento(ITOVMemento* pMemento) = 0;

    ITOVMementoCreator();
    ITOVMementoCreator(const ITOVMementoCreator& oOther);
    ITOVMementoCreator& operator=(const ITOVMementoCreator& oOther);
};
