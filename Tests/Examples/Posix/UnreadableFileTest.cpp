// A file that can be opened and not read: this system has one, the memory of a process.
#include "Examples/ExampleProgram.h"

TEST(UnreadableFileTest, IsNotCountedAsOneWithoutLines)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("one"), "1\n");

    const sChildResult oResult = RunExample("tovlines", {"/proc/self/mem", "one"}, oFolder.Path());

    EXPECT_EQ(1, oResult.nExitCode);
    EXPECT_EQ("       1 one\n       1 lines\n", oResult.sOutput);
    EXPECT_EQ("tovlines: /proc/self/mem cannot be read\n", oResult.sErrors);
}

TEST(UnreadableFileTest, MayHaveAnUnknownSizeOtherwise)
{
    sProgram oProgram = ExampleProgram("tovlines", {"/dev/stdin"});
    oProgram.aCommand.insert(oProgram.aCommand.begin(), {"/bin/sh", "-c", "printf '1\\n2\\n' | \"$0\" \"$@\""});

    EXPECT_EQ("       2 /dev/stdin\n       2 lines\n", RunProgram(oProgram, eErrorsApart).sOutput);
}
