#include <TOVPlatform/TOVMemoryList.h>

#include <TOVPlatform/Backend/TOVThread.h>

namespace TOVPlatform
{
namespace TOVMemoryList
{
namespace
{
constexpr std::size_t LIST_BYTES = 8192;

// Nothing can be taken from these or put into them, so that Allocate and Free need not ask whether the thread has lists
// of its own. Both only read them; the one that every program uses stands with the constants that it uses anyway.
constexpr sLists NOT_YET = {}; // the thread has freed a few blocks only
sLists s_oNone = {};           // the thread uses none, or has ended

sLists* NotYet()
{
    return const_cast<sLists*>(&NOT_YET);
}

// Lists take longer to make than they save a thread that frees fewer blocks: those that start a program, for example.
constexpr unsigned int BLOCKS_BEFORE_LISTS = 32;
TOV_THREAD_LISTS_STORAGE unsigned int t_nFreedBlocks = 0;
} // namespace

TOV_THREAD_LISTS_STORAGE sLists* t_pLists = const_cast<sLists*>(&NOT_YET);

namespace
{
bool HasLists()
{
    return t_pLists != NotYet() && t_pLists != &s_oNone;
}

// Ends the calling thread's lists. An operator delete that uses strings finds none any more.
void GiveBack() noexcept
{
    sLists* const pLists = HasLists() ? t_pLists : nullptr;
    t_pLists = &s_oNone;
    if (pLists == nullptr)
        return;

    for (sFreeBlock* pBlock : pLists->apFirst)
    {
        while (pBlock != nullptr)
        {
            sFreeBlock* const pNext = pBlock->pNext;
            ::operator delete(pBlock);
            pBlock = pNext;
        }
    }
    delete pLists;
}

// The end of the process or of the library's stay in it is no end of a thread.
struct sAtExit
{
    ~sAtExit() { GiveBack(); }
};

// Makes the calling thread's lists. Without memory for them, or if nobody can say when the thread ends, it uses none.
void Begin() noexcept
{
    t_pLists = &s_oNone;
    if (!Backend::Thread::CallAtEnd(GiveBack))
        return;

    static const sAtExit s_oAtExit;
    sLists* const pLists = new (std::nothrow) sLists();
    if (pLists == nullptr)
        return;
    for (std::size_t nIndex = 0; nIndex < sLists::NUM_LISTS; ++nIndex)
        pLists->anMost[nIndex] = LIST_BYTES / (16 * nIndex + 8);
    t_pLists = pLists;
}
} // namespace

void* AllocateAnew(std::size_t nBlockSize)
{
    return ::operator new(nBlockSize);
}

void FreeWithoutRoom(void* pBlock, std::size_t nBlockSize) noexcept
{
    if (TOV_USE_MEMORY_LISTS && t_pLists == NotYet() && ++t_nFreedBlocks >= BLOCKS_BEFORE_LISTS)
    {
        Begin();
        Free(pBlock, nBlockSize);
    }
    else
    {
        ::operator delete(pBlock);
    }
}

bool UseLists(bool bUse) noexcept
{
    if (!TOV_USE_MEMORY_LISTS)
        return false;

    const bool bUsed = t_pLists != &s_oNone;
    if (!bUse)
        GiveBack();
    else if (!bUsed)
    {
        t_pLists = NotYet();
        t_nFreedBlocks = BLOCKS_BEFORE_LISTS;
    }
    return bUsed;
}
} // namespace TOVMemoryList
} // namespace TOVPlatform
