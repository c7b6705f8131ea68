// The example of the document does what the document says.
#include "Listeners/ListenerInstruments.h"
#include "Support/TOVChildProcess.h"

namespace
{
// What the example itself logs, without the positions in its source.
tLines TextsOfExample(const std::string& sText)
{
    tLines aTexts;
    for (std::string sLine : LinesOf(WithoutTimes(sText)))
    {
        const std::size_t nEnd = sLine.find(") : ");
        if (sLine.find("ListenersExample.cpp(") == std::string::npos || nEnd == std::string::npos)
            continue;
        sLine.erase(sLine.find_last_not_of('\r') + 1); // of its file on Windows
        aTexts.push_back(sLine.substr(nEnd + 4));
    }
    return aTexts;
}
} // namespace

TEST(ListenersDocumentTest, TheExampleLogsEverythingToItsFileAndWarningsToTheConsole)
{
    const CTempFolder oFolder;

    const sChildResult oResult = RunProgram({{PathBesideThisProgram(TOV_EXAMPLE)}, oFolder.Path(), NO_LEAK_CHECK});

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
    const std::string sInfo = "info: TIME atlas starts";
    const std::string sWarning = "warning: TIME 2 cities have no name";
    EXPECT_EQ((tLines{sWarning}), TextsOfExample(oResult.sOutput));
    EXPECT_EQ((tLines{sInfo, sWarning}), TextsOfExample(ReadWholeFile(oFolder.File("atlas.log"))));
}
