// tovcatalog finds out whether files have changed, by a catalogue of their sizes and checksums.

#include "CatalogSystem.h"
#include "Commands.h"
#include "Console.h"

#include <Debug/TOVException.h>
#include <Text/TOVStandardOutput.h>

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
        aResult.Add(sText);
    return aResult;
}

// What the parser says of a wrong argument, which can have any characters.
std::string DescribeWrongUsage(const CLI::App* pProgram, const CLI::Error& oError)
{
    const std::string sMistake = oError.what();
    return "tovcatalog: " + std::string(~Printable(ToString(sMistake))) +
           CLI::FailureMessage::simple(pProgram, oError).substr(sMistake.size());
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
    std::vector<std::string> aExcludes;
    std::string sRelativeTo;
    int nThreads = DefaultThreads();
    bool bAllowEmpty = false;
    bool bSha256 = false;
    bool bUpdate = false;
    bool bQuiet = false;
    bool bJson = false;
    bool bSfv = false;
    bool bSha256Sums = false;
};

const CLI::Validator& NotEmpty()
{
    static const CLI::Validator s_oNotEmpty([](const std::string& sText) { return sText.empty() ? "is empty" : ""; },
                                            "");
    return s_oNotEmpty;
}

// A pattern can be given again with its option, which takes one value each time.
CLI::Option* DefinePatterns(CLI::App& oCommand, const char* szOption, std::vector<std::string>& aPatterns,
                            const char* szDescription)
{
    const CLI::Validator oNotTooLong(
        [](const std::string& sText) { return sText.size() > LONGEST_NAME ? "is too long" : ""; }, "");
    return oCommand.add_option(szOption, aPatterns, szDescription)
        ->allow_extra_args(false)
        ->check(NotEmpty())
        ->check(oNotTooLong);
}

void DefineReading(CLI::App& oCommand, sOptions& oOptions)
{
    oCommand.add_option("--threads", oOptions.nThreads, "Number of threads that read")->check(CLI::Range(1, 256));
    oCommand.add_flag("--quiet", oOptions.bQuiet, "No sum at the end and no progress");
}

void DefineComparing(CLI::App& oCommand, sOptions& oOptions)
{
    DefineReading(oCommand, oOptions);
    oCommand
        .add_option("--relative-to", oOptions.sRelativeTo,
                    "The directory from which relative names count, instead of the present one")
        ->check(NotEmpty());
    oCommand.add_flag("--json", oOptions.bJson, "Print JSON");
}

void DefineCreate(CLI::App& oCommand, sOptions& oOptions)
{
    oCommand
        .add_option("CATALOG", oOptions.sCatalog,
                    "File to write; replaced only when all went well, and not if read-only")
        ->required()
        ->check(NotEmpty());
    oCommand
        .add_option("DIRECTORY", oOptions.aDirectories, "Directories, each with its subdirectories, up to 200 levels")
        ->required()
        ->check(NotEmpty());
    DefinePatterns(oCommand, "--pattern", oOptions.aPatterns,
                   "Only files of such names, with * and ?; may be given again");
    DefinePatterns(oCommand, "--exclude", oOptions.aExcludes,
                   "No files and directories of such names; may be given again")
        ->check(CLI::Validator(
            [](const std::string& sText) {
                return sText.find_first_of("/\\") != sText.npos ? "has a separator, and only names are compared" : "";
            },
            ""));
    DefineReading(oCommand, oOptions);
    oCommand.add_flag("--allow-empty", oOptions.bAllowEmpty, "Also write a catalogue without a file");
    oCommand.add_flag("--sha256", oOptions.bSha256, "SHA-256 besides CRC-32, which shows intentional changes too");
    oCommand.add_flag(
        "--update", oOptions.bUpdate,
        "Keep times of files, and do not read again those with the size and time in the existing catalogue");
}

void DefineVerify(CLI::App& oCommand, sOptions& oOptions)
{
    oCommand.add_option("CATALOG", oOptions.sCatalog, "File that create has written")->required()->check(NotEmpty());
    DefineComparing(oCommand, oOptions);
    oCommand.add_flag("--allow-empty", oOptions.bAllowEmpty, "Also verify a catalogue without a file");
}

void DefineCheck(CLI::App& oCommand, sOptions& oOptions)
{
    oCommand
        .add_option("LIST", oOptions.sCatalog,
                    "An .sfv file, or a file with SHA-256 as sha256sum writes it; - is standard input")
        ->required()
        ->check(NotEmpty());
    DefineComparing(oCommand, oOptions);
}

void DefineList(CLI::App& oCommand, sOptions& oOptions)
{
    oCommand.add_option("CATALOG", oOptions.sCatalog, "File that create has written")->required()->check(NotEmpty());
    CLI::Option* pJson = oCommand.add_flag("--json", oOptions.bJson, "Print JSON");
    CLI::Option* pSfv = oCommand.add_flag("--sfv", oOptions.bSfv, "Print an .sfv file");
    oCommand.add_flag("--sha256sums", oOptions.bSha256Sums, "Print a SHA256SUMS file")->excludes(pJson, pSfv);
    pSfv->excludes(pJson);
}

int Create(const sOptions& oGiven)
{
    sCreateOptions oOptions;
    oOptions.oCatalog = ToString(oGiven.sCatalog);
    oOptions.aDirectories = ToList(oGiven.aDirectories);
    oOptions.aPatterns = ToList(oGiven.aPatterns);
    oOptions.aExcludes = ToList(oGiven.aExcludes);
    oOptions.nThreads = oGiven.nThreads;
    oOptions.bQuiet = oGiven.bQuiet;
    oOptions.bAllowEmpty = oGiven.bAllowEmpty;
    oOptions.bSha256 = oGiven.bSha256;
    oOptions.bUpdate = oGiven.bUpdate;
    return CreateCatalog(oOptions, g_bStop);
}

sVerifyOptions ToVerifyOptions(const sOptions& oGiven)
{
    sVerifyOptions oOptions;
    oOptions.oName = ToString(oGiven.sCatalog);
    oOptions.oRelativeTo = ToString(oGiven.sRelativeTo);
    oOptions.nThreads = oGiven.nThreads;
    oOptions.bQuiet = oGiven.bQuiet;
    oOptions.bAllowEmpty = oGiven.bAllowEmpty;
    oOptions.bJson = oGiven.bJson;
    return oOptions;
}

int List(const sOptions& oGiven)
{
    const eListForm eForm = oGiven.bJson         ? eListJson
                            : oGiven.bSfv        ? eListSfv
                            : oGiven.bSha256Sums ? eListSha256Sums
                                                 : eListText;
    return ListCatalog(ToString(oGiven.sCatalog), eForm);
}

// Does what the command line says, and returns the status.
int Run(int nArguments, char** aszArguments)
{
    CLI::App oProgram("Finds changed files, by a catalogue of their sizes and checksums.\n"
                      "Exit status: 0 same, 1 differences or unreadable files, 2 wrong usage or a broken catalogue.",
                      "tovcatalog");
    oProgram.set_version_flag("--version", "tovcatalog " TOV_VERSION);
    oProgram.require_subcommand(0, 1); // none is refused below, so that an unknown one is named
    oProgram.failure_message(DescribeWrongUsage);
    oProgram.allow_windows_style_options(false); // "/data" is a directory on every system

    sOptions oOptions;
    CLI::App* pCreate = oProgram.add_subcommand("create", "Write the catalogue of all files below directories");
    CLI::App* pVerify = oProgram.add_subcommand("verify", "Report changed, missing and new files");
    CLI::App* pCheck = oProgram.add_subcommand("check", "Verify the files of another program's list");
    CLI::App* pList = oProgram.add_subcommand("list", "Print a catalogue, or a list for other programs");
    DefineCreate(*pCreate, oOptions);
    DefineVerify(*pVerify, oOptions);
    DefineCheck(*pCheck, oOptions);
    DefineList(*pList, oOptions);
    try
    {
        oProgram.parse(nArguments, aszArguments);
        if (oProgram.get_subcommands().empty())
            throw CLI::RequiredError("A command (create, verify, check or list)");
    }
    catch (const CLI::ParseError& oError)
    {
        return oProgram.exit(oError) == 0 ? eExitSame : eExitFailure; // 0: it has printed the help or the version
    }

    CatchEndSignals(&StopWork);
    if (pCreate->parsed())
    {
        IgnoreClosedPipes(); // one would end the program before it removes its new file
        return Create(oOptions);
    }
    if (pVerify->parsed())
        return VerifyCatalog(ToVerifyOptions(oOptions), g_bStop);
    if (pCheck->parsed())
        return CheckList(ToVerifyOptions(oOptions), g_bStop);
    return List(oOptions);
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    try
    {
        const int nStatus = Run(nArguments, aszArguments);
        if (!TOVShownText::FinishOutput())
            throw CCatalogError("standard output cannot be written");
        return nStatus;
    }
    catch (const std::exception& oError)
    {
        std::fprintf(stderr, "tovcatalog: %s\n", oError.what());
    }
    // GCOVR_EXCL_START: the commands let no other exception through.
    catch (CTOVException& oError)
    {
        std::fprintf(stderr, "tovcatalog: unexpected failure, class %d, code %lu\n", oError.GetClass(),
                     oError.GetCode());
    }
    // GCOVR_EXCL_STOP
    return eExitFailure;
}
