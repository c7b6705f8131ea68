// How the factory makes a suite: ITOVTestSuiteCreator.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVTest
{
class CTOVTestSuite;

// One static object for each suite, registered with CTOVTestSuiteFactory. A concrete creator adds a virtual destructor
// as its second operation.
class TOV_EXPORT ITOVTestSuiteCreator
{
public:
    // Virtual operation. A new suite, which the caller deletes.
    virtual CTOVTestSuite* New() = 0;

    TOV_EXPORT_INLINE constexpr ITOVTestSuiteCreator() {}
    ITOVTestSuiteCreator(const ITOVTestSuiteCreator& oOther);
    ITOVTestSuiteCreator& operator=(const ITOVTestSuiteCreator& oOther);
};
} // namespace TOVTest
