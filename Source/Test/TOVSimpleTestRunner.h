// Declares CTOVSimpleTestRunner, the entry point for test programs.
#pragma once

#include <Test/TOVTestRouter.h>

namespace TOVTest
{
// Runs all suites, and passes their events to the listeners that were added to it:
//
//     TOV_TEST_HOST
//
//     int main()
//     {
//         CMyListener oListener;
//         TOVTest::CTOVSimpleTestRunner oRunner;
//         oRunner.AddListener(oListener);
//         return oRunner.Run();
//     }
class TOV_EXPORT CTOVSimpleTestRunner : public CTOVTestRouter
{
public:
    ~CTOVSimpleTestRunner() override;

    // Virtual operation, after those of the router. Runs everything, notifies the added listeners, and returns the
    // number of failed cases. An exception that leaves a case reaches the caller.
    virtual int Run();

    CTOVSimpleTestRunner();
    CTOVSimpleTestRunner(const CTOVSimpleTestRunner& oOther);
    CTOVSimpleTestRunner& operator=(const CTOVSimpleTestRunner& oOther);
};
} // namespace TOVTest
