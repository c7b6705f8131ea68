#include <TOVRtti/TOVClassIndex.h>

#include <cstring>
#include <memory>
#include <new>

namespace
{
template<class TWord> TWord ReadWord(const char* pText)
{
    TWord nWord;
    std::memcpy(&nWord, pText, sizeof(nWord));
    return nWord;
}

// Calls a function with all characters of a text, in words of 8; the last two may overlap. A short text gives one word.
template<class TFunction> void ForEachWord(const char* szText, std::size_t nLength, TFunction fnWord)
{
    constexpr std::size_t WORD = sizeof(std::uint64_t);
    if (nLength >= WORD)
    {
        for (std::size_t nPos = 0; nPos < nLength - WORD; nPos += WORD)
            fnWord(ReadWord<std::uint64_t>(szText + nPos));
        fnWord(ReadWord<std::uint64_t>(szText + nLength - WORD));
    }
    else if (nLength >= WORD / 2)
    {
        const std::uint64_t nHigh = ReadWord<std::uint32_t>(szText);
        fnWord(nHigh << 32 | ReadWord<std::uint32_t>(szText + nLength - WORD / 2));
    }
    else if (nLength > 0)
    {
        std::uint64_t nWord = 0;
        for (std::size_t nPos = 0; nPos < nLength; ++nPos)
            nWord = nWord << 8 | static_cast<unsigned char>(szText[nPos]);
        fnWord(nWord);
    }
}

// The words are multiplied independently of each other, so that the processor can do it at the same time.
std::uint32_t HashOf(const char* szName, std::size_t nLength)
{
    constexpr std::uint64_t FACTOR = 0x9E3779B97F4A7C15u; // 2^64 divided by the golden ratio
    std::uint64_t nHash = nLength;
    ForEachWord(szName, nLength, [&nHash](std::uint64_t nWord) {
        const std::uint64_t nProduct = nWord * FACTOR;
        nHash = (nHash << 23 | nHash >> 41) + (nProduct ^ nProduct >> 32);
    });
    nHash *= FACTOR;
    return static_cast<std::uint32_t>(nHash >> 32);
}
} // namespace

// The slots are made and freed by the functions that every program uses anyway, since the loader looks for each other
// one.
CTOVClassIndex::sSlot* CTOVClassIndex::NewSlots(std::size_t nNumSlots)
{
    try
    {
        sSlot* const pSlots = std::allocator<sSlot>().allocate(nNumSlots);
        std::uninitialized_value_construct_n(pSlots, nNumSlots);
        return pSlots;
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}

void CTOVClassIndex::FreeSlots()
{
    if (m_pSlots != nullptr)
        std::allocator<sSlot>().deallocate(m_pSlots, m_nNumSlots);
}

CTOVClass* CTOVClassIndex::Find(const char* szName) const
{
    if (m_nNumEntries == 0)
        return nullptr;

    const std::size_t nLength = std::strlen(szName);
    const sSlot& oSlot = m_pSlots[FindSlot(szName, nLength, HashOf(szName, nLength))];
    return oSlot.szName != nullptr ? oSlot.pClass : nullptr;
}

void CTOVClassIndex::Set(const char* szName, CTOVClass* pClass)
{
    if (2 * (m_nNumEntries + 1) > m_nNumSlots && !Grow())
        return;

    const std::size_t nLength = std::strlen(szName);
    const std::uint32_t nHash = HashOf(szName, nLength);
    sSlot& oSlot = m_pSlots[FindSlot(szName, nLength, nHash)];
    m_nNumEntries += oSlot.szName == nullptr ? 1 : 0;
    oSlot = {szName, pClass, nHash, static_cast<std::uint32_t>(nLength)};
}

void CTOVClassIndex::Remove(const char* szName)
{
    if (m_nNumEntries == 0)
        return;

    const std::size_t nLength = std::strlen(szName);
    std::size_t nSlot = FindSlot(szName, nLength, HashOf(szName, nLength));
    // Whoever shares the block of a name can have changed the text, and then the hash is another one.
    for (std::size_t nLeft = m_nNumSlots; m_pSlots[nSlot].szName != szName; nSlot = GetNextSlot(nSlot))
    {
        if (nLeft-- == 0)
            return;
    }
    RemoveSlot(nSlot);
    if (m_nNumEntries == 0)
        RemoveAll();
}

void CTOVClassIndex::RemoveAll()
{
    FreeSlots();
    *this = CTOVClassIndex();
}

std::size_t CTOVClassIndex::FindSlot(const char* szName, std::size_t nLength, std::uint32_t nHash) const
{
    std::size_t nSlot = nHash & (m_nNumSlots - 1);
    for (; m_pSlots[nSlot].szName != nullptr; nSlot = GetNextSlot(nSlot))
    {
        const sSlot& oSlot = m_pSlots[nSlot];
        if (oSlot.nHash == nHash && oSlot.nLength == nLength && std::strcmp(oSlot.szName, szName) == 0)
            break;
    }
    return nSlot;
}

bool CTOVClassIndex::Grow()
{
    constexpr std::size_t MIN_SLOTS = 32;
    CTOVClassIndex oGrown = {};
    oGrown.m_nNumSlots = m_nNumSlots > 0 ? 2 * m_nNumSlots : MIN_SLOTS;
    oGrown.m_pSlots = NewSlots(oGrown.m_nNumSlots);
    if (oGrown.m_pSlots == nullptr)
        return false;

    for (std::size_t nSlot = 0; nSlot < m_nNumSlots; ++nSlot)
    {
        const sSlot& oSlot = m_pSlots[nSlot];
        if (oSlot.szName != nullptr)
            oGrown.m_pSlots[oGrown.FindSlot(oSlot.szName, oSlot.nLength, oSlot.nHash)] = oSlot;
    }
    oGrown.m_nNumEntries = m_nNumEntries;
    FreeSlots();
    *this = oGrown;
    return true;
}

// Entries after the slot move up if their search would end at the slot, so that it never ends too early.
void CTOVClassIndex::RemoveSlot(std::size_t nSlot)
{
    std::size_t nFree = nSlot;
    for (std::size_t nNext = GetNextSlot(nSlot); m_pSlots[nNext].szName != nullptr; nNext = GetNextSlot(nNext))
    {
        const std::size_t nMask = m_nNumSlots - 1;
        const std::size_t nHome = m_pSlots[nNext].nHash & nMask;
        if (((nNext - nHome) & nMask) >= ((nNext - nFree) & nMask))
        {
            m_pSlots[nFree] = m_pSlots[nNext];
            nFree = nNext;
        }
    }
    m_pSlots[nFree] = sSlot();
    --m_nNumEntries;
}
