// Where formatted text goes. Internal to the Posix text functions.
#pragma once

#include <algorithm>
#include <climits>

namespace TOVPlatform
{
// Counts every unit, and stores the units that the buffer has room for.
template<class tUnit> class CTOVFormatSink
{
public:
    CTOVFormatSink(tUnit* pBuffer, long long llCapacity) : m_pNext(pBuffer), m_llCapacity(llCapacity) {}

    template<class U> void Put(const U* pUnits, long long llCount)
    {
        const long long llStored = StoredCount(llCount);
        if constexpr (sizeof(U) == sizeof(tUnit))
            m_pNext = std::copy_n(pUnits, llStored, m_pNext);
        else
            m_pNext =
                std::transform(pUnits, pUnits + llStored, m_pNext, [](U cUnit) { return static_cast<tUnit>(cUnit); });
        m_llLength += llCount;
    }

    // A negative count counts as 0.
    void Fill(char cUnit, long long llCount)
    {
        if (llCount <= 0)
            return;
        m_pNext = std::fill_n(m_pNext, StoredCount(llCount), static_cast<tUnit>(cUnit));
        m_llLength += llCount;
    }

    void Fail() { m_bFailed = true; }

    bool IsFull() const { return m_llLength > m_llCapacity; }
    long long GetLength() const { return m_llLength; }

    // Terminates the text where there is room.
    void Terminate()
    {
        if (m_llLength < m_llCapacity)
            *m_pNext = 0;
    }

    // The length of the text; -1 for a text that could not be rendered or counted.
    int GetTextLength() const { return (m_bFailed || m_llLength > INT_MAX) ? -1 : static_cast<int>(m_llLength); }

    // The length of a text that fits into the buffer; otherwise -1.
    int GetStoredLength() const { return IsFull() ? -1 : GetTextLength(); }

private:
    // How many of the next units the buffer has room for.
    long long StoredCount(long long llCount) const
    {
        return std::min(llCount, std::max(m_llCapacity - m_llLength, 0LL));
    }

    tUnit* m_pNext;
    long long m_llCapacity;
    long long m_llLength = 0;
    bool m_bFailed = false;
};
} // namespace TOVPlatform
