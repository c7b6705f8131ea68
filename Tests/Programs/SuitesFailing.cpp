// A suite that fails in every way, with texts that are difficult for every report.
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestSuiteDefinition.h>

#include <stdexcept>

class CFailingTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CFailingTest)
    void Passes() {}
    void Boolean() { TOV_TEST_CHECK(1 > 2); }
    void Equality()
    {
        TOV_TEST_EQUALS(1 + 1, 3);
        TOV_TEST_EQUALS('a', '\n');
    }
    void Delta() { TOV_TEST_DELTA(1.5, 2.0, 0.25); }
    void Difference() { TOV_TEST_DIFFERS(7, 7); }
    void Order() { TOV_TEST_LESS_THAN(5, 4); }
    void Throwing()
    {
        TOV_TEST_THROWS(++m_nCalls);
        TOV_TEST_THROWS_EXCEPTION(throw std::runtime_error("other"), std::logic_error);
        TOV_TEST_THROWS_NOT(throw 1);
    }
    void ByHand()
    {
        TOV_TEST_WARNING("warned too");
        TOV_TEST_FAIL("failed by hand");
    }

    int m_nCalls = 0;
};

class CTrialTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTrialTest)
    void Markup() { TOV_TEST_FAIL("<a href=\"x\">&amp;'quoted'</a> ]]> <![CDATA["); }
    void Control() { TOV_TEST_FAIL("bell \x07, tab \t, line\nend, return \r, delete \x7f"); }
    void Encoding()
    {
        TOV_TEST_FAIL("caf\xc3\xa9, cut \xe2\x82, lone \xff, overlong \xc0\x80, surrogate \xed\xa0\x80");
    }
    void Directive() { TOV_TEST_CHECK(false); }
};

// Checks that fail before and after the cases.
class CAroundTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CAroundTest)
    void Startup() override { TOV_TEST_CHECK(s_nCase++ != 1); }
    void Closedown() override { TOV_TEST_CHECK(s_nCase != 3); }
    void Nothing() {}

    static int s_nCase;
};

int CAroundTest::s_nCase = 0;

// clang-format off
TOV_TEST_CASES_BEGIN(CFailingTest, "Failing")
    TOV_TEST_CASE("passes", Passes)
    TOV_TEST_CASE("boolean", Boolean)
    TOV_TEST_CASE("equality", Equality)
    TOV_TEST_CASE("delta", Delta)
    TOV_TEST_CASE("difference", Difference)
    TOV_TEST_CASE("order", Order)
    TOV_TEST_CASE("throwing", Throwing)
    TOV_TEST_CASE("by hand", ByHand)
TOV_TEST_CASES_END
TOV_TEST_CASES_BEGIN(CTrialTest, "Trial <\"&'>\x01")
    TOV_TEST_CASE("markup", Markup)
    TOV_TEST_CASE("control", Control)
    TOV_TEST_CASE("encoding", Encoding)
    TOV_TEST_CASE("a # TODO \\ directive", Directive)
TOV_TEST_CASES_END
TOV_TEST_CASES_BEGIN(CAroundTest, "Around")
    TOV_TEST_CASE("first", Nothing)
    TOV_TEST_CASE("second", Nothing)
    TOV_TEST_CASE("third", Nothing)
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CFailingTest)
TOV_REGISTER_TEST_SUITE(CTrialTest)
TOV_REGISTER_TEST_SUITE(CAroundTest)
