#include "Support/TOVTestSupport.h"

#include "Support/TOVConfirmedChecks.h"

#include <TOVPlatform/TOVString.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>

namespace
{
std::string FormatText(const char* szFormat, va_list pArguments)
{
    std::vector<char> aBuffer(65536);
    const int nCount =
        TOVPlatform::TOVStringA::VSNPrintf(aBuffer.data(), static_cast<int>(aBuffer.size()), szFormat, pArguments);
    return nCount < 0 ? std::string("<does not fit>") : std::string(aBuffer.data(), static_cast<std::size_t>(nCount));
}

std::string Text(const char* szText)
{
    return szText != nullptr ? szText : "<null>";
}
} // namespace

CLogRecorder::CLogRecorder()
{
    TOVDebug::CTOVDebugServer::Instance().Register(this);
}

CLogRecorder::~CLogRecorder()
{
    TOVDebug::CTOVDebugServer::Instance().Unregister(this);
}

void CLogRecorder::OnStartup()
{
}

void CLogRecorder::OnClosedown()
{
}

void CLogRecorder::OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                          va_list pArguments)
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    m_aLines.push_back({Text(szFile), ulLine, eSeverity, FormatText(szFormat, pArguments)});
}

void CLogRecorder::OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression)
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    m_aChecks.push_back({Text(szFile), ulLine, Text(szExpression)});
}

void CLogRecorder::OnPanicV(const char*, unsigned long, const char*, va_list)
{
}

void CLogRecorder::SetApplicationName(const char*)
{
}

std::vector<sLogLine> CLogRecorder::Lines() const
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    return m_aLines;
}

std::vector<sCheck> CLogRecorder::Checks() const
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    return m_aChecks;
}

int CLogRecorder::CountLines(const std::string& sPart) const
{
    int nCount = 0;
    for (const sLogLine& oLine : Lines())
        nCount += oLine.sText.find(sPart) != std::string::npos ? 1 : 0;
    return nCount;
}

bool CLogRecorder::SawCheck(const std::string& sFilePart, const std::string& sExpression, const char* szTestFile,
                            int nTestLine) const
{
    const std::vector<sCheck> aChecks = Checks();
    if (aChecks.empty())
        return false;
    const sCheck& oLast = aChecks.back();
    if (oLast.sExpression != sExpression || oLast.sFile.find(sFilePart) == std::string::npos || oLast.ulLine == 0)
        return false;
    NoteConfirmedCheck(oLast.sFile, oLast.ulLine, oLast.sExpression, szTestFile, nTestLine);
    return true;
}

std::string CLogRecorder::DescribeChecks() const
{
    std::ostringstream oText;
    for (const sCheck& oCheck : Checks())
        oText << oCheck.sFile << '(' << oCheck.ulLine << "): " << oCheck.sExpression << '\n';
    return oText.str().empty() ? "none" : oText.str();
}

CTempFolder::CTempFolder()
{
    static std::atomic<unsigned> s_nNext(std::random_device{}());
    std::filesystem::path oPath;
    do
        oPath = std::filesystem::temp_directory_path() / ("tovkernel-test-" + std::to_string(++s_nNext));
    while (!std::filesystem::create_directory(oPath));
    m_sPath = oPath.string();
}

CTempFolder::~CTempFolder()
{
    std::error_code oIgnored;
    for (const auto& oEntry : std::filesystem::recursive_directory_iterator(m_sPath, oIgnored))
    {
        std::error_code oIgnoredToo;
        if (!oEntry.is_symlink())
            std::filesystem::permissions(oEntry, std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                                         oIgnoredToo);
    }
    std::filesystem::remove_all(m_sPath, oIgnored);
}

const std::string& CTempFolder::Path() const
{
    return m_sPath;
}

std::string CTempFolder::File(const std::string& sName) const
{
    return m_sPath + static_cast<char>(std::filesystem::path::preferred_separator) + sName;
}

std::string ReadWholeFile(const std::string& sPath)
{
    std::ifstream oFile(sPath, std::ios::binary);
    if (!oFile)
        throw std::runtime_error("cannot read " + sPath);
    return std::string(std::istreambuf_iterator<char>(oFile), std::istreambuf_iterator<char>());
}

void WriteWholeFile(const std::string& sPath, const std::string& sContents)
{
    std::ofstream oFile(sPath, std::ios::binary);
    oFile.write(sContents.data(), static_cast<std::streamsize>(sContents.size()));
    oFile.close();
    if (!oFile)
        throw std::runtime_error("cannot write " + sPath);
}

std::vector<wchar_t> Wide(const char* szText)
{
    std::vector<wchar_t> aWide;
    do
        aWide.push_back(static_cast<wchar_t>(static_cast<unsigned char>(*szText)));
    while (*szText++ != '\0');
    return aWide;
}

std::string Narrow(const wchar_t* szText)
{
    std::string sNarrow;
    for (; *szText != 0; ++szText)
    {
        if (*szText >= 0x80)
            throw std::runtime_error("text holds more than ASCII");
        sNarrow += static_cast<char>(*szText);
    }
    return sNarrow;
}

void CGate::Open()
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    m_bOpen = true;
    m_oChanged.notify_all();
}

bool CGate::Wait()
{
    std::unique_lock<std::mutex> oLock(m_oMutex);
    // The wait uses the system clock, because ThreadSanitizer knows the function that waits with it.
    return m_oChanged.wait_until(oLock, std::chrono::system_clock::now() + std::chrono::seconds(60),
                                 [this] { return m_bOpen; });
}

bool CGate::IsOpen() const
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    return m_bOpen;
}
