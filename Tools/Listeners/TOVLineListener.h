// Base of the listeners that take each event as one finished line.
#pragma once

#include <Listeners/TOVListener.h>
#include <Listeners/TOVLogLine.h>

#include <atomic>

namespace TOVDebug
{
// Formats each event, at any length and by the rules of TOVPlatform::TOVString (I64, %S and their fellows), and hands
// it on. An argument list is read from a copy. Null texts read "(null)"; a message that has no narrow form reads as its
// format. Nothing is thrown out of a call, and no check is raised.
class CTOVLineListener : public CTOVListener
{
public:
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;

    CTOVLineListener();

    // True once a line has been lost: a write failed, a file is not open, memory has run out. Thread-safe.
    bool HasLostLines() const;

protected:
    // Takes one line. What it throws counts as a lost line.
    virtual void OnLine(const sTOVLogLine& oLine) = 0;

    void NoteLoss();

private:
    void Format(eTOVLogKind eKind, const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                const char* szFormat, va_list pArguments);
    void HandOn(eTOVLogKind eKind, const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                std::string sText);

    std::atomic<bool> m_bLost;
};
} // namespace TOVDebug
