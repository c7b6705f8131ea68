// Declares the three commands. Each returns the program's exit status, or throws CCatalogError for the status 2.
#pragma once

#include "Catalog.h"

#include <atomic>

enum eExitStatus
{
    eExitSame = 0,
    eExitDifferences = 1, // or unreadable files
    eExitFailure = 2      // wrong usage, or a broken catalogue
};

struct sCreateOptions
{
    CTOVStringA oCatalog;
    CNameList aDirectories;
    CNameList aPatterns;
    int nThreads = 1;
    bool bAllowEmpty = false;
};

// A catalogue without files proves nothing: it is neither written nor verified, unless bAllowEmpty.
int CreateCatalog(const sCreateOptions& oOptions, const std::atomic<bool>& bStop);
int VerifyCatalog(const CTOVStringA& oName, int nThreads, bool bAllowEmpty, const std::atomic<bool>& bStop);
int ListCatalog(const CTOVStringA& oName);
