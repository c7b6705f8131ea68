#include "Support/TOVChildProcess.h"

#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <windows.h>

namespace
{
const DWORD CRASHED = 0xC0DE0000u;

LONG WINAPI EndCrashedProcess(EXCEPTION_POINTERS*)
{
    // A system debugger would wait for somebody to close it.
    ::TerminateProcess(::GetCurrentProcess(), CRASHED);
    return EXCEPTION_EXECUTE_HANDLER;
}

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
} // namespace

std::string PathOfThisProgram()
{
    char szPath[MAX_PATH];
    const DWORD dwLength = ::GetModuleFileNameA(NULL, szPath, sizeof(szPath));
    if (dwLength == 0 || dwLength == sizeof(szPath))
        throw std::runtime_error("cannot find the running program");
    return std::string(szPath, dwLength);
}

void PrepareChild()
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ::SetUnhandledExceptionFilter(&EndCrashedProcess);
}

sChildResult RunProgram(const std::vector<std::string>& aCommand)
{
    SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), NULL, TRUE};
    HANDLE hRead = NULL;
    HANDLE hWrite = NULL;
    if (!::CreatePipe(&hRead, &hWrite, &oInherited, 0))
        throw std::runtime_error("no pipe");
    ::SetHandleInformation(hRead, HANDLE_FLAG_INHERIT, 0);

    std::string sCommandLine;
    for (const std::string& sArgument : aCommand)
        sCommandLine += (sCommandLine.empty() ? "" : " ") + Quote(sArgument);

    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    oStartup.hStdOutput = hWrite;
    oStartup.hStdError = hWrite;
    PROCESS_INFORMATION oProcess = {};
    if (!::CreateProcessA(NULL, &sCommandLine[0], NULL, NULL, TRUE, 0, NULL, NULL, &oStartup, &oProcess))
        throw std::runtime_error("no child process");
    ::CloseHandle(hWrite);

    // The reader ends when the child's end of the pipe is closed.
    sChildResult oResult = {-1, ""};
    std::thread oReader([&] {
        char szPart[4096];
        DWORD dwRead = 0;
        while (::ReadFile(hRead, szPart, sizeof(szPart), &dwRead, NULL) && dwRead > 0)
            oResult.sOutput.append(szPart, dwRead);
    });

    DWORD dwExitCode = CRASHED;
    const bool bEnded = ::WaitForSingleObject(oProcess.hProcess, 120000) == WAIT_OBJECT_0;
    if (!bEnded)
        ::TerminateProcess(oProcess.hProcess, CRASHED);
    else
        ::GetExitCodeProcess(oProcess.hProcess, &dwExitCode);
    oReader.join();
    if (!bEnded)
        oResult.sOutput += "\n<deadline passed>";
    if (dwExitCode != CRASHED)
        oResult.nExitCode = static_cast<int>(dwExitCode & 0xff);

    ::CloseHandle(hRead);
    ::CloseHandle(oProcess.hThread);
    ::CloseHandle(oProcess.hProcess);
    return oResult;
}
