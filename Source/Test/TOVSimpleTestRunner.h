// The entry point for test programs: CTOVSimpleTestRunner.
#pragma once

#include <Test/TOVTestRouter.h>

namespace TOVTest
{
// A router that runs all suites:
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

    // Virtual operation, behind those of the router. Runs everything, tells the added listeners, and gives the number
    // of failed cases. What a case throws past its checks goes through.
    virtual int Run();

    CTOVSimpleTestRunner();
    CTOVSimpleTestRunner(const CTOVSimpleTestRunner& oOther);
    CTOVSimpleTestRunner& operator=(const CTOVSimpleTestRunner& oOther);
};
} // namespace TOVTest
