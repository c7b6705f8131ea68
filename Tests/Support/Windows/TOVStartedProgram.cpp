#include "Support/Windows/TOVStartedProgram.h"

#include <stdexcept>

namespace
{
constexpr DWORD ENDED_FROM_OUTSIDE = 0xC0DE0000u;
constexpr DWORD DEADLINE_MILLISECONDS =
    static_cast<DWORD>(std::chrono::duration_cast<std::chrono::milliseconds>(CHILD_DEADLINE).count());

std::string Quote(const std::string& sArgument)
{
    std::string sQuoted = "\"";
    std::size_t nBackslashes = 0;
    for (const char cCharacter : sArgument)
    {
        if (cCharacter == '"')
            sQuoted.append(nBackslashes + 1, '\\');
        nBackslashes = cCharacter == '\\' ? nBackslashes + 1 : 0;
        sQuoted += cCharacter;
    }
    return sQuoted.append(nBackslashes, '\\') + '"';
}

std::string CommandLine(const std::vector<std::string>& aCommand)
{
    std::string sCommandLine;
    for (const std::string& sWord : aCommand)
        sCommandLine += (sCommandLine.empty() ? "" : " ") + Quote(sWord);
    return sCommandLine;
}

// The environment of this process with the changes, whose names and values are ASCII, in the form in which a new
// process takes it.
std::wstring EnvironmentBlock(const tVariables& aChanges)
{
    std::map<std::wstring, std::wstring> aVariables;
    wchar_t* const szAll = ::GetEnvironmentStringsW();
    for (const wchar_t* szVariable = szAll; *szVariable != 0; szVariable += std::wstring(szVariable).size() + 1)
    {
        // The names of the system's own variables begin with =.
        const std::wstring sVariable = szVariable;
        const std::size_t nEnd = sVariable.find(L'=', 1);
        if (nEnd != std::wstring::npos)
            aVariables[sVariable.substr(0, nEnd)] = sVariable.substr(nEnd + 1);
    }
    ::FreeEnvironmentStringsW(szAll);
    for (const auto& [sName, oValue] : aChanges)
    {
        const std::wstring sWideName(sName.begin(), sName.end());
        if (oValue)
            aVariables[sWideName].assign(oValue->begin(), oValue->end());
        else
            aVariables.erase(sWideName);
    }

    std::wstring sBlock;
    for (const auto& [sName, sValue] : aVariables)
        sBlock += sName + L'=' + sValue + L'\0';
    return sBlock + L'\0';
}

std::string WithoutCarriageReturns(std::string sText)
{
    for (std::size_t nAt = 0; (nAt = sText.find("\r\n", nAt)) != std::string::npos;)
        sText.erase(nAt, 1);
    return sText;
}
} // namespace

COutputPipe::COutputPipe() : m_hRead(nullptr), m_hWrite(nullptr)
{
    SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), nullptr, TRUE};
    if (!::CreatePipe(&m_hRead, &m_hWrite, &oInherited, 0))
        throw std::runtime_error("no pipe");
    ::SetHandleInformation(m_hRead, HANDLE_FLAG_INHERIT, 0);
}

COutputPipe::~COutputPipe()
{
    if (m_hWrite != nullptr)
        ::CloseHandle(m_hWrite);
    if (m_oReader.joinable())
        m_oReader.join();
    ::CloseHandle(m_hRead);
}

void COutputPipe::StartReading()
{
    ::CloseHandle(m_hWrite);
    m_hWrite = nullptr;
    m_oReader = std::thread([this] {
        char szPart[4096];
        DWORD dwRead = 0;
        while (::ReadFile(m_hRead, szPart, sizeof(szPart), &dwRead, nullptr) && dwRead > 0)
        {
            const std::lock_guard<std::mutex> oGuard(m_oMutex);
            m_sText.append(szPart, dwRead);
        }
    });
}

std::string COutputPipe::SoFar() const
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    return WithoutCarriageReturns(m_sText);
}

std::string COutputPipe::Finish()
{
    m_oReader.join();
    return SoFar();
}

CStartedProgram::CStartedProgram(const sProgram& oProgram, HANDLE hInput, HANDLE hOutput, HANDLE hErrors, DWORD dwFlags)
    : m_oProcess()
{
    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = hInput;
    oStartup.hStdOutput = hOutput;
    oStartup.hStdError = hErrors;
    std::string sCommandLine = CommandLine(oProgram.aCommand);
    std::wstring sEnvironment = EnvironmentBlock(oProgram.aVariables);
    const char* szFolder = oProgram.sFolder.empty() ? nullptr : oProgram.sFolder.c_str();
    if (!::CreateProcessA(nullptr, &sCommandLine[0], nullptr, nullptr, TRUE, dwFlags | CREATE_UNICODE_ENVIRONMENT,
                          &sEnvironment[0], szFolder, &oStartup, &m_oProcess))
        throw std::runtime_error("no child process");
}

CStartedProgram::~CStartedProgram()
{
    ::CloseHandle(m_oProcess.hThread);
    ::CloseHandle(m_oProcess.hProcess);
}

bool CStartedProgram::EndsWithin(DWORD dwMilliseconds) const
{
    return ::WaitForSingleObject(m_oProcess.hProcess, dwMilliseconds) == WAIT_OBJECT_0;
}

void CStartedProgram::Kill()
{
    ::TerminateProcess(m_oProcess.hProcess, ENDED_FROM_OUTSIDE);
    EndsWithin(DEADLINE_MILLISECONDS);
}

bool CStartedProgram::WaitForEnd()
{
    const bool bEnded = EndsWithin(DEADLINE_MILLISECONDS);
    if (!bEnded)
        Kill();
    return bEnded;
}

int CStartedProgram::ExitCode() const
{
    DWORD dwExitCode = STILL_ACTIVE;
    ::GetExitCodeProcess(m_oProcess.hProcess, &dwExitCode);
    // Programs end with small numbers, also below zero. The number of a fault is neither.
    return dwExitCode <= 0xff || dwExitCode >= 0xffffff00u ? static_cast<int>(dwExitCode & 0xff) : -1;
}
