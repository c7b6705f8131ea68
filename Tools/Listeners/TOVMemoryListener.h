// The latest log lines in memory, for tests and for a report after a failure.
#pragma once

#include <Listeners/TOVLineListener.h>

#include <deque>
#include <mutex>
#include <vector>

namespace TOVDebug
{
// Keeps the last lines, checks and panics; an older one goes for each that comes. Its operations may be called from any
// thread, also inside a call of the server.
class CTOVMemoryListener final : public CTOVLineListener
{
public:
    ~CTOVMemoryListener() override;

    // How many are kept; 0 and below keep none.
    explicit CTOVMemoryListener(long lCapacity = 1000);

    // A copy of what is kept, oldest first.
    std::vector<sTOVLogLine> GetLines() const;

    void Clear();

protected:
    void OnLine(const sTOVLogLine& oLine) override;

private:
    const std::size_t m_nCapacity;
    mutable std::mutex m_oMutex;
    std::deque<sTOVLogLine> m_aLines;
};
} // namespace TOVDebug
