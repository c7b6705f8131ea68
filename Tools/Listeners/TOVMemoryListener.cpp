#include <Listeners/TOVMemoryListener.h>

namespace TOVDebug
{
CTOVMemoryListener::CTOVMemoryListener(long lCapacity)
    : m_nCapacity(lCapacity > 0 ? static_cast<std::size_t>(lCapacity) : 0)
{
}

CTOVMemoryListener::~CTOVMemoryListener()
{
    Unregister();
}

std::vector<sTOVLogLine> CTOVMemoryListener::GetLines() const
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    return std::vector<sTOVLogLine>(m_aLines.begin(), m_aLines.end());
}

void CTOVMemoryListener::Clear()
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    m_aLines.clear();
}

void CTOVMemoryListener::OnLine(const sTOVLogLine& oLine)
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    m_aLines.push_back(oLine);
    if (m_aLines.size() > m_nCapacity)
        m_aLines.pop_front();
}
} // namespace TOVDebug
