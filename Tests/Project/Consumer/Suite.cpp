// A test program with one suite.
#include <TOVKernel.h>
#include <Test/TOVTestHost.h>
#include <TestHost/TOVTestHostProgram.h>

class CWordsTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CWordsTest)
    void Length() { TOV_TEST_EQUALS(CTOVStringA("words").GetLength(), 5); }
};

TOV_TEST_CASES_BEGIN(CWordsTest, "Words")
TOV_TEST_CASE("length", Length)
TOV_TEST_CASES_END
TOV_REGISTER_TEST_SUITE(CWordsTest)

TOV_TEST_HOST

int main(int nArguments, char** aszArguments)
{
    return TOVTestHost::RunTestHost(nArguments, aszArguments);
}
