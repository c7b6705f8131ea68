// What the framework asks of the main program, and what the library has in its place. Internal.
#pragma once

#include <TOVPlatform/Backend/TOVSystem.h>
#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuiteFactory.h>

namespace TOVTest
{
// The function that the main program exports under a plain name, or NULL.
template<class TFunction> TFunction* FindProgramFunction(const char* szFunction)
{
    return reinterpret_cast<TFunction*>(TOVPlatform::Backend::FindInMainProgram(szFunction));
}

// The library's own, whatever the main program exports. A program's function of the same name can stand in the place of
// the library's exported one, so that the library itself uses these.
CTOVTestListener& GetOwnNull();
CTOVTestListener& GetOwnListener();
void SetOwnListener(CTOVTestListener* pListener);
tCreatorMap& GetOwnCreatorMap();
} // namespace TOVTest
