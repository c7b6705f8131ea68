#include "Catalog/CatalogProcess.h"
#include "Catalog/Windows/CatalogCommandLine.h"
#include "Support/TOVChildProcess.h"

#include <stdexcept>
#include <thread>
#include <windows.h>

namespace
{
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

std::string WithoutCarriageReturns(std::string sText)
{
    for (std::size_t nAt = 0; (nAt = sText.find("\r\n", nAt)) != std::string::npos;)
        sText.erase(nAt, 1);
    return sText;
}

// A pipe that the child inherits the writing end of, and a thread that reads the other to its end.
class COutput
{
public:
    COutput() : m_hRead(NULL), m_hWrite(NULL)
    {
        SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), NULL, TRUE};
        if (!::CreatePipe(&m_hRead, &m_hWrite, &oInherited, 0))
            throw std::runtime_error("no pipe");
        ::SetHandleInformation(m_hRead, HANDLE_FLAG_INHERIT, 0);
    }

    ~COutput() { ::CloseHandle(m_hRead); }

    COutput(const COutput&) = delete;
    COutput& operator=(const COutput&) = delete;

    HANDLE ForChild() const { return m_hWrite; }

    // Once the child has its end.
    void StartReading()
    {
        ::CloseHandle(m_hWrite);
        m_oReader = std::thread([this] {
            char szPart[4096];
            DWORD dwRead = 0;
            while (::ReadFile(m_hRead, szPart, sizeof(szPart), &dwRead, NULL) && dwRead > 0)
                m_sText.append(szPart, dwRead);
        });
    }

    // All that the child said. Once, after its end.
    std::string Text()
    {
        m_oReader.join();
        return WithoutCarriageReturns(m_sText);
    }

private:
    HANDLE m_hRead;
    HANDLE m_hWrite;
    std::string m_sText;
    std::thread m_oReader;
};
} // namespace

std::string PathOfCatalogProgram()
{
    const std::string sTest = PathOfThisProgram();
    return sTest.substr(0, sTest.find_last_of("\\/") + 1) + "tovcatalog.exe";
}

sRun RunCatalog(const std::vector<std::string>& aArguments, const std::string& sFolder)
{
    COutput oOutput;
    COutput oErrors;
    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    oStartup.hStdOutput = oOutput.ForChild();
    oStartup.hStdError = oErrors.ForChild();
    std::string sCommandLine = CatalogCommandLine(aArguments);
    PROCESS_INFORMATION oProcess = {};
    if (!::CreateProcessA(NULL, &sCommandLine[0], NULL, NULL, TRUE, 0, NULL, sFolder.c_str(), &oStartup, &oProcess))
        throw std::runtime_error("no child process");
    oOutput.StartReading();
    oErrors.StartReading();

    const bool bEnded = ::WaitForSingleObject(oProcess.hProcess, 240000) == WAIT_OBJECT_0;
    if (!bEnded)
        ::TerminateProcess(oProcess.hProcess, 0xC0DE0000u);
    DWORD dwExitCode = STILL_ACTIVE;
    ::GetExitCodeProcess(oProcess.hProcess, &dwExitCode);
    ::CloseHandle(oProcess.hThread);
    ::CloseHandle(oProcess.hProcess);

    // A program's own exit codes are small, a fault's are not.
    return {bEnded && dwExitCode <= 255 ? static_cast<int>(dwExitCode) : -1, oOutput.Text(),
            oErrors.Text() + (bEnded ? "" : "\n<deadline passed>")};
}

std::string CatalogCommandLine(const std::vector<std::string>& aArguments)
{
    std::string sCommandLine = Quote(PathOfCatalogProgram());
    for (const std::string& sArgument : aArguments)
        sCommandLine += " " + Quote(sArgument);
    return sCommandLine;
}
