// What one module makes and another one releases, by kinds. The program and a library that it loads contain the same
// source, so that each has its own copy of whatever the compiler makes of the templates.
#pragma once

#include <Debug/TOVCompiler.h>

// The made object shows the number.
struct sEdgeKind
{
    const char* szName;
    void* (*fnMake)(int nNumber);
    // Returns whether the object is as it was made, and releases it.
    bool (*fnRelease)(void* pObject, int nNumber);
};

// An exception: what throws it, and what catches it by its own type, with the values that it must have.
struct sEdgeException
{
    const char* szType;
    bool bThrownByLibrary; // else only applications throw it, or a module of theirs
    void (*fnThrow)();
    // Calls the function and returns whether it throws this exception.
    bool (*fnCatch)(void (*fnCall)());
};

// Arrays that end with a null name.
extern const sEdgeKind EDGE_KINDS[];
extern const sEdgeException EDGE_EXCEPTIONS[];

// What the other module exports: its own arrays.
extern "C"
{
TOV_PROGRAM_EXPORT const sEdgeKind* GetEdgeKinds();
TOV_PROGRAM_EXPORT const sEdgeException* GetEdgeExceptions();
}
