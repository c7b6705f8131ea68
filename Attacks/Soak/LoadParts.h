// The parts of the mixed load that one thread runs in turn. Each leaves nothing behind.
#pragma once

#include "Threads/ThreadLoad.h"

struct sLoadPart
{
    const char* szName;
    void (*fnRun)(CThreadReport& oReport);
};

// An array that ends with a null name.
extern const sLoadPart LOAD_PARTS[];

void RunTexts(CThreadReport& oReport);
void RunPaths(CThreadReport& oReport);
void RunContainers(CThreadReport& oReport);
void RunNamedFiles(CThreadReport& oReport);
void RunStreams(CThreadReport& oReport);
void RunSharedObjects(CThreadReport& oReport);
void RunClasses(CThreadReport& oReport);
void RunListeners(CThreadReport& oReport);
void RunTimer(CThreadReport& oReport);
void RunConditions(CThreadReport& oReport);
