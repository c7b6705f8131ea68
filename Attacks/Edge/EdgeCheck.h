// Passes exceptions and memory over the edges of modules, in both directions.
#pragma once

#include "EdgeKinds.h"
#include "Threads/ThreadLoad.h"

// Each side throws every exception, and the other one catches it: directly, out of a function of the library that has
// called the throwing one, and on another thread.
void CheckExceptions(const sEdgeException* pOther, CThreadReport& oReport);

// Each side makes objects of every kind, and the other one releases them, on the same thread and on another one.
void CheckMemory(const sEdgeKind* pOther, int nRounds, CThreadReport& oReport);
