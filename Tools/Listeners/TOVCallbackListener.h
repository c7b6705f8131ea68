// Declares CTOVCallbackListener, which passes each log line to a function of the application.
#pragma once

#include <Listeners/TOVLineListener.h>

#include <functional>

namespace TOVDebug
{
// Passes each line, check and panic to a function, for a window, a test or another logger. The server calls it from the
// thread that logs, one line at a time. If the function throws, the line counts as lost. An empty function loses all
// lines.
class TOV_LISTENER_EXPORT CTOVCallbackListener final : public CTOVLineListener
{
public:
    // A function that receives a line.
    typedef std::function<void(const sTOVLogLine& oLine)> tCallback;

    ~CTOVCallbackListener() override;

    // Keeps a copy of the function.
    explicit CTOVCallbackListener(tCallback fnCallback);

protected:
    void OnLine(const sTOVLogLine& oLine) override;

private:
    const tCallback m_fnCallback;
};
} // namespace TOVDebug
