#include <TestHost/TOVTestException.h>

#include <Debug/TOVDebugServer.h>
#include <Debug/TOVException.h>

#include <cstdio>
#include <exception>

namespace TOVTestHost
{
CTOVCheckListener::CTOVCheckListener()
{
    TOVDebug::CTOVDebugServer::Instance().Register(this);
}

CTOVCheckListener::~CTOVCheckListener()
{
    TOVDebug::CTOVDebugServer::Instance().Unregister(this);
}

void CTOVCheckListener::OnStartup()
{
}

void CTOVCheckListener::OnClosedown()
{
}

void CTOVCheckListener::OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list)
{
}

void CTOVCheckListener::OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression)
{
    m_sCheck = std::string(szExpression) + " (" + szFile + ":" + std::to_string(ulLine) + ")";
}

void CTOVCheckListener::OnPanicV(const char*, unsigned long, const char*, va_list)
{
}

void CTOVCheckListener::SetApplicationName(const char*)
{
}

std::string DescribeHandledException(const CTOVCheckListener* pChecks)
{
    if (std::current_exception() == nullptr)
        return "";
    try
    {
        throw;
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        return pChecks != nullptr ? "failed check " + pChecks->GetLastCheck() : "failed check";
    }
    catch (CTOVException& oException)
    {
        char szText[64];
        std::snprintf(szText, sizeof(szText), "exception of class %d, code 0x%lx",
                      static_cast<int>(oException.GetClass()), oException.GetCode());
        return szText;
    }
    catch (const std::exception& oException)
    {
        return oException.what();
    }
    catch (...)
    {
        return "";
    }
}
} // namespace TOVTestHost
