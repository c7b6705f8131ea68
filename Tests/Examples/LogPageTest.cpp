#include "Examples/ExampleProgram.h"

#include <Debug/TOVDebug.h>

#include <regex>

namespace
{
// The rows of the page, with TIME in the place of each time.
std::vector<std::string> RowsOf(const std::string& sPage)
{
    std::vector<std::string> aRows;
    const std::regex oRow("<tr class=[^\n]*");
    const std::regex oTime("[0-9]{2}:[0-9]{2}:[0-9]{2}");
    for (std::sregex_iterator oFound(sPage.begin(), sPage.end(), oRow); oFound != std::sregex_iterator(); ++oFound)
        aRows.push_back(std::regex_replace(oFound->str(), oTime, "TIME"));
    return aRows;
}

std::string WithoutPlace(const std::string& sRow)
{
    return sRow.substr(0, sRow.rfind("<td>"));
}
} // namespace

TEST(LogPageTest, WritesARowForEachLineAndEscapesWhatIsInIt)
{
    const CTempFolder oFolder;

    const sChildResult oResult = RunExample("tovlogpage", {"log.html"}, oFolder.Path());

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sErrors;
    EXPECT_EQ("Open log.html in a browser.\n", oResult.sOutput);
    const std::string sPage = ReadWholeFile(oFolder.File("log.html"));
    EXPECT_EQ(0u, sPage.find("<!DOCTYPE html>"));
    const std::vector<std::string> aRows = RowsOf(sPage);
    ASSERT_EQ(6u, aRows.size()) << sPage;
    EXPECT_EQ("<tr class=trace data-severity=100><td>TIME<td>reading cities.dat", WithoutPlace(aRows[0]));
    EXPECT_EQ("<tr class=info data-severity=200><td>TIME<td>3 cities", WithoutPlace(aRows[1]));
    EXPECT_EQ("<tr class=warning data-severity=400><td>TIME<td>2 cities have no name, &lt;&quot;Bonn&quot; &amp; "
              "Beuel> has two",
              WithoutPlace(aRows[2]));
    EXPECT_EQ("<tr class=error data-severity=500><td>TIME<td>check failed: nPopulation >= 0", WithoutPlace(aRows[3]));
    EXPECT_EQ("<tr class=error data-severity=500><td>TIME<td>the population of one city is unknown",
              WithoutPlace(aRows[4]));
    EXPECT_EQ("<tr class=fatal data-severity=" + std::to_string(eSeverityFatal) + "><td>TIME<td>no city can be shown",
              WithoutPlace(aRows[5]));
    for (const std::string& sRow : aRows)
        EXPECT_NE(std::string::npos, sRow.find("<td>Examples/LogPage/Main.cpp:")) << sRow;
}

TEST(LogPageTest, TellsThatThePageCannotBeWritten)
{
    const CTempFolder oFolder;

    ExpectComplaint("tovlogpage: missing/log.html cannot be written", 1,
                    RunExample("tovlogpage", {"missing/log.html"}, oFolder.Path()));
}

#if !TOV_SYSTEM_WINDOWS
TEST(LogPageTest, TellsThatADiskIsFull)
{
    ExpectComplaint("tovlogpage: /dev/full cannot be written", 1, RunExample("tovlogpage", {"/dev/full"}));
}
#endif

TEST(LogPageTest, TellsItsUsage)
{
    ExpectComplaint("usage: tovlogpage PAGE.html", 2, RunExample("tovlogpage", {}));
}
