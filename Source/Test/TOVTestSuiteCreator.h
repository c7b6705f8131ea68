// Declares ITOVTestSuiteCreator, by which the factory makes a suite.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVTest
{
class CTOVTestSuite;

// Each suite has one static creator, which is registered with CTOVTestSuiteFactory. A derived class adds a virtual
// destructor as its second operation.
class TOV_EXPORT ITOVTestSuiteCreator
{
public:
    // Virtual operation. Returns a new suite, which the caller deletes.
    virtual CTOVTestSuite* New() = 0;

    TOV_EXPORT_INLINE constexpr ITOVTestSuiteCreator() {}
    ITOVTestSuiteCreator(const ITOVTestSuiteCreator& oOther);
    ITOVTestSuiteCreator& operator=(const ITOVTestSuiteCreator& oOther);
};
} // namespace TOVTest
