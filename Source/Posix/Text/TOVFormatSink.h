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
    CTOVFormatSink(tUnit* pBuffer, long long llCapacity) : m_pBuffer(pBuffer), m_llCapacity(llCapacity) {}

    template<class U> void Put(const U* pUnits, long long llCount)
    {
        std::transform(pUnits, pUnits + StoredCount(llCount), m_pBuffer + StoredLength(),
                       [](U cUnit) { return static_cast<tUnit>(cUnit); });
        m_llLength += llCount;
    }

    // A negative count counts as 0.
    void Fill(char cUnit, long long llCount)
    {
        llCount = std::max(llCount, 0LL);
        std::fill_n(m_pBuffer + StoredLength(), StoredCount(llCount), static_cast<tUnit>(cUnit));
        m_llLength += llCount;
    }

    void Fail() { m_bFailed = true; }

    bool IsFull() const { return m_llLength > m_llCapacity; }
    long long GetLength() const { return m_llLength; }

    // Terminates the text where there is room.
    void Terminate()
    {
        if (m_llLength < m_llCapacity)
            m_pBuffer[m_llLength] = 0;
    }

    // The length of the text; -1 for a text that could not be rendered or counted.
    int GetTextLength() const { return (m_bFailed || m_llLength > INT_MAX) ? -1 : static_cast<int>(m_llLength); }

    // The length of a text that fits into the buffer; otherwise -1.
    int GetStoredLength() const { return IsFull() ? -1 : GetTextLength(); }

private:
    long long StoredLength() const { return std::min(m_llLength, m_llCapacity); }
    long long StoredCount(long long llCount) const { return std::min(llCount, m_llCapacity - StoredLength()); }

    tUnit* m_pBuffer;
    long long m_llCapacity;
    long long m_llLength = 0;
    bool m_bFailed = false;
};
} // namespace TOVPlatform
