// Passes exceptions and memory between this program, the library and a second module.
//
//   EdgeAttack ROUNDS       memory of every kind so many times; prints the exceptions as "type NAME library" where the
//                           library itself throws them, else "type NAME application", and "kinds N wrong N"
#include "EdgeCheck.h"

#include <cstdio>
#include <cstdlib>

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 2)
        return 2;

    CThreadReport oReport;
    CheckExceptions(GetEdgeExceptions(), oReport);
    CheckMemory(GetEdgeKinds(), std::atoi(aszArguments[1]), oReport);
    for (const sEdgeException* pType = EDGE_EXCEPTIONS; pType->szType != nullptr; ++pType)
        std::printf("type %s %s\n", pType->szType, pType->bThrownByLibrary ? "library" : "application");
    int nKinds = 0;
    while (EDGE_KINDS[nKinds].szName != nullptr)
        ++nKinds;
    std::printf("kinds %d wrong %ld\n%s", nKinds, oReport.GetNumWrong(), oReport.GetTexts().c_str());
    return oReport.GetNumWrong() == 0 ? 0 : 1;
}
