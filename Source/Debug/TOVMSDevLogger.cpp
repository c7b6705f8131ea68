#include <Debug/TOVMSDevLogger.h>

#include <Debug/TOVDebugServer.h>
#include <TOVPlatform/TOVString.h>
#include <TOVPlatform/TOVSystem.h>

#include <cstring>
#include <vector>

namespace TOVDebug
{
namespace
{
const int BUFFER_SIZE = 1024;
const int LONGEST_LINE = 16 * 1024 * 1024;

// Shared by all instances; guarded by the server's lock.
char s_szBuffer[BUFFER_SIZE];

// Prints into a block of the given size. Returns the count, or -1 if text and terminator do not fit.
int TryPrint(char* szBuffer, int nSize, const char* szFormat, va_list pArguments)
{
    va_list pCopy;
    va_copy(pCopy, pArguments);
    const int nCount = TOVPlatform::TOVStringA::VSNPrintf(szBuffer, nSize, szFormat, pCopy);
    va_end(pCopy);
    return nCount < nSize ? nCount : -1;
}

// How often a text without arguments may be read as a format that finds zeros: each conversion takes three at most.
const int SPARE_ARGUMENTS = 24;
const int MOST_CONVERSIONS = SPARE_ARGUMENTS / 3;

// Whether a text can be read as a format for which there are only zeros: none of its conversions stores through its
// argument, and there are not too many of them.
bool CanReadAsFormat(const char* szText)
{
    int nConversions = 0;
    for (const char* szSign = std::strchr(szText, '%'); szSign != nullptr; szSign = std::strchr(szSign, '%'))
    {
        ++szSign;
        szSign += std::strspn(szSign, "-+ #0123456789.*hlLFNwI");
        if (*szSign == 'n' || ++nConversions > MOST_CONVERSIONS)
            return false;
        if (*szSign != '\0')
            ++szSign;
    }
    return true;
}

// A panic comes to its end whatever its format is: one that cannot be used is the message as it stands.
CTOVStringA FormatPanic(const char* szFormat, va_list pArguments)
{
    CTOVStringA oMessage;
    if (szFormat == nullptr || *szFormat == '\0')
        return oMessage;

    try
    {
        oMessage.FormatV(szFormat, pArguments);
    }
    catch (const CTOVAssertException&)
    {
        oMessage = szFormat;
    }
    return oMessage;
}
} // namespace

CTOVMSDevLogger::CTOVMSDevLogger()
{
    CTOVDebugServer::Instance().Register(this);
}

CTOVMSDevLogger::CTOVMSDevLogger(const CTOVMSDevLogger& oOther) = default;
CTOVMSDevLogger& CTOVMSDevLogger::operator=(const CTOVMSDevLogger& oOther) = default;

CTOVMSDevLogger::~CTOVMSDevLogger() noexcept(false)
{
    CTOVDebugServer::Instance().Unregister(this);
}

void CTOVMSDevLogger::OnStartup()
{
}

void CTOVMSDevLogger::OnClosedown()
{
}

void CTOVMSDevLogger::OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity /*eSeverity*/,
                             const char* szFormat, va_list pArguments)
{
    Printf("%s(%d) : ", szFile, static_cast<int>(ulLine));
    VPrintf(szFormat, pArguments);
    Printf("\n");
}

void CTOVMSDevLogger::OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression)
{
    Printf("******* ASSERTION *******\n%s(%d) : Expression: TOV_ASSERT( %s )\n", szFile, static_cast<int>(ulLine),
           szExpression);
}

void CTOVMSDevLogger::OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments)
{
    CTOVStringA oPrefix;
    oPrefix.Format("%s(%d) : ", szFile, static_cast<int>(ulLine));
    CTOVStringA oText(oPrefix);
    oText += FormatPanic(szFormat, pArguments);

    if (CanReadAsFormat(~oText))
        Printf(~oText, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL,
               0LL, 0LL, 0LL, 0LL, 0LL);
    else
        Printf("%s", ~oText);
    TOVPlatform::TOVSystem::ShowError(~oText, "Critical Application Error");
}

void CTOVMSDevLogger::SetApplicationName(const char* szName)
{
    m_oApplicationName = szName;
}

int CTOVMSDevLogger::VPrintf(const char* szFormat, va_list pArguments)
{
    int nCount = TryPrint(s_szBuffer, BUFFER_SIZE, szFormat, pArguments);
    if (nCount >= 0)
    {
        TOVPlatform::TOVSystem::OutputDebugText(s_szBuffer);
        return nCount;
    }

    std::vector<char> aBuffer;
    for (int nSize = 2 * BUFFER_SIZE; nCount < 0 && nSize <= LONGEST_LINE; nSize *= 2)
    {
        aBuffer.assign(nSize, '\0');
        nCount = TryPrint(aBuffer.data(), nSize - 1, szFormat, pArguments);
    }
    TOVPlatform::TOVSystem::OutputDebugText(aBuffer.data());
    return nCount;
}

int CTOVMSDevLogger::Printf(const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nCount = VPrintf(szFormat, pArguments);
    va_end(pArguments);
    return nCount;
}
} // namespace TOVDebug
