// What the system knows of this process. Each system has its own source.
#pragma once

struct sProcessState
{
    long lResidentKb;     // memory of its own that is in use; 0 where the system does not tell
    long lProportionalKb; // the same with its share of what it has in common with others; 0 as above
    long lHandles;        // open descriptors or handles; 0 as above
    long lThreads;
};

sProcessState ReadProcessState();
