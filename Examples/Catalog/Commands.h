// The three commands. Each returns the program's exit status, and throws CCatalogError for a status of 2.
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
    CTOVArray<CTOVStringA> aDirectories;
    CTOVArray<CTOVStringA> aPatterns;
    int nThreads = 1;
    bool bAllowEmpty = false;
};

// A catalogue without files proves nothing: unless bAllowEmpty, none is written, and none is verified.
int CreateCatalog(const sCreateOptions& oOptions, const std::atomic<bool>& bStop);
int VerifyCatalog(const CTOVStringA& oName, int nThreads, bool bAllowEmpty, const std::atomic<bool>& bStop);
int ListCatalog(const CTOVStringA& oName);
