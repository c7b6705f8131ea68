#include "Examples/ExampleProgram.h"

#include <regex>

TEST(FrameLoopTest, DrawsFramesUntilItsTimeIsOver)
{
    const sChildResult oResult = RunExample("tovframes", {"300"});

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sErrors;
    // A busy machine may be late with all frames but the first.
    const std::regex oAll(
        "(\r\\|[ o]{41}\\| +[0-9]+ frames per second)+\n[1-9][0-9]* frames in [0-9]+\\.[0-9]{2} seconds\n");
    EXPECT_TRUE(std::regex_match(oResult.sOutput, oAll)) << oResult.sOutput;
}

TEST(FrameLoopTest, CountsTheFramesThatItDraws)
{
    const std::string sOutput = RunExample("tovframes", {"200"}).sOutput;

    const auto nDrawn = std::count(sOutput.begin(), sOutput.end(), '\r');
    EXPECT_NE(std::string::npos, sOutput.find("\n" + std::to_string(nDrawn) + " frames in ")) << sOutput;
}

TEST(FrameLoopTest, RefusesATimeThatNoTimeEventCanHave)
{
    const std::string sUsage = "usage: tovframes [MILLISECONDS], 1 to 65535";

    for (const char* szTime : {"0", "-5", "65536", "soon", ""})
        ExpectComplaint(sUsage, 2, RunExample("tovframes", {szTime}));
    ExpectComplaint(sUsage, 2, RunExample("tovframes", {"1", "2"}));
}
