#include <Debug/TOVMSDevLogger.h>

#include <Debug/TOVDebugServer.h>
#include <TOVPlatform/Backend/TOVFormat.h>
#include <TOVPlatform/Backend/TOVSystem.h>
#include <TOVPlatform/TOVString.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <new>

namespace TOVDebug
{
namespace
{
constexpr int BUFFER_SIZE = 1024;

// All instances share this buffer; the server's lock guards it.
char s_szBuffer[BUFFER_SIZE];

// Prints into a block of the given size. Returns the number of characters, or -1 if text and terminator do not fit.
int TryPrint(char* szBuffer, int nSize, const char* szFormat, va_list pArguments)
{
    va_list pCopy;
    va_copy(pCopy, pArguments);
    const int nCount = TOVPlatform::TOVStringA::VSNPrintf(szBuffer, nSize, szFormat, pCopy);
    va_end(pCopy);
    return nCount < nSize ? nCount : -1;
}

// Returns the length of a formatted text, or -1 if the text has no narrow form or is too long for an int.
int LengthOf(const char* szFormat, va_list pArguments)
{
    va_list pCopy;
    va_copy(pCopy, pArguments);
    const int nLength = TOVPlatform::Backend::PrintedLength(szFormat, pCopy);
    va_end(pCopy);
    return nLength <= INT_MAX - 2 ? nLength : -1;
}

// Prints as much of a text as the block holds, and terminates it.
void PrintBeginning(char* szBuffer, int nSize, const char* szFormat, va_list pArguments)
{
    std::memset(szBuffer, '\0', static_cast<std::size_t>(nSize));
    TryPrint(szBuffer, nSize - 1, szFormat, pArguments);
}

// Prints the beginning of a panic into the work buffer.
void PrintPanic(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments)
{
    constexpr int MAX_NAME = BUFFER_SIZE / 2;
    const int nPrefix = TOVPlatform::TOVStringA::SNPrintf(s_szBuffer, BUFFER_SIZE, "%.*s(%d) : ", MAX_NAME, szFile,
                                                          static_cast<int>(ulLine));
    if (szFormat != nullptr)
        PrintBeginning(s_szBuffer + nPrefix, BUFFER_SIZE - nPrefix, szFormat, pArguments);
}

// The number of zeros that are passed with a text that is read as a format although there are no arguments for it.
constexpr int SPARE_ARGUMENTS = 24;

// A width or precision of more digits than these asks for a text that nobody reads.
constexpr int MAX_DIGITS = 4;

bool HasLongNumber(const char* pBegin, const char* pEnd)
{
    const auto fnIsDigit = [](char cCharacter, bool) { return '0' <= cCharacter && cCharacter <= '9'; };
    return std::search_n(pBegin, pEnd, MAX_DIGITS + 1, true, fnIsDigit) != pEnd;
}

// Returns whether a text can be read as a format whose arguments are all zeros: none of its conversions stores through
// its argument or has a number of more than MAX_DIGITS digits, and it does not need more than SPARE_ARGUMENTS
// arguments.
bool CanReadAsFormat(const char* szText)
{
    int nArguments = 0;
    for (const char* szSign = std::strchr(szText, '%'); szSign != nullptr; szSign = std::strchr(szSign, '%'))
    {
        const std::size_t nFlags = std::strspn(++szSign, "-+ #0123456789.*hlLFNwI");
        const char* const szEnd = szSign + nFlags;
        nArguments += static_cast<int>(std::count(szSign, szEnd, '*'));
        if (*szEnd == 'n' || HasLongNumber(szSign, szEnd))
            return false;
        szSign = szEnd;
        // A double percent sign needs no argument.
        if (*szSign != '%')
            ++nArguments;
        if (nArguments > SPARE_ARGUMENTS)
            return false;
        if (*szSign != '\0')
            ++szSign;
    }
    return true;
}

// Formats the message of a panic. A format that fails a check is itself used as the message, so that every panic is
// reported.
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
    // A null format fails its check, whether the line is shown or not.
    if (szFormat != nullptr && !TOVPlatform::Backend::HasDebugOutput())
        return;

    Printf("%s(%d) : ", szFile, static_cast<int>(ulLine));
    VPrintf(szFormat, pArguments);
    Printf("\n");
}

void CTOVMSDevLogger::OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression)
{
    if (!TOVPlatform::Backend::HasDebugOutput())
        return;

    Printf("******* ASSERTION *******\n%s(%d) : Expression: TOV_ASSERT( %s )\n", szFile, static_cast<int>(ulLine),
           szExpression);
}

void CTOVMSDevLogger::OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments)
{
    try
    {
        CTOVStringA oPrefix;
        oPrefix.Format("%s(%d) : ", szFile, static_cast<int>(ulLine));
        CTOVStringA oText(oPrefix);
        oText += FormatPanic(szFormat, pArguments);

        // The first zeros serve systems that pass floating-point arguments separately.
        if (CanReadAsFormat(~oText))
            Printf(~oText, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL,
                   0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL, 0LL);
        else
            Printf("%s", ~oText);
        TOVPlatform::Backend::ShowError(~oText, "Critical Application Error");
    }
    catch (const std::bad_alloc&)
    {
        // There is no memory for the whole text, so that only its beginning is written, as far as the buffer holds it.
        PrintPanic(szFile, ulLine, szFormat, pArguments);
        TOVPlatform::Backend::OutputDebugText(s_szBuffer);
        TOVPlatform::Backend::ShowError(s_szBuffer, "Critical Application Error");
    }
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
        TOVPlatform::Backend::OutputDebugText(s_szBuffer);
        return nCount;
    }

    // A text that is merely too long has a length and gets its own block. Of a text without a narrow form, and when
    // there is no memory, only the beginning is written.
    const int nLength = LengthOf(szFormat, pArguments);
    const int nSize = nLength + 2;
    const std::unique_ptr<char[]> pBuffer(nLength >= 0 ? new (std::nothrow) char[nSize] : nullptr);
    char* const szBuffer = pBuffer != nullptr ? pBuffer.get() : s_szBuffer;
    PrintBeginning(szBuffer, pBuffer != nullptr ? nSize : BUFFER_SIZE, szFormat, pArguments);
    TOVPlatform::Backend::OutputDebugText(szBuffer);
    return nLength;
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
