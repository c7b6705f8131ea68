#include "Support/TOVConfirmedChecks.h"

#include <cstdlib>
#include <fstream>

void NoteConfirmedCheck(const std::string& sFile, unsigned long ulLine, const std::string& sExpression,
                        const std::string& sTestFile, int nTestLine)
{
    // The line is written at once, because the programs that run at the same time append to the same file.
    if (const char* szRecord = std::getenv("TOV_CONFIRMED_CHECKS"))
        std::ofstream(szRecord, std::ios::app) << sFile + '|' + std::to_string(ulLine) + '|' + sTestFile + '|' +
                                                      std::to_string(nTestLine) + '|' + sExpression + '\n';
}
