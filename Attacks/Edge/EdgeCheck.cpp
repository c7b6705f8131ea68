#include "EdgeCheck.h"

#include <TOVDesignPatterns/TOVHandle.h>

#include <exception>
#include <thread>

namespace
{
thread_local void (*t_fnThrow)() = nullptr;

// The library asks it for a handle, and it throws.
class CThrowingDatabase : public ITOVHandleDatabase
{
public:
    CTOVHandle GetHandle(long) override
    {
        t_fnThrow();
        return CTOVHandle();
    }
    CTOVHandle GetHandle(ITOVRefCount*) override { return GetHandle(1); }
    void RemoveHandle(long) override {}
};

void ThrowThroughLibrary()
{
    CThrowingDatabase oDatabase;
    const CTOVHandle oHandle(oDatabase, 1);
}

thread_local std::exception_ptr t_pThrown;

void ThrowAgain()
{
    std::rethrow_exception(t_pThrown);
}

bool IsCaughtOnAnotherThread(void (*fnThrow)(), bool (*fnCatch)(void (*fnCall)()))
{
    std::exception_ptr pThrown;
    try
    {
        fnThrow();
    }
    catch (...)
    {
        pThrown = std::current_exception();
    }
    bool bCaught = false;
    std::thread([&] {
        t_pThrown = pThrown;
        bCaught = fnCatch(&ThrowAgain);
        t_pThrown = nullptr;
    }).join();
    return bCaught;
}

void CheckException(const sEdgeException& oThrowing, const sEdgeException& oCatching, CThreadReport& oReport)
{
    oReport.Expect(oCatching.fnCatch(oThrowing.fnThrow), oThrowing.szType);
    t_fnThrow = oThrowing.fnThrow;
    oReport.Expect(oCatching.fnCatch(&ThrowThroughLibrary), oThrowing.szType);
    oReport.Expect(IsCaughtOnAnotherThread(oThrowing.fnThrow, oCatching.fnCatch), oThrowing.szType);
}

void CheckKind(const sEdgeKind& oMaking, const sEdgeKind& oReleasing, int nNumber, CThreadReport& oReport)
{
    oReport.Expect(oReleasing.fnRelease(oMaking.fnMake(nNumber), nNumber), oMaking.szName);
    void* const pMade = oMaking.fnMake(nNumber + 1);
    std::thread([&] { oReport.Expect(oReleasing.fnRelease(pMade, nNumber + 1), oMaking.szName); }).join();
}
} // namespace

void CheckExceptions(const sEdgeException* pOther, CThreadReport& oReport)
{
    oReport.Expect(pOther != EDGE_EXCEPTIONS, "the other module has code of its own");
    for (const sEdgeException* pOwn = EDGE_EXCEPTIONS; pOwn->szType != nullptr; ++pOwn, ++pOther)
    {
        CheckException(*pOwn, *pOwn, oReport);
        CheckException(*pOwn, *pOther, oReport);
        CheckException(*pOther, *pOwn, oReport);
    }
}

void CheckMemory(const sEdgeKind* pOther, int nRounds, CThreadReport& oReport)
{
    oReport.Expect(pOther != EDGE_KINDS, "the other module has code of its own");
    for (const sEdgeKind* pOwn = EDGE_KINDS; pOwn->szName != nullptr; ++pOwn, ++pOther)
    {
        for (int nRound = 0; nRound < nRounds; ++nRound)
        {
            CheckKind(*pOwn, *pOther, 2 * nRound, oReport);
            CheckKind(*pOther, *pOwn, 2 * nRound, oReport);
        }
    }
}
