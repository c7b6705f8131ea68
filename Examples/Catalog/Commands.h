// Declares the four commands. Each returns the program's exit status, or throws CCatalogError for the status 2.
#pragma once

#include "Catalog.h"

#include <atomic>

enum eExitStatus
{
    eExitSame = 0,
    eExitDifferences = 1, // or unreadable files
    eExitFailure = 2      // wrong usage, or a broken catalogue
};

// What the commands that read files have in common.
struct sReadOptions
{
    int nThreads = 1;
    bool bQuiet = false; // neither a sum nor progress
};

struct sCreateOptions : sReadOptions
{
    CTOVStringA oCatalog;
    CNameList aDirectories;
    CNameList aPatterns;
    CNameList aExcludes;
    bool bAllowEmpty = false;
    bool bSha256 = false;
    bool bUpdate = false; // does not read files again that have the size and time of the existing catalogue
};

struct sVerifyOptions : sReadOptions
{
    CTOVStringA oName;       // of a catalogue, or of another program's list
    CTOVStringA oRelativeTo; // the directory from which relative names count; empty: the working directory
    bool bAllowEmpty = false;
    bool bJson = false;
};

enum eListForm
{
    eListText,
    eListJson,
    eListSfv,
    eListSha256Sums
};

// A catalogue without files proves nothing: it is neither written nor verified, unless bAllowEmpty.
int CreateCatalog(const sCreateOptions& oOptions, const std::atomic<bool>& bStop);
int VerifyCatalog(const sVerifyOptions& oOptions, const std::atomic<bool>& bStop);
int ListCatalog(const CTOVStringA& oName, eListForm eForm = eListText);

// Verifies the files that an .sfv or SHA256SUMS file names.
int CheckList(const sVerifyOptions& oOptions, const std::atomic<bool>& bStop);
