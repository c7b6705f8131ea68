// A layer between the library and the system that can let any call fail. It is a shared library of its own, which comes
// before all others where a program and its libraries look for the functions of the system. If the variable
// TOV_FAULT_FIGURES names a file, it gets a line "site|function|offset" for each place of the library whose call fails.
#pragma once

#define TOV_FAULTY_SYSTEM __attribute__((visibility("default")))

// One way in which a function can fail.
struct sSystemFault
{
    const char* szName; // the function, with the way if it has several
    bool bOnceOnly;     // the caller may repeat the call until it succeeds
};

TOV_FAULTY_SYSTEM int CountSystemFaults();
TOV_FAULTY_SYSTEM const sSystemFault& GetSystemFault(int nFault);

// Lets calls that this fault concerns fail after a number of successes: one, or all from then on. -1 chooses none. What
// was counted is forgotten.
TOV_FAULTY_SYSTEM void ChooseSystemFault(int nFault, unsigned long ulSuccesses, bool bOnce);

// Only while armed do calls fail and are counted. Returns what was set before.
TOV_FAULTY_SYSTEM bool ArmSystemFault(bool bArm);

// The number of calls that a fault concerns, and of calls that failed, since the latest choice.
TOV_FAULTY_SYSTEM unsigned long CountSystemCalls(int nFault);
TOV_FAULTY_SYSTEM unsigned long CountFailedCalls();
