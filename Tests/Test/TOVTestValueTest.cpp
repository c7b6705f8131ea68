// What checks show of texts and of values of an application's own types.
#include "Support/TOVTestSupport.h"
#include "Test/TOVHeardChecks.h"

#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>
#include <Test/TOVTestChecks.h>

// Types of an application, with and without a text.
namespace Atlas
{
struct sPoint
{
    int nX;
    int nY;
    bool operator==(const sPoint& oOther) const { return nX == oOther.nX && nY == oOther.nY; }
    bool operator<(const sPoint& oOther) const { return nX < oOther.nX; }
};

std::string TestTextOf(const sPoint& oPoint)
{
    return "(" + std::to_string(oPoint.nX) + ", " + std::to_string(oPoint.nY) + ")";
}

enum eSide
{
    eSideLeft,
    eSideRight
};

std::string TestTextOf(eSide eValue)
{
    return eValue == eSideLeft ? "left" : "right";
}

enum eOther
{
    eOtherOne
};

struct sLimits
{
    static const int MAX_POINTS = 3; // without a definition
};
} // namespace Atlas

namespace
{
class TOVTestValueTest : public CHeardChecks
{
protected:
    static tTexts Event(const char* szEvent, int nLine, const std::string& sArguments)
    {
        return EventIn(__FILE__, szEvent, nLine, sArguments);
    }
};
} // namespace

TEST_F(TOVTestValueTest, ShowsValuesOfOnesOwnTypesByTheirFunction)
{
    const Atlas::sPoint oPoint = {1, 2};
    TOV_TEST_EQUALS(oPoint, (Atlas::sPoint{3, -4}));
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "oPoint|(Atlas::sPoint{3, -4})|(1, 2)|(3, -4)"), Heard());

    TOV_TEST_DIFFERS(oPoint, oPoint);
    EXPECT_EQ(Event("FailedAssertDiffers", __LINE__ - 1, "oPoint|oPoint|(1, 2)"), Heard());

    TOV_TEST_LESS_THAN(oPoint, oPoint);
    EXPECT_EQ(Event("FailedAssertLessThan", __LINE__ - 1, "oPoint|oPoint|(1, 2)|(1, 2)"), Heard());

    TOV_TEST_EQUALS(Atlas::eSideLeft, Atlas::eSideRight);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "Atlas::eSideLeft|Atlas::eSideRight|left|right"), Heard());
}

TEST_F(TOVTestValueTest, ShowsOtherValuesAsBefore)
{
    const char* szText = "a";
    TOV_TEST_DIFFERS(szText, szText);
    TOV_TEST_DIFFERS(Atlas::eOtherOne, Atlas::eOtherOne);
    TOV_TEST_DIFFERS(1.5f, 1.5f);
    const tTexts aHeard = Heard();
    ASSERT_EQ(3u, aHeard.size());
    for (const std::string& sEvent : aHeard)
        EXPECT_EQ("(unprintable value)", sEvent.substr(sEvent.find_last_of('|') + 1)) << sEvent;

    volatile int nVolatile = 2;
    TOV_TEST_EQUALS(nVolatile, Atlas::sLimits::MAX_POINTS);
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "nVolatile|Atlas::sLimits::MAX_POINTS|2|3"), Heard());
}

TEST_F(TOVTestValueTest, TextEqualsPassesForTheSameTextInAnyForm)
{
    char szText[] = "atlas";
    TOV_TEST_TEXT_EQUALS(szText, "atlas");
    TOV_TEST_TEXT_EQUALS(CTOVStringA("atlas"), szText);
    TOV_TEST_TEXT_EQUALS(std::string("atlas"), CTOVStringA("atlas"));
    TOV_TEST_TEXT_EQUALS(CTOVStringA(), "");
    TOV_TEST_TEXT_EQUALS(CTOVStringW(), L"");
    TOV_TEST_TEXT_EQUALS(CTOVStringW(L"atlas"), L"atlas");
    TOV_TEST_TEXT_EQUALS(static_cast<const char*>(nullptr), static_cast<const char*>(nullptr));

    EXPECT_EQ(tTexts(), Heard());
}

TEST_F(TOVTestValueTest, TextEqualsShowsBothTexts)
{
    const CTOVStringA oName("atlas");
    TOV_TEST_TEXT_EQUALS(oName, "atlantis");
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "oName|\"atlantis\"|\"atlas\"|\"atlantis\""), Heard());

    TOV_TEST_TEXT_EQUALS(std::string("a\0b", 3), std::string(200, 'x'));
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1,
                    "std::string(\"a\\0b\", 3)|std::string(200, 'x')|\"a\\x00b\"|\"" + std::string(200, 'x') + "\""),
              Heard());

    const char* szNone = nullptr;
    TOV_TEST_TEXT_EQUALS(szNone, "");
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "szNone|\"\"|(no text)|\"\""), Heard());
}

TEST_F(TOVTestValueTest, TextEqualsShowsWhatDoesNotPrintEscaped)
{
    const char* szActual = "\n\r\t\x1f\x7f\"\\ caf\xc3\xa9";
    const std::string sShown = "\"\\n\\r\\t\\x1f\\x7f\\\"\\\\ caf\xc3\xa9\"";
    TOV_TEST_TEXT_EQUALS(szActual, "");
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1, "szActual|\"\"|" + sShown + "|\"\""), Heard());
}

TEST_F(TOVTestValueTest, TextEqualsShowsWideTextsAsUtf8)
{
    const wchar_t aActual[] = {'A', 0xe9, 0x20ac, 0xd83d, 0xde00, 0xd800, 0xdc00 + 0x3ff, 0xde00, 0xd801, 0};
    const CTOVStringW oActual(aActual);
    TOV_TEST_TEXT_EQUALS(oActual, L"A");
    EXPECT_EQ(Event("FailedAssertEquals", __LINE__ - 1,
                    "oActual|L\"A\"|\"A\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\xf0\x90\x8f\xbf\\ude00\\ud801\"|\"A\""),
              Heard());
}

TEST_F(TOVTestValueTest, TextEqualsEvaluatesItsOperandsOnce)
{
    int nEvaluated = 0;
    int nOther = 0;
    TOV_TEST_TEXT_EQUALS((++nEvaluated, "a"), (++nOther, "b"));

    EXPECT_EQ(2, nEvaluated + nOther);
    EXPECT_EQ(1u, Heard().size());
}
