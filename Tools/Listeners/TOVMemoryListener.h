// Declares CTOVMemoryListener, which keeps the latest log lines in memory, for tests and for a report after a failure.
#pragma once

#include <Listeners/TOVLineListener.h>

#include <deque>
#include <mutex>
#include <vector>

namespace TOVDebug
{
// Keeps the latest lines, checks and panics. When it is full, each new one replaces the oldest. Its operations may be
// called from any thread, even during a call by the server.
class TOV_LISTENER_EXPORT CTOVMemoryListener final : public CTOVLineListener
{
public:
    ~CTOVMemoryListener() override;

    // Keeps lCapacity lines. With 0 or a negative number, no lines are kept.
    explicit CTOVMemoryListener(long lCapacity = 1000);

    // Returns a copy of the lines, oldest first.
    std::vector<sTOVLogLine> GetLines() const;

    // Removes all lines.
    void Clear();

protected:
    void OnLine(const sTOVLogLine& oLine) override;

private:
    const std::size_t m_nCapacity;
    mutable std::mutex m_oMutex;
    std::deque<sTOVLogLine> m_aLines;
};
} // namespace TOVDebug
