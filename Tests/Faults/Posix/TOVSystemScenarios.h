// The scenarios in which calls to the system fail, by families, and how they learn of the failure.
#pragma once

#include "Faults/TOVFaultScenario.h"

#include <initializer_list>

tFaultScenarios SystemFileScenarios();
tFaultScenarios SystemFolderScenarios();
tFaultScenarios SystemFileObjectScenarios();
tFaultScenarios SystemThreadScenarios();
tFaultScenarios SystemLockScenarios();
tFaultScenarios SystemNameScenarios();
tFaultScenarios SystemToolScenarios();
tFaultScenarios SystemProgramScenarios();

// The failed calls from its construction on. In a round, calls fail in one way only.
class CStrikes
{
public:
    CStrikes();

    // Whether a call has failed that goes by one of these names.
    bool Of(std::initializer_list<const char*> aszNames) const;

    // Whether any call has failed, and how many have.
    bool Any() const { return Count() != 0; }
    unsigned long Count() const;

private:
    const unsigned long m_ulBefore;
};
