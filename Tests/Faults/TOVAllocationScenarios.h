// The scenarios in which allocations fail, by families: at least one for each class that allocates.
#pragma once

#include "Faults/TOVFaultScenario.h"

tFaultScenarios NarrowStringScenarios();
tFaultScenarios WideStringScenarios();
tFaultScenarios ArrayScenarios();
tFaultScenarios ContainerScenarios();
tFaultScenarios PatternScenarios();
tFaultScenarios PathScenarios();
tFaultScenarios FileScenarios();
tFaultScenarios StreamScenarios();
tFaultScenarios RttiScenarios();
tFaultScenarios DebugScenarios();
tFaultScenarios ListenerScenarios();
tFaultScenarios FrameworkScenarios();
tFaultScenarios HostScenarios();
tFaultScenarios ProcessScenarios();
tFaultScenarios TimerScenarios();
