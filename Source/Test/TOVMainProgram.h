// Internal. Declares how the framework finds the main program's functions, and the library's own ones.
#pragma once

#include <TOVPlatform/Backend/TOVSystem.h>
#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuiteFactory.h>

namespace TOVTest
{
// Returns the function that the main program exports under the plain name of pfLinked, or null. The answer is the same
// throughout the life of the process: keep it, as the loader compares many names for it. In a static program the linker
// has chosen, so that pfLinked is the program's function already, or the library's if the program has none.
template<auto* pfLinked> auto* FindProgramFunction([[maybe_unused]] const char* szFunction)
{
    if constexpr (TOV_IS_STATIC)
        return pfLinked;
    else
        return reinterpret_cast<decltype(pfLinked)>(TOVPlatform::Backend::FindInMainProgram(szFunction));
}

// These are the library's own functions, whatever the main program exports. A program's function of the same name can
// replace the library's exported one, so that the library itself calls these.
CTOVTestListener& GetOwnNull();
CTOVTestListener& GetOwnListener();
void SetOwnListener(CTOVTestListener* pListener);
tCreatorMap& GetOwnCreatorMap();
} // namespace TOVTest
