#include <TOVPlatform/TOVMemoryList.h>

#include <TOVPlatform/Backend/TOVThread.h>

#include <new>

namespace TOVPlatform
{
namespace TOVMemoryList
{
namespace
{
constexpr std::size_t NUM_SIZES = LARGEST_SIZE / 16 + 1;
constexpr std::size_t LIST_BYTES = 8192;

// A freed block holds the address of the next one in its list.
struct sFreeBlock
{
    sFreeBlock* pNext;
};

struct sLists
{
    sFreeBlock* apFirst[NUM_SIZES];
    std::size_t anRoom[NUM_SIZES]; // how many more blocks the list may hold
};

// Nothing can be taken from these or put into them, so that Allocate and Free need not ask whether the thread has lists
// of its own.
sLists s_oNotYet = {}; // the thread makes its lists when it frees its first block
sLists s_oNone = {};   // the thread uses none, or has ended

TOV_FAST_THREAD_LOCAL sLists* t_pLists = &s_oNotYet;

constexpr std::size_t GetIndex(std::size_t nSize)
{
    return (nSize + 7) / 16;
}

bool HasLists()
{
    return t_pLists != &s_oNotYet && t_pLists != &s_oNone;
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
    pLists->anRoom[0] = LIST_BYTES / 8;
    for (std::size_t nIndex = 1; nIndex < NUM_SIZES; ++nIndex)
        pLists->anRoom[nIndex] = LIST_BYTES / (16 * nIndex + 8);
    t_pLists = pLists;
}

TOV_NOINLINE void FreeWithoutRoom(void* pBlock, std::size_t nSize) noexcept
{
    if (t_pLists == &s_oNotYet)
    {
        Begin();
        Free(pBlock, nSize);
    }
    else
    {
        ::operator delete(pBlock);
    }
}
} // namespace

void* Allocate(std::size_t nSize)
{
    if (TOV_USE_MEMORY_LISTS && nSize <= LARGEST_SIZE)
    {
        sFreeBlock*& pFirst = t_pLists->apFirst[GetIndex(nSize)];
        if (sFreeBlock* const pBlock = pFirst)
        {
            pFirst = pBlock->pNext;
            ++t_pLists->anRoom[GetIndex(nSize)];
            return pBlock;
        }
    }
    return ::operator new(GetBlockSize(nSize));
}

void Free(void* pBlock, std::size_t nSize) noexcept
{
    if (!TOV_USE_MEMORY_LISTS || nSize > LARGEST_SIZE)
    {
        ::operator delete(pBlock);
        return;
    }

    std::size_t& nRoom = t_pLists->anRoom[GetIndex(nSize)];
    if (nRoom == 0)
    {
        FreeWithoutRoom(pBlock, nSize);
        return;
    }
    --nRoom;
    sFreeBlock*& pFirst = t_pLists->apFirst[GetIndex(nSize)];
    pFirst = ::new (pBlock) sFreeBlock{pFirst};
}

bool UseLists(bool bUse) noexcept
{
    const bool bUsed = TOV_USE_MEMORY_LISTS && t_pLists != &s_oNone;
    if (!TOV_USE_MEMORY_LISTS)
        return false;

    if (!bUse)
        GiveBack();
    else if (!bUsed)
        t_pLists = &s_oNotYet;
    return bUsed;
}
} // namespace TOVMemoryList
} // namespace TOVPlatform
