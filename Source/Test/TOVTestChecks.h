// The checks of a test: on failure they tell the listener in force, and the case goes on.
//
// Expressions appear in the texts as the preprocessor leaves them, with macros expanded.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestText.h>

#define TOV_TEST_SOURCE_TEXT_OF(...) #__VA_ARGS__
#define TOV_TEST_SOURCE_TEXT(...) TOV_TEST_SOURCE_TEXT_OF(__VA_ARGS__)

// The call of an event of the listener in force, with the place of the check.
#define TOV_TEST_TELL(Event, ...) TOVTest::CTOVTestListener::Instance().Event(__FILE__, __LINE__, __VA_ARGS__)

namespace TOVTest
{
// True if the two are at most the delta apart.
template<class TActual, class TExpected, class TDelta>
bool IsWithinDelta(const TActual& oActual, const TExpected& oExpected, const TDelta& oDelta)
{
    return oActual < oExpected ? oExpected - oActual <= oDelta : oActual - oExpected <= oDelta;
}
} // namespace TOVTest

// Passes if the expression is true.
#define TOV_TEST_CHECK(expression)                                                                                     \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(expression))                                                                                             \
            TOV_TEST_TELL(FailedAssert, TOV_TEST_SOURCE_TEXT(expression));                                             \
    } while (false)

// Passes if actual == expected. On failure the operands are evaluated a second time, for their texts.
#define TOV_TEST_EQUALS(actual, expected)                                                                              \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!((actual) == (expected)))                                                                                 \
            TOV_TEST_TELL(FailedAssertEquals, TOV_TEST_SOURCE_TEXT(actual), TOV_TEST_SOURCE_TEXT(expected),            \
                          TOVTest::CTOVTestText(actual), TOVTest::CTOVTestText(expected));                             \
    } while (false)

// Passes unless a == b.
#define TOV_TEST_DIFFERS(a, b)                                                                                         \
    do                                                                                                                 \
    {                                                                                                                  \
        if ((a) == (b))                                                                                                \
            TOV_TEST_TELL(FailedAssertDiffers, TOV_TEST_SOURCE_TEXT(a), TOV_TEST_SOURCE_TEXT(b),                       \
                          TOVTest::CTOVTestText(a));                                                                   \
    } while (false)

// Passes if actual and expected are at most delta apart; what is not a number is not.
#define TOV_TEST_DELTA(actual, expected, delta)                                                                        \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!TOVTest::IsWithinDelta(actual, expected, delta))                                                          \
            TOV_TEST_TELL(FailedAssertDelta, TOV_TEST_SOURCE_TEXT(actual), TOV_TEST_SOURCE_TEXT(expected),             \
                          TOV_TEST_SOURCE_TEXT(delta), TOVTest::CTOVTestText(actual), TOVTest::CTOVTestText(expected), \
                          TOVTest::CTOVTestText(delta));                                                               \
    } while (false)

// Passes if actual < limit.
#define TOV_TEST_LESS_THAN(actual, limit)                                                                              \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!((actual) < (limit)))                                                                                     \
            TOV_TEST_TELL(FailedAssertLessThan, TOV_TEST_SOURCE_TEXT(actual), TOV_TEST_SOURCE_TEXT(limit),             \
                          TOVTest::CTOVTestText(actual), TOVTest::CTOVTestText(limit));                                \
    } while (false)

// Runs the expression, and notes in a new variable whether any exception came out of it.
#define TOV_TEST_TRY(bCaught, ...)                                                                                     \
    bool bCaught = false;                                                                                              \
    try                                                                                                                \
    {                                                                                                                  \
        __VA_ARGS__;                                                                                                   \
    }                                                                                                                  \
    catch (...)                                                                                                        \
    {                                                                                                                  \
        bCaught = true;                                                                                                \
    }

// Passes if any exception comes out of the expression.
#define TOV_TEST_THROWS(expression)                                                                                    \
    do                                                                                                                 \
    {                                                                                                                  \
        TOV_TEST_TRY(bCaughtInTest, expression)                                                                        \
        if (!bCaughtInTest)                                                                                            \
            TOV_TEST_TELL(FailedAssertThrows, TOV_TEST_SOURCE_TEXT(expression), "...", false);                         \
    } while (false)

// Passes if an exception of this type, or of one derived from it, comes out of the expression.
#define TOV_TEST_THROWS_EXCEPTION(expression, Exception)                                                               \
    do                                                                                                                 \
    {                                                                                                                  \
        bool bCaughtInTest = false;                                                                                    \
        bool bOtherInTest = false;                                                                                     \
        try                                                                                                            \
        {                                                                                                              \
            expression;                                                                                                \
        }                                                                                                              \
        catch (const Exception&)                                                                                       \
        {                                                                                                              \
            bCaughtInTest = true;                                                                                      \
        }                                                                                                              \
        catch (...)                                                                                                    \
        {                                                                                                              \
            bOtherInTest = true;                                                                                       \
        }                                                                                                              \
        if (!bCaughtInTest)                                                                                            \
            TOV_TEST_TELL(FailedAssertThrows, TOV_TEST_SOURCE_TEXT(expression), TOV_TEST_SOURCE_TEXT(Exception),       \
                          bOtherInTest);                                                                               \
    } while (false)

// Passes if no exception comes out of the expression.
#define TOV_TEST_THROWS_NOT(expression)                                                                                \
    do                                                                                                                 \
    {                                                                                                                  \
        TOV_TEST_TRY(bCaughtInTest, expression)                                                                        \
        if (bCaughtInTest)                                                                                             \
            TOV_TEST_TELL(FailedAssertThrowsNot, TOV_TEST_SOURCE_TEXT(expression));                                    \
    } while (false)

// Fails the case; or just leaves a remark.
#define TOV_TEST_FAIL(text) TOV_TEST_TELL(FailedTest, text)
#define TOV_TEST_WARNING(text) TOV_TEST_TELL(Warning, text)
