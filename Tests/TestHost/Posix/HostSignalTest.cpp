// A signal that ends a case is named in the words that both systems share, and by its number where they have none.
#include "TestHost/HostInstruments.h"

TEST(HostSignalTest, IsNamedAsTheReason)
{
    const struct
    {
        const char* szSuite;
        const char* szReason;
    } aEnds[] = {
        {"Raise arithmetic", "crashed: arithmetic fault"},
        {"Raise illegal", "crashed: illegal instruction"},
        {"Raise interrupt", "was interrupted"},
        {"Raise terminate", "was ended by signal 15"},
    };
    for (const auto& oEnd : aEnds)
    {
        const sHostRun oRun = RunSuites("SuitesEnding", {"--filter", oEnd.szSuite});

        EXPECT_EQ(3, oRun.nExitCode) << oEnd.szSuite;
        EXPECT_TRUE(Contains(oRun.sOutput, std::string(".ends ") + oEnd.szReason + "\n")) << oRun.sOutput;
    }
}
