#include <Listeners/TOVCallbackListener.h>

#include <utility>

namespace TOVDebug
{
CTOVCallbackListener::CTOVCallbackListener(tCallback fnCallback) : m_fnCallback(std::move(fnCallback))
{
}

CTOVCallbackListener::~CTOVCallbackListener()
{
    Unregister();
}

void CTOVCallbackListener::OnLine(const sTOVLogLine& oLine)
{
    m_fnCallback(oLine);
}
} // namespace TOVDebug
