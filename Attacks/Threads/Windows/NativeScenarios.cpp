#include "../ThreadScenarios.h"

const sThreadScenario NATIVE_SCENARIOS[] = {{nullptr, 1, nullptr}};
