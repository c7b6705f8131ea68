#include "Support/TOVExhaustedSystem.h"

#include "Support/TOVConfirmedChecks.h"

#include <Debug/TOVDebugServer.h>

#include <cstdio>

#if TOV_CAN_FAIL_ALLOCATIONS
static void CopyText(char (&szTarget)[256], const char* szSource)
{
    std::snprintf(szTarget, sizeof(szTarget), "%s", szSource);
}

CQuietRecorder::CQuietRecorder(const char* szTestFile, int nTestLine) : m_szTestFile(szTestFile), m_nTestLine(nTestLine)
{
    TOVDebug::CTOVDebugServer::Instance().Register(this);
}

CQuietRecorder::~CQuietRecorder()
{
    TOVDebug::CTOVDebugServer::Instance().Unregister(this);
    if (m_ulCheckLine != 0) // memory is not short any more
        NoteConfirmedCheck(m_szFile, m_ulCheckLine, m_szText, m_szTestFile, m_nTestLine);
}

void CQuietRecorder::OnStartup()
{
}

void CQuietRecorder::OnClosedown()
{
}

void CQuietRecorder::OnLogV(const char* szFile, unsigned long, eTOVDebugSeverity eSeverity, const char* szFormat,
                            va_list pArguments)
{
    CopyText(m_szFile, szFile);
    CopyText(m_szFormat, szFormat);
    std::vsnprintf(m_szText, sizeof(m_szText), szFormat, pArguments);
    m_nSeverity = eSeverity;
    m_ulCheckLine = 0;
    ++m_nCount;
}

void CQuietRecorder::OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression)
{
    CopyText(m_szFile, szFile);
    std::snprintf(m_szText, sizeof(m_szText), "%s", szExpression);
    m_ulCheckLine = ulLine;
    ++m_nCount;
}

void CQuietRecorder::OnPanicV(const char*, unsigned long, const char*, va_list)
{
}

void CQuietRecorder::SetApplicationName(const char*)
{
}
#endif
