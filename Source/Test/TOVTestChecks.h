// Declares the checks of a test. A check that fails notifies the listener in force, and the case continues.
//
// Each check is an expression of type void, so that it can be an operand of a comma or a conditional operator. The
// texts show expressions as the preprocessor leaves them, with macros expanded.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestText.h>
#include <Test/TOVTestValue.h>

// These give the text of an expression, with macros expanded. Internal.
#define TOV_TEST_SOURCE_TEXT_OF(...) #__VA_ARGS__
#define TOV_TEST_SOURCE_TEXT(...) TOV_TEST_SOURCE_TEXT_OF(__VA_ARGS__)

// Calls an event of the listener in force, with the place of the check.
#define TOV_TEST_TELL(Event, ...) TOVTest::CTOVTestListener::Instance().Event(__FILE__, __LINE__, __VA_ARGS__)

// Calls the event unless the condition is true.
#define TOV_TEST_TELL_UNLESS(condition, ...) ((condition) ? static_cast<void>(0) : TOV_TEST_TELL(__VA_ARGS__))

namespace TOVTest
{
// Returns whether the two values differ by at most oDelta.
template<class TActual, class TExpected, class TDelta>
bool IsWithinDelta(const TActual& oActual, const TExpected& oExpected, const TDelta& oDelta)
{
    return oActual < oExpected ? oExpected - oActual <= oDelta : oActual - oExpected <= oDelta;
}

// Notifies the listener. The most frequent event is not inlined, since that would take more space than the checks.
TOV_NOINLINE inline void TellOfDifference(const char* szFile, long lLine, const char* szActual, const char* szExpected,
                                          const char* szActualValue, const char* szExpectedValue)
{
    CTOVTestListener::Instance().FailedAssertEquals(szFile, lLine, szActual, szExpected, szActualValue,
                                                    szExpectedValue);
}

// Calls the code. Returns whether it has thrown an exception.
template<class TCode> bool Throws(const TCode& fnCode)
{
    try
    {
        fnCode();
    }
    catch (...)
    {
        return true;
    }
    return false;
}

// Calls the code, and notifies the listener if it has thrown an exception. The listener is notified while the exception
// is handled, so that it can look at it.
TOV_NOINLINE inline void CheckThrowsNot(void (*pfRun)(const void*), const void* pCode, const char* szFile, long lLine,
                                        const char* szExpression)
{
    try
    {
        pfRun(pCode);
    }
    catch (...)
    {
        CTOVTestListener::Instance().FailedAssertThrowsNot(szFile, lLine, szExpression);
    }
}
template<class TCode> void CheckThrowsNot(const TCode& fnCode, const char* szFile, long lLine, const char* szExpression)
{
    CheckThrowsNot([](const void* pCode) { (*static_cast<const TCode*>(pCode))(); }, &fnCode, szFile, lLine,
                   szExpression);
}

// Calls the code, and notifies the listener unless it has thrown an exception of this type. The listener is notified of
// another exception while that is handled.
template<class TException, class TCode>
void CheckThrows(const TCode& fnCode, const char* szFile, long lLine, const char* szExpression, const char* szException)
{
    try
    {
        fnCode();
    }
    catch (const TException&)
    {
        return;
    }
    catch (...)
    {
        CTOVTestListener::Instance().FailedAssertThrows(szFile, lLine, szExpression, szException, true);
        return;
    }
    CTOVTestListener::Instance().FailedAssertThrows(szFile, lLine, szExpression, szException, false);
}
} // namespace TOVTest

// Passes if the expression is true.
#define TOV_TEST_CHECK(expression) TOV_TEST_TELL_UNLESS((expression), FailedAssert, TOV_TEST_SOURCE_TEXT(expression))

// Passes if actual == expected. On failure the operands are evaluated a second time, for their texts. TOVTestValue.h
// tells how values of one's own types are shown, in this check and in the next ones.
#define TOV_TEST_EQUALS(actual, expected)                                                                              \
    ((actual) == (expected)                                                                                            \
         ? static_cast<void>(0)                                                                                        \
         : TOVTest::TellOfDifference(__FILE__, __LINE__, TOV_TEST_SOURCE_TEXT(actual), TOV_TEST_SOURCE_TEXT(expected), \
                                     TOVTest::ShowValue(actual), TOVTest::ShowValue(expected)))

// Passes if both texts have the same units, up to the terminator. An operand is a CTOVStringA, a CTOVStringW, a text
// with a terminator, or a std::string; both are narrow or both wide. A null pointer is only the same as another one.
// Both texts are shown; the operands are evaluated once.
#define TOV_TEST_TEXT_EQUALS(actual, expected)                                                                         \
    TOVTest::CheckTextEquals(actual, expected, __FILE__, __LINE__, TOV_TEST_SOURCE_TEXT(actual),                       \
                             TOV_TEST_SOURCE_TEXT(expected))

// Passes unless a == b.
#define TOV_TEST_DIFFERS(a, b)                                                                                         \
    TOV_TEST_TELL_UNLESS(!((a) == (b)), FailedAssertDiffers, TOV_TEST_SOURCE_TEXT(a), TOV_TEST_SOURCE_TEXT(b),         \
                         TOVTest::ShowValue(a))

// Passes if actual and expected differ by at most delta. Fails if one of them is not a number.
#define TOV_TEST_DELTA(actual, expected, delta)                                                                        \
    TOV_TEST_TELL_UNLESS(TOVTest::IsWithinDelta(actual, expected, delta), FailedAssertDelta,                           \
                         TOV_TEST_SOURCE_TEXT(actual), TOV_TEST_SOURCE_TEXT(expected), TOV_TEST_SOURCE_TEXT(delta),    \
                         TOVTest::ShowValue(actual), TOVTest::ShowValue(expected), TOVTest::ShowValue(delta))

// Passes if actual < limit.
#define TOV_TEST_LESS_THAN(actual, limit)                                                                              \
    TOV_TEST_TELL_UNLESS((actual) < (limit), FailedAssertLessThan, TOV_TEST_SOURCE_TEXT(actual),                       \
                         TOV_TEST_SOURCE_TEXT(limit), TOVTest::ShowValue(actual), TOVTest::ShowValue(limit))

// Passes if the expression throws any exception.
#define TOV_TEST_THROWS(expression)                                                                                    \
    TOV_TEST_TELL_UNLESS(TOVTest::Throws([&] { expression; }), FailedAssertThrows, TOV_TEST_SOURCE_TEXT(expression),   \
                         "...", false)

// Passes if the expression throws an exception of this type, or of a type derived from it.
#define TOV_TEST_THROWS_EXCEPTION(expression, Exception)                                                               \
    TOVTest::CheckThrows<Exception>([&] { expression; }, __FILE__, __LINE__, TOV_TEST_SOURCE_TEXT(expression),         \
                                    TOV_TEST_SOURCE_TEXT(Exception))

// Passes if the expression does not throw.
#define TOV_TEST_THROWS_NOT(expression)                                                                                \
    TOVTest::CheckThrowsNot([&] { expression; }, __FILE__, __LINE__, TOV_TEST_SOURCE_TEXT(expression))

// TOV_TEST_FAIL fails the case; TOV_TEST_WARNING only reports a remark.
#define TOV_TEST_FAIL(text) TOV_TEST_TELL(FailedTest, text)
#define TOV_TEST_WARNING(text) TOV_TEST_TELL(Warning, text)
