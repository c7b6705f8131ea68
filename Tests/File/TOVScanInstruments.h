// What the tests of the file scanner share.
#pragma once

#include "Path/TOVPathInstruments.h"
#include "Support/TOVTestSupport.h"

#include <File/TOVFileScanner.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

typedef std::vector<std::string> tNames;

// Remembers the calls of a scanner's callback.
class CScanRecord
{
public:
    void Run(CTOVFileScanner& oScanner)
    {
        oScanner.Run(&Visit, static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(this)));
    }

    // What is done at each call besides; its result is the callback's.
    std::function<int(CTOVFileScanner::sTOVFileDescriptor&)> fnOnFile;

    tNames aFiles;
    tNames aDirectories;
    tNames aSearchPaths;
    std::vector<int> aModes;
    std::vector<const void*> aDescriptors;

private:
    static CTOVFileScanner::eScannerControl Visit(CTOVFileScanner::eScannerMode eMode,
                                                  CTOVFileScanner::sTOVFileDescriptor* pDescriptor,
                                                  unsigned long long ullUserValue)
    {
        CScanRecord& oRecord = *reinterpret_cast<CScanRecord*>(static_cast<std::uintptr_t>(ullUserValue));
        oRecord.aFiles.push_back(TextOf(pDescriptor->oFileName));
        oRecord.aDirectories.push_back(TextOf(pDescriptor->oDirectory));
        oRecord.aSearchPaths.push_back(TextOf(pDescriptor->oSearchPath));
        oRecord.aModes.push_back(eMode);
        oRecord.aDescriptors.push_back(pDescriptor);
        const int nResult = oRecord.fnOnFile ? oRecord.fnOnFile(*pDescriptor) : 0;
        return static_cast<CTOVFileScanner::eScannerControl>(nResult);
    }
};
