#include <Listeners/TOVLineListener.h>

#include <Listeners/TOVListenerSystem.h>
#include <TOVPlatform/TOVString.h>

#include <climits>
#include <utility>

namespace TOVDebug
{
namespace
{
std::string TextOrNull(const char* szText)
{
    return szText != nullptr ? szText : "(null)";
}

std::string FormatText(const char* szFormat, va_list pArguments)
{
    if (szFormat == nullptr)
        return TextOrNull(szFormat);

    for (std::size_t nSize = 1024; nSize <= INT_MAX / 2; nSize *= 2)
    {
        std::string sText(nSize, '\0');
        va_list pCopy;
        va_copy(pCopy, pArguments);
        const int nCount = TOVPlatform::TOVString::VSNPrintf(&sText[0], static_cast<int>(nSize), szFormat, pCopy);
        va_end(pCopy);
        if (nCount >= 0)
            return sText.substr(0, static_cast<std::size_t>(nCount));
        // A text that is merely too long fills the buffer; a text without a narrow form ends before the buffer does.
        if (sText.back() == '\0')
            break;
    }
    return szFormat;
}
} // namespace

CTOVLineListener::CTOVLineListener() : m_bLost(false)
{
}

void CTOVLineListener::OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                              const char* szFormat, va_list pArguments)
{
    Format(eLogMessage, szFile, ulLine, eSeverity, szFormat, pArguments);
}

void CTOVLineListener::OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression)
{
    try
    {
        HandOn(eLogCheck, szFile, ulLine, eSeverityError, TextOrNull(szExpression));
    }
    catch (...)
    {
        NoteLoss();
    }
}

void CTOVLineListener::OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments)
{
    Format(eLogPanic, szFile, ulLine, eSeverityFatal, szFormat, pArguments);
}

bool CTOVLineListener::HasLostLines() const
{
    return m_bLost;
}

void CTOVLineListener::NoteLoss()
{
    m_bLost = true;
}

void CTOVLineListener::Format(eTOVLogKind eKind, const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                              const char* szFormat, va_list pArguments)
{
    try
    {
        HandOn(eKind, szFile, ulLine, eSeverity, FormatText(szFormat, pArguments));
    }
    catch (...)
    {
        NoteLoss();
    }
}

void CTOVLineListener::HandOn(eTOVLogKind eKind, const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                              std::string sText)
{
    OnLine({eKind, std::chrono::system_clock::now(), TextOrNull(szFile), ulLine, eSeverity, std::move(sText),
            TOVListenerSystem::CurrentThread()});
}
} // namespace TOVDebug
