#include "Listeners/ListenerInstruments.h"
#include "Support/TOVShownTexts.h"

#include <ctime>

using namespace TOVDebug;

namespace
{
// A moment of local time.
std::chrono::system_clock::time_point Moment(int nHour, int nMilliseconds)
{
    std::tm oLocal = {};
    oLocal.tm_year = 2026 - 1900;
    oLocal.tm_mon = 10;
    oLocal.tm_mday = 21;
    oLocal.tm_hour = nHour;
    oLocal.tm_min = 8;
    oLocal.tm_sec = 4;
    oLocal.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&oLocal)) + std::chrono::milliseconds(nMilliseconds);
}

sTOVLogLine Line(eTOVLogKind eKind, int nSeverity, const std::string& sText)
{
    return {eKind, Moment(19, 123), "Path/Cities.cpp", 148, static_cast<eTOVDebugSeverity>(nSeverity), sText};
}
} // namespace

TEST(TOVLogLineTest, PrintsPositionSeverityLocalTimeAndText)
{
    EXPECT_EQ("Path/Cities.cpp(148) : warning: 2026-11-21 19:08:04.123 2 cities have no name",
              Line(eLogMessage, 400, "2 cities have no name").Print());
}

TEST(TOVLogLineTest, PrintsFailedChecksAndPanicsAsSuch)
{
    EXPECT_EQ("Path/Cities.cpp(148) : error: 2026-11-21 19:08:04.123 check failed: nCount > 0",
              Line(eLogCheck, 500, "nCount > 0").Print());
    EXPECT_EQ("Path/Cities.cpp(148) : fatal error: 2026-11-21 19:08:04.123 panic: no cities",
              Line(eLogPanic, 600, "no cities").Print());
}

TEST(TOVLogLineTest, NamesTheSeverities)
{
    const struct
    {
        int nSeverity;
        const char* szName;
    } aCases[] = {{100, "trace"},        {200, "info"},         {400, "warning"},     {500, "error"},
                  {600, "fatal error"},  {300, "severity 300"}, {0, "severity 0"},    {1023, "severity 1023"},
                  {550, "severity 550"}, {99, "severity 99"},   {700, "severity 700"}};
    for (const auto& oCase : aCases)
        EXPECT_EQ(Printed(oCase.szName, "text").substr(16),
                  WithoutTimes(Line(eLogMessage, oCase.nSeverity, "text").Print()).substr(16));
}

TEST(TOVLogLineTest, PadsEachPartOfTheTime)
{
    sTOVLogLine oLine = Line(eLogMessage, 200, "text");
    for (const auto& [nHour, nMilliseconds, szTime] :
         {std::tuple(0, 0, "00:08:04.000"), std::tuple(5, 7, "05:08:04.007"), std::tuple(23, 999, "23:08:04.999")})
    {
        oLine.oTime = Moment(nHour, nMilliseconds);
        EXPECT_EQ(std::string("Path/Cities.cpp(148) : info: 2026-11-21 ") + szTime + " text", oLine.Print());
    }
}

TEST(TOVLogLineTest, CutsTheTimeToWholeMilliseconds)
{
    sTOVLogLine oLine = Line(eLogMessage, 200, "text");
    oLine.oTime = Moment(19, 123) + std::chrono::microseconds(999);

    EXPECT_NE(std::string::npos, oLine.Print().find("19:08:04.123 text"));
}

TEST(TOVLogLineTest, PrintsTheLargestLineNumber)
{
    sTOVLogLine oLine = Line(eLogMessage, 200, "text");
    oLine.ulLine = 4294967295ul;

    EXPECT_EQ(0u, oLine.Print().find("Path/Cities.cpp(4294967295) : info: "));
}

TEST(TOVLogLineTest, LeavesTheTextAsItIs)
{
    for (const std::string& sText : {std::string("100% %s %n"), std::string("a\tb"), std::string("C:\\x1b"),
                                     std::string("caf\xc3\xa9 \xe2\x80\x8d"), std::string(), std::string(100000, 'x')})
    {
        const std::string sPrinted = Line(eLogMessage, 200, sText).Print();
        EXPECT_EQ("Path/Cities.cpp(148) : info: 2026-11-21 19:08:04.123 " + sText, sPrinted);
    }
}

TEST(TOVLogLineTest, PutsThePositionInFrontOfEachLineOfTheText)
{
    const std::string sHead = "Path/Cities.cpp(148) : error: 2026-11-21 19:08:04.123 check failed: ";
    const struct
    {
        const char* szText;
        std::string sPrinted;
    } aCases[] = {{"two\nlines", sHead + "two\n" + sHead + "lines"},
                  {"two\r\nlines\r\n", sHead + "two\n" + sHead + "lines"},
                  {"one\n", sHead + "one"},
                  {"\n", sHead},
                  {"\n\n", sHead + "\n" + sHead},
                  {"one\r", sHead + "one\\x0d"}};
    for (const auto& oCase : aCases)
        EXPECT_EQ(oCase.sPrinted, Line(eLogCheck, 500, oCase.szText).Print());
}

TEST(TOVLogLineTest, ShowsControlCharactersAsNumbers)
{
    EXPECT_EQ("Path/Cities.cpp(148) : info: 2026-11-21 19:08:04.123 \\x1b[31mred\\x07\\x00\\x7f\\x0d!",
              Line(eLogMessage, 200, std::string("\x1b[31mred\a\0\x7f\r!", 13)).Print());
}

TEST(TOVLogLineTest, ShowsWhatControlsATerminalOrHidesTextAsNumbers)
{
    for (const sShownText& oCase : SHOWN_TEXTS)
    {
        // In a code page, any bytes may be characters.
        if (oCase.bUtf8 || !TOV_SYSTEM_WINDOWS)
        {
            EXPECT_EQ(std::string("Path/Cities.cpp(148) : info: 2026-11-21 19:08:04.123 ") + oCase.szShown,
                      Line(eLogMessage, 200, oCase.szText).Print());
        }
    }
}

TEST(TOVLogLineTest, PrintsTheNumberOfTheThreadIfItIsKnown)
{
    sTOVLogLine oLine = Line(eLogMessage, 200, "text");
    oLine.ulThread = 4294967295ul;

    EXPECT_EQ("Path/Cities.cpp(148) : info: 2026-11-21 19:08:04.123 [4294967295] text", oLine.Print());
}

TEST(TOVLogLineTest, IsGraveFrom500AndForChecksAndPanics)
{
    EXPECT_FALSE(Line(eLogMessage, 100, "").IsGrave());
    EXPECT_FALSE(Line(eLogMessage, 499, "").IsGrave());
    EXPECT_TRUE(Line(eLogMessage, 500, "").IsGrave());
    EXPECT_TRUE(Line(eLogMessage, 600, "").IsGrave());
    EXPECT_TRUE(Line(eLogCheck, 100, "").IsGrave());
    EXPECT_TRUE(Line(eLogPanic, 100, "").IsGrave());
}
