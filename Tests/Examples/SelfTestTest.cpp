#include "Examples/ExampleProgram.h"

TEST(SelfTestTest, CountsWords)
{
    EXPECT_EQ("3 words\n", RunExample("tovwords", {"a few words"}).sOutput);
    EXPECT_EQ("0 words\n", RunExample("tovwords", {""}).sOutput);
}

TEST(SelfTestTest, TestsItself)
{
    const sChildResult oResult = RunExample("tovwords", {"--self-test"});

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sErrors;
    EXPECT_EQ("passed counts words\npassed ignores spaces\npassed knows the empty text\n3 cases, 0 failed\n",
              oResult.sOutput);
}

TEST(SelfTestTest, TestsTheLibraryWhoseOneCaseFailsByDesign)
{
    const sChildResult oResult = RunExample("tovwords", {"--test-library"});

    EXPECT_EQ(1, oResult.nExitCode) << oResult.sErrors;
    EXPECT_NE(std::string::npos, oResult.sOutput.find("\n12 suites, 1 cases failed\n")) << oResult.sOutput;
}

TEST(SelfTestTest, TellsItsUsage)
{
    ExpectComplaint("usage: tovwords TEXT | --self-test | --test-library", 2, RunExample("tovwords", {}));
}
