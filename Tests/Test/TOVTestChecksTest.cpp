#include "Support/TOVTestSupport.h"
#include "Test/TOVHeardChecks.h"

#include <Test/TOVTestChecks.h>

#include <exception>
#include <limits>
#include <stdexcept>

namespace
{
class TOVTestChecksTest : public CHeardChecks
{
protected:
    static tTexts Event(const char* szEvent, int nLine, const std::string& sArguments)
    {
        return EventIn(__FILE__, szEvent, nLine, sArguments);
    }
};

struct sBaseError : std::runtime_error
{
    sBaseError() : std::runtime_error("base") {}
};

struct sDerivedError : sBaseError
{
};

void ThrowNothing()
{
}

void ThrowBase()
{
    throw sBaseError();
}

void ThrowDerived()
{
    throw sDerivedError();
}

void ThrowNumber()
{
    throw 7;
}
} // namespace

#define ANSWER_OF_TEST (40 + 2)
#define NESTED_ANSWER_OF_TEST ANSWER_OF_TEST
#define PAIR_OF_TEST Sum(1, 2)
#define BARE_COMMA_OF_TEST std::pair<int, int>(1, 2).first

namespace
{
int Sum(int nFirst, int nSecond)
{
    return nFirst + nSecond;
}
} // namespace

TEST_F(TOVTestChecksTest, CheckPassesForATrueExpression)
{
    TOV_TEST_CHECK(Sum(1, 2) == 3);
    TOV_TEST_CHECK(1);

    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, CheckTellsOfAFalseExpression)
{
    TOV_TEST_CHECK(Sum(1, 2) == 4);
    EXPECT_EQ(Event("FailedAssert", __LINE__ - 1, "Sum(1, 2) == 4"), Heard());
}

TEST_F(TOVTestChecksTest, EqualsPassesForEqualValues)
{
    TOV_TEST_EQUALS(Sum(1, 2), 3);
    TOV_TEST_EQUALS(std::string("a"), "a");

    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, EqualsTellsOfDifferentValues)
{
    const int nActual = 3;
    TOV_TEST_EQUALS(nActual, Sum(2, 2));
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "nActual|Sum(2, 2)|3|4"), Heard());
}

TEST_F(TOVTestChecksTest, EqualsTellsTheLiteralThatWasExpected)
{
    const bool bActual = false;
    TOV_TEST_EQUALS(bActual, true);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "bActual|true|false|true"), Heard());

    TOV_TEST_EQUALS(Sum(1, 2), 0);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "Sum(1, 2)|0|3|0"), Heard());
}

TEST_F(TOVTestChecksTest, EqualsUsesNothingButTheOperator)
{
    const struct sUnequal
    {
        bool operator==(const sUnequal&) const { return false; }
    } oValue;
    TOV_TEST_EQUALS(oValue, oValue);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "oValue|oValue|(unprintable value)|(unprintable value)"),
              Heard());
}

TEST_F(TOVTestChecksTest, EqualsFailsForWhatIsNotANumber)
{
    const double dNone = std::numeric_limits<double>::quiet_NaN();
    TOV_TEST_EQUALS(dNone, dNone);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "dNone|dNone|nan|nan"), Heard());
}

TEST_F(TOVTestChecksTest, EqualsEvaluatesItsOperandsAgainForTheTexts)
{
    int nActual = 0;
    int nExpected = 10;
    TOV_TEST_EQUALS(++nActual, ++nExpected);

    EXPECT_EQ(2, nActual);
    EXPECT_EQ(12, nExpected);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 4, "++nActual|++nExpected|2|12"), Heard());
}

TEST_F(TOVTestChecksTest, EqualsEvaluatesItsOperandsOnceWhenItPasses)
{
    int nActual = 0;
    int nExpected = 0;
    TOV_TEST_EQUALS(++nActual, ++nExpected);

    EXPECT_EQ(1, nActual);
    EXPECT_EQ(1, nExpected);
}

TEST_F(TOVTestChecksTest, DiffersPassesForDifferentValues)
{
    TOV_TEST_DIFFERS(Sum(1, 2), 4);

    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, DiffersTellsOfEqualValues)
{
    const char cActual = 'x';
    TOV_TEST_DIFFERS(cActual, 'x');
    EXPECT_EQ(Event("FailedAssertDiffers", __LINE__ - 1, "cActual|'x'|'x'"), Heard());
}

TEST_F(TOVTestChecksTest, DiffersEvaluatesTheShownOperandAgain)
{
    int nFirst = 0;
    int nSecond = 0;
    TOV_TEST_DIFFERS(++nFirst, ++nSecond);

    EXPECT_EQ(2, nFirst);
    EXPECT_EQ(1, nSecond);
    EXPECT_EQ(Event("FailedAssertDiffers", __LINE__ - 4, "++nFirst|++nSecond|2"), Heard());
}

TEST_F(TOVTestChecksTest, DeltaPassesUpToTheDelta)
{
    TOV_TEST_DELTA(1.0, 1.5, 0.5);
    TOV_TEST_DELTA(1.5, 1.0, 0.5);
    TOV_TEST_DELTA(7, 7, 0);
    TOV_TEST_DELTA(2u, 3u, 1u);

    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, DeltaTellsOfALargerDistance)
{
    const double dActual = 1.0;
    TOV_TEST_DELTA(dActual, 2.0, 0.5);
    EXPECT_EQ(Event("FailedAssertDelta", __LINE__ - 1, "dActual|2.0|0.5|1.0000|2.0000|0.5000"), Heard());

    TOV_TEST_DELTA(12, 8, 3);
    EXPECT_EQ(Event("FailedAssertDelta", __LINE__ - 1, "12|8|3|12|8|3"), Heard());
}

TEST_F(TOVTestChecksTest, DeltaFailsForWhatIsNotANumber)
{
    const double dNone = std::numeric_limits<double>::quiet_NaN();
    TOV_TEST_DELTA(dNone, 1.0, 0.5);
    EXPECT_EQ(Event("FailedAssertDelta", __LINE__ - 1, "dNone|1.0|0.5|nan|1.0000|0.5000"), Heard());
}

TEST_F(TOVTestChecksTest, DeltaEvaluatesItsOperandsAgainForTheTexts)
{
    int nActual = 0;
    int nExpected = 10;
    int nDelta = 2;
    TOV_TEST_DELTA(++nActual, ++nExpected, ++nDelta);
    EXPECT_EQ(Event("FailedAssertDelta", __LINE__ - 1, "++nActual|++nExpected|++nDelta|2|12|4"), Heard());

    nActual = nExpected = nDelta = 0;
    TOV_TEST_DELTA(++nActual, ++nExpected, ++nDelta);
    EXPECT_EQ(3, nActual + nExpected + nDelta);
}

TEST_F(TOVTestChecksTest, LessThanPassesBelowTheLimit)
{
    TOV_TEST_LESS_THAN(Sum(1, 2), 4);

    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, LessThanTellsOfTheLimitAndAbove)
{
    TOV_TEST_LESS_THAN(Sum(1, 2), 3);
    EXPECT_EQ(Event("FailedAssertLessThan", __LINE__ - 1, "Sum(1, 2)|3|3|3"), Heard());

    TOV_TEST_LESS_THAN(5.5, 1.25);
    EXPECT_EQ(Event("FailedAssertLessThan", __LINE__ - 1, "5.5|1.25|5.5000|1.2500"), Heard());
}

TEST_F(TOVTestChecksTest, LessThanEvaluatesItsOperandsAgainForTheTexts)
{
    int nActual = 10;
    int nLimit = 0;
    TOV_TEST_LESS_THAN(++nActual, ++nLimit);
    EXPECT_EQ(Event("FailedAssertLessThan", __LINE__ - 1, "++nActual|++nLimit|12|2"), Heard());

    nActual = 0;
    nLimit = 10;
    TOV_TEST_LESS_THAN(++nActual, ++nLimit);
    EXPECT_EQ(1, nActual);
    EXPECT_EQ(11, nLimit);
}

TEST_F(TOVTestChecksTest, ThrowsPassesForAnyException)
{
    TOV_TEST_THROWS(ThrowBase());
    TOV_TEST_THROWS(ThrowNumber());
    TOV_TEST_THROWS(TOV_ASSERT(false));

    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, ThrowsTellsOfAnExpressionThatCompletes)
{
    TOV_TEST_THROWS(ThrowNothing());
    EXPECT_EQ(Event("FailedAssertThrows", __LINE__ - 1, "ThrowNothing()|...|none"), Heard());
}

TEST_F(TOVTestChecksTest, ThrowsExceptionPassesForTheTypeAndWhatIsDerived)
{
    TOV_TEST_THROWS_EXCEPTION(ThrowBase(), sBaseError);
    TOV_TEST_THROWS_EXCEPTION(ThrowDerived(), sBaseError);

    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, ThrowsExceptionTellsOfNoneAndOfOthers)
{
    TOV_TEST_THROWS_EXCEPTION(ThrowNothing(), sBaseError);
    EXPECT_EQ(Event("FailedAssertThrows", __LINE__ - 1, "ThrowNothing()|sBaseError|none"), Heard());

    TOV_TEST_THROWS_EXCEPTION(ThrowBase(), sDerivedError);
    EXPECT_EQ(Event("FailedAssertThrows", __LINE__ - 1, "ThrowBase()|sDerivedError|other"), Heard());

    TOV_TEST_THROWS_EXCEPTION(ThrowNumber(), sBaseError);
    EXPECT_EQ(Event("FailedAssertThrows", __LINE__ - 1, "ThrowNumber()|sBaseError|other"), Heard());
}

TEST_F(TOVTestChecksTest, ThrowsNotPassesForAnExpressionThatCompletes)
{
    int nEvaluated = 0;
    TOV_TEST_THROWS_NOT(++nEvaluated);

    EXPECT_EQ(1, nEvaluated);
    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, ThrowsNotTellsOfAnyException)
{
    TOV_TEST_THROWS_NOT(ThrowBase());
    EXPECT_EQ(Event("FailedAssertThrowsNot", __LINE__ - 1, "ThrowBase()"), Heard());

    TOV_TEST_THROWS_NOT(ThrowNumber());
    EXPECT_EQ(Event("FailedAssertThrowsNot", __LINE__ - 1, "ThrowNumber()"), Heard());
}

TEST_F(TOVTestChecksTest, ThrowChecksTellOfAnExceptionWhileItIsHandled)
{
    tTexts aSeen;
    m_oRecorder.m_fnOnEvent = [&](const std::string&) {
        const std::exception_ptr pSeen = std::current_exception();
        try
        {
            if (pSeen != nullptr)
                std::rethrow_exception(pSeen);
            aSeen.push_back("nothing");
        }
        catch (const std::exception& oError)
        {
            aSeen.push_back(oError.what());
        }
    };
    TOV_TEST_THROWS_NOT(ThrowBase());
    TOV_TEST_THROWS_EXCEPTION(ThrowBase(), sDerivedError);
    TOV_TEST_THROWS_EXCEPTION(ThrowNothing(), sDerivedError);

    EXPECT_EQ((tTexts{"base", "base", "nothing"}), aSeen);
}

TEST_F(TOVTestChecksTest, ThrowChecksEvaluateTheirExpressionOnce)
{
    int nEvaluated = 0;
    TOV_TEST_THROWS(++nEvaluated);
    TOV_TEST_THROWS_EXCEPTION(++nEvaluated, sBaseError);
    TOV_TEST_THROWS_NOT((++nEvaluated, ThrowNumber()));

    EXPECT_EQ(3, nEvaluated);
    EXPECT_EQ(3u, Heard().size());
}

TEST_F(TOVTestChecksTest, FailAndWarningTellTheirTextAlways)
{
    TOV_TEST_FAIL("it is broken");
    EXPECT_EQ(Event("FailedTest", __LINE__ - 1, "it is broken"), Heard());

    TOV_TEST_WARNING("TODO: look again!");
    EXPECT_EQ(Event("Warning", __LINE__ - 1, "TODO: look again!"), Heard());
}

TEST_F(TOVTestChecksTest, GoesOnAfterAFailure)
{
    TOV_TEST_CHECK(false);
    TOV_TEST_EQUALS(1, 2);
    TOV_TEST_THROWS(ThrowNothing());

    EXPECT_EQ(3u, Heard().size());
}

TEST_F(TOVTestChecksTest, ShowsExpressionsWithTheirMacrosExpanded)
{
    TOV_TEST_EQUALS(NESTED_ANSWER_OF_TEST, 0);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "(40 + 2)|0|42|0"), Heard());

    TOV_TEST_DIFFERS(ANSWER_OF_TEST, ANSWER_OF_TEST);
    EXPECT_EQ(Event("FailedAssertDiffers", __LINE__ - 1, "(40 + 2)|(40 + 2)|42"), Heard());

    TOV_TEST_CHECK(!ANSWER_OF_TEST);
    EXPECT_EQ(Event("FailedAssert", __LINE__ - 1, "!(40 + 2)"), Heard());

    TOV_TEST_THROWS((void)ANSWER_OF_TEST);
    EXPECT_EQ(Event("FailedAssertThrows", __LINE__ - 1, "(void)(40 + 2)|...|none"), Heard());
}

TEST_F(TOVTestChecksTest, ShowsAMacroWithACommaInIt)
{
    TOV_TEST_EQUALS(PAIR_OF_TEST, 4);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "Sum(1, 2)|4|3|4"), Heard());

    TOV_TEST_CHECK(BARE_COMMA_OF_TEST == 2);
    EXPECT_EQ(Event("FailedAssert", __LINE__ - 1, "std::pair<int, int>(1, 2).first == 2"), Heard());
}

TEST_F(TOVTestChecksTest, ShowsTheWholeExpansionOfTheByteSwap)
{
    TOV_TEST_EQUALS(TOV_BYTESWAP32(0xABCD), 0u);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1,
                    "(tDword)(((tDword)0xABCD>>24)+(((tDword)0xABCD&0xff0000)>>8)+(((tDword)0xABCD&0xff00)<<8)+"
                    "(((tDword)0xABCD&0xff)<<24))|0u|3450535936|0"),
              Heard());
}

TEST_F(TOVTestChecksTest, ShowsQuotesAndEscapesAsTheyStand)
{
    TOV_TEST_CHECK(std::string("a\n\"") == "b");
    EXPECT_EQ(Event("FailedAssert", __LINE__ - 1, "std::string(\"a\\n\\\"\") == \"b\""), Heard());
}

TEST_F(TOVTestChecksTest, IsOneStatement)
{
    if (Sum(1, 2) == 4)
        TOV_TEST_CHECK(false);
    else
        TOV_TEST_WARNING("else");

    EXPECT_EQ(Event("Warning", __LINE__ - 2, "else"), Heard());
}

// The failing check stands in each place where an expression can, and tells its event each time.
#define EXPECT_EXPRESSION(szEvent, check)                                                                              \
    do                                                                                                                 \
    {                                                                                                                  \
        const bool bFirst = Sum(1, 2) == 3;                                                                            \
        bFirst ? check : TOV_TEST_FAIL("the other branch");                                                            \
        !bFirst ? TOV_TEST_FAIL("the other branch") : check;                                                           \
        int nDone = 0;                                                                                                 \
        ++nDone, check;                                                                                                \
        check, ++nDone;                                                                                                \
        if (bFirst)                                                                                                    \
            check;                                                                                                     \
        else                                                                                                           \
            TOV_TEST_FAIL("the other branch");                                                                         \
        for (int i = 0; i < 1; ++i, check)                                                                             \
            ++nDone;                                                                                                   \
        [&] { return check; }();                                                                                       \
        EXPECT_EQ(3, nDone);                                                                                           \
        EXPECT_EQ(tTexts(7, szEvent), NamesOf(Heard())) << #check;                                                     \
    } while (false)

TEST_F(TOVTestChecksTest, StandsInEachPlaceOfAnExpression)
{
    EXPECT_EXPRESSION("FailedAssert", TOV_TEST_CHECK(bFirst == false));
    EXPECT_EXPRESSION("FailedAssertEquals", TOV_TEST_EQUALS(1, 2));
    EXPECT_EXPRESSION("FailedAssertEquals", TOV_TEST_TEXT_EQUALS("a", "b"));
    EXPECT_EXPRESSION("FailedAssertDiffers", TOV_TEST_DIFFERS(1, 1));
    EXPECT_EXPRESSION("FailedAssertDelta", TOV_TEST_DELTA(1, 4, 2));
    EXPECT_EXPRESSION("FailedAssertLessThan", TOV_TEST_LESS_THAN(2, 1));
    EXPECT_EXPRESSION("FailedAssertThrows", TOV_TEST_THROWS(ThrowNothing()));
    EXPECT_EXPRESSION("FailedAssertThrows", TOV_TEST_THROWS_EXCEPTION(ThrowNumber(), sBaseError));
    EXPECT_EXPRESSION("FailedAssertThrowsNot", TOV_TEST_THROWS_NOT(ThrowNumber()));
    EXPECT_EXPRESSION("FailedTest", TOV_TEST_FAIL("broken"));
    EXPECT_EXPRESSION("Warning", TOV_TEST_WARNING("look again"));
}

TEST_F(TOVTestChecksTest, StandsInBothBranchesOfAConditional)
{
    for (const bool bFirst : {true, false})
    {
        bFirst ? TOV_TEST_EQUALS(1, 1) : TOV_TEST_EQUALS(2, 2);
        EXPECT_EQ(tTexts(), Heard());

        bFirst ? TOV_TEST_CHECK(1 == 2) : TOV_TEST_THROWS(ThrowNothing());
        EXPECT_EQ(tTexts(1, bFirst ? "FailedAssert" : "FailedAssertThrows"), NamesOf(Heard()));
    }
}

TEST_F(TOVTestChecksTest, SeesWhatItsSurroundingsHold)
{
    const struct sHolder
    {
        int nMember;
        void Check() const { TOV_TEST_THROWS_NOT(Sum(nMember, nMember)); }
    } oHolder = {1};
    oHolder.Check();
    int nLocal = 0;
    TOV_TEST_THROWS((nLocal = oHolder.nMember, ThrowBase()));

    EXPECT_EQ(1, nLocal);
    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestChecksTest, AsksForTheListenerAtTheTimeOfTheFailure)
{
    CEventRecorder oOther;
    TOV_TEST_CHECK((m_oHost.m_pListener = &oOther, false));

    EXPECT_EQ(tTexts(), Heard());
    EXPECT_EQ(1u, oOther.m_aEvents.size());
}

TEST_F(TOVTestChecksTest, AsksForNoListenerWhenItPasses)
{
    TOV_TEST_CHECK(true);
    TOV_TEST_EQUALS(1, 1);
    TOV_TEST_DIFFERS(1, 2);
    TOV_TEST_DELTA(1, 2, 1);
    TOV_TEST_LESS_THAN(1, 2);
    TOV_TEST_THROWS(ThrowBase());
    TOV_TEST_THROWS_NOT(ThrowNothing());

    EXPECT_EQ(0, m_oHost.m_nListenerCalls);
}

TEST_F(TOVTestChecksTest, LetsThroughWhatAnOperandThrows)
{
    const auto fnThrow = []() -> int { throw 7; };

    EXPECT_THROW(TOV_TEST_EQUALS(fnThrow(), 1), int);
    EXPECT_THROW(TOV_TEST_CHECK(fnThrow()), int);
    EXPECT_EQ(tTexts(), Heard());
}
