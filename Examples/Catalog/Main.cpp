// tovcatalog finds out whether files have changed, by a catalogue of their sizes and checksums.

#include "CatalogSystem.h"
#include "Commands.h"
#include "Console.h"

#include <Debug/TOVException.h>

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <thread>

namespace
{
std::atomic<bool> g_bStop(false);

// Stops the work. A second signal ends the program at once.
void StopWork(int nSignal)
{
    std::signal(nSignal, SIG_DFL);
    g_bStop = true;
}

CTOVStringA ToString(const std::string& sText)
{
    return CTOVStringA(sText.c_str());
}

CNameList ToList(const std::vector<std::string>& aTexts)
{
    CNameList aResult;
    for (const std::string& sText : aTexts)
        aResult.Add(ToString(sText));
    return aResult;
}

// What the parser says of a wrong argument, which can have any characters.
std::string DescribeWrongUsage(const CLI::App* pProgram, const CLI::Error& oError)
{
    const std::string sMistake = oError.what();
    return ~Printable(ToString(sMistake)) + CLI::FailureMessage::simple(pProgram, oError).substr(sMistake.size());
}

int DefaultThreads()
{
    const unsigned nCores = std::thread::hardware_concurrency();
    return nCores > 0 ? static_cast<int>(nCores) : 2;
}

struct sOptions
{
    std::string sCatalog;
    std::vector<std::string> aDirectories;
    std::vector<std::string> aPatterns;
    int nThreads = DefaultThreads();
    bool bAllowEmpty = false;
};

const CLI::Validator& NotEmpty()
{
    static const CLI::Validator s_oNotEmpty([](const std::string& sText) { return sText.empty() ? "is empty" : ""; },
                                            "");
    return s_oNotEmpty;
}

void DefineThreads(CLI::App& oCommand, sOptions& oOptions)
{
    oCommand.add_option("--threads", oOptions.nThreads, "Number of threads that read")->check(CLI::Range(1, 256));
}

void DefineCreate(CLI::App& oCommand, sOptions& oOptions)
{
    const CLI::Validator oNotTooLong(
        [](const std::string& sText) { return sText.size() > LONGEST_NAME ? "is too long" : ""; }, "");
    oCommand
        .add_option("CATALOG", oOptions.sCatalog,
                    "File to write; replaced only when all went well, and not if read-only")
        ->required()
        ->check(NotEmpty());
    oCommand
        .add_option("DIRECTORY", oOptions.aDirectories, "Directories, each with its subdirectories, up to 200 levels")
        ->required()
        ->check(NotEmpty());
    oCommand.add_option("--pattern", oOptions.aPatterns, "Only files of such names, with * and ?; may be given again")
        ->allow_extra_args(false)
        ->check(NotEmpty())
        ->check(oNotTooLong);
    DefineThreads(oCommand, oOptions);
    oCommand.add_flag("--allow-empty", oOptions.bAllowEmpty, "Also write a catalogue without a file");
}

void DefineVerify(CLI::App& oCommand, sOptions& oOptions)
{
    oCommand.add_option("CATALOG", oOptions.sCatalog, "File that create has written")->required()->check(NotEmpty());
    DefineThreads(oCommand, oOptions);
    oCommand.add_flag("--allow-empty", oOptions.bAllowEmpty, "Also verify a catalogue without a file");
}

void DefineList(CLI::App& oCommand, sOptions& oOptions)
{
    oCommand.add_option("CATALOG", oOptions.sCatalog, "File that create has written")->required()->check(NotEmpty());
}

int Create(const sOptions& oGiven)
{
    sCreateOptions oOptions;
    oOptions.oCatalog = ToString(oGiven.sCatalog);
    oOptions.aDirectories = ToList(oGiven.aDirectories);
    oOptions.aPatterns = ToList(oGiven.aPatterns);
    oOptions.nThreads = oGiven.nThreads;
    oOptions.bAllowEmpty = oGiven.bAllowEmpty;
    return CreateCatalog(oOptions, g_bStop);
}

// Returns the status. Throws if the report could not be written.
int Finish(int nStatus)
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        throw CCatalogError("standard output cannot be written");
    return nStatus;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    CLI::App oProgram("Finds changed files, by a catalogue of their sizes and CRC-32 checksums.\n"
                      "Exit status: 0 same, 1 differences or unreadable files, 2 wrong usage or a broken catalogue.",
                      "tovcatalog");
    oProgram.set_version_flag("--version", "tovcatalog " TOV_VERSION);
    oProgram.require_subcommand(1);
    oProgram.failure_message(DescribeWrongUsage);
    oProgram.allow_windows_style_options(false); // "/data" is a directory on every system

    sOptions oOptions;
    CLI::App* pCreate = oProgram.add_subcommand("create", "Write the catalogue of all files below directories");
    CLI::App* pVerify = oProgram.add_subcommand("verify", "Report changed, missing and new files");
    CLI::App* pList = oProgram.add_subcommand("list", "Print a catalogue");
    DefineCreate(*pCreate, oOptions);
    DefineVerify(*pVerify, oOptions);
    DefineList(*pList, oOptions);
    try
    {
        oProgram.parse(nArguments, aszArguments);
    }
    catch (const CLI::ParseError& oError)
    {
        return oProgram.exit(oError) == 0 ? eExitSame : eExitFailure;
    }

    CatchEndSignals(&StopWork);
    try
    {
        const CTOVStringA oCatalog = ToString(oOptions.sCatalog);
        if (pCreate->parsed())
        {
            IgnoreClosedPipes(); // the new file must not be left behind
            return Finish(Create(oOptions));
        }
        if (pVerify->parsed())
            return Finish(VerifyCatalog(oCatalog, oOptions.nThreads, oOptions.bAllowEmpty, g_bStop));
        return Finish(ListCatalog(oCatalog));
    }
    catch (const std::exception& oError)
    {
        std::fprintf(stderr, "tovcatalog: %s\n", oError.what());
    }
    catch (CTOVException& oError)
    {
        std::fprintf(stderr, "tovcatalog: unexpected failure, class %d, code %lu\n", oError.GetClass(),
                     oError.GetCode());
    }
    return eExitFailure;
}
