// Declares CTOVLineListener, the base of the listeners that receive each event as one formatted line.
#pragma once

#include <Listeners/TOVListener.h>
#include <Listeners/TOVLogLine.h>

#include <atomic>

namespace TOVDebug
{
// Formats each event, at any length and by the rules of TOVPlatform::TOVString (I64, %S and the like), and passes it to
// OnLine. An argument list is read from a copy. A null text becomes "(null)". If a wide argument cannot be converted to
// narrow text, the message is its format. No call throws, and no check fails.
class TOV_LISTENER_EXPORT CTOVLineListener : public CTOVListener
{
public:
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;

    CTOVLineListener();

    // Returns true after a line has been lost: because a write failed, a file is not open or memory is exhausted. It is
    // thread-safe.
    bool HasLostLines() const;

protected:
    // Called for each line. If it throws, the line counts as lost.
    virtual void OnLine(const sTOVLogLine& oLine) = 0;

    // Makes HasLostLines return true.
    void NoteLoss();

private:
    void Format(eTOVLogKind eKind, const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                const char* szFormat, va_list pArguments);
    void HandOn(eTOVLogKind eKind, const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                std::string sText);

    std::atomic<bool> m_bLost;
};
} // namespace TOVDebug
