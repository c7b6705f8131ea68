// The command lines of tovcatalog: a refusal, or options that are within their limits.
#include "Fuzz.h"

// What the program defines for itself is looked at here; its main function gets another name.
int RunTovcatalog(int nArguments, char** aszArguments);
#define main RunTovcatalog
#include <Main.cpp>
#include <algorithm>
#undef main

#include <sstream>

namespace
{
// Arguments stand between zeros.
std::vector<std::string> Split(const std::string& sArguments)
{
    std::vector<std::string> aArguments;
    std::istringstream oArguments(sArguments);
    for (std::string sArgument; std::getline(oArguments, sArgument, '\0');)
        aArguments.push_back(sArgument);
    return aArguments;
}
} // namespace

FUZZ_TARGET(CatalogCommands)
{
    CLI::App oProgram("", "tovcatalog");
    oProgram.require_subcommand(1);
    oProgram.allow_windows_style_options(false);
    sOptions oOptions;
    CLI::App* pCreate = oProgram.add_subcommand("create", "");
    CLI::App* pVerify = oProgram.add_subcommand("verify", "");
    CLI::App* pCheck = oProgram.add_subcommand("check", "");
    CLI::App* pList = oProgram.add_subcommand("list", "");
    DefineCreate(*pCreate, oOptions);
    DefineVerify(*pVerify, oOptions);
    DefineCheck(*pCheck, oOptions);
    DefineList(*pList, oOptions);
    std::vector<std::string> aArguments = Split(oInput.Rest());
    std::reverse(aArguments.begin(), aArguments.end());
    try
    {
        oProgram.parse(aArguments);
    }
    catch (const CLI::ParseError& oError)
    {
        std::ostringstream oOutput;
        oProgram.exit(oError, oOutput, oOutput);
        FUZZ_EXPECT(!oOutput.str().empty());
        return;
    }
    FUZZ_EXPECT_EQ(1, static_cast<int>(pCreate->parsed()) + static_cast<int>(pVerify->parsed()) +
                          static_cast<int>(pCheck->parsed()) + static_cast<int>(pList->parsed()));
    FUZZ_EXPECT(!oOptions.sCatalog.empty());
    FUZZ_EXPECT_EQ(pCreate->parsed(), !oOptions.aDirectories.empty());
    FUZZ_EXPECT(1 <= oOptions.nThreads && (oOptions.nThreads <= 256 || oOptions.nThreads == DefaultThreads()));
    for (const std::string& sPattern : oOptions.aPatterns)
        FUZZ_EXPECT(!sPattern.empty() && sPattern.size() <= LONGEST_NAME);
    for (const std::string& sExclude : oOptions.aExcludes)
        FUZZ_EXPECT(!sExclude.empty() && sExclude.size() <= LONGEST_NAME && sExclude.find('/') == sExclude.npos);
    FUZZ_EXPECT(oOptions.bJson + oOptions.bSfv + oOptions.bSha256Sums <= 1);
    FUZZ_EXPECT_EQ(static_cast<long>(oOptions.aPatterns.size()), ToList(oOptions.aPatterns).GetSize());
}
