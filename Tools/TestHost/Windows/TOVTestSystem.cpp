#include <TestHost/TOVTestSystem.h>

#include <csignal>
#include <cstdlib>
#include <io.h>
#include <stdexcept>
#include <windows.h>

namespace TOVTestHost
{
namespace
{
constexpr char VARIABLE[] = "TOV_TEST_WORKER";
constexpr DWORD CALLED_ABORT = 0xE0AB0047;

class CProcessLink : public ITOVProcessLink
{
public:
    ~CProcessLink() override
    {
        Cut();
        if (m_hWorker != nullptr)
            ::CloseHandle(m_hWorker);
    }

    bool Write(const void* pBytes, std::size_t nBytes) override
    {
        const char* pNext = static_cast<const char*>(pBytes);
        while (nBytes > 0)
        {
            DWORD dwWritten = 0;
            if (!::WriteFile(m_hWrite, pNext, static_cast<DWORD>(nBytes), &dwWritten, nullptr) || dwWritten == 0)
                return false;
            pNext += dwWritten;
            nBytes -= dwWritten;
        }
        return true;
    }

    bool Read(void* pBytes, std::size_t nBytes) override
    {
        char* pNext = static_cast<char*>(pBytes);
        while (nBytes > 0)
        {
            DWORD dwRead = 0;
            if (!::ReadFile(m_hRead, pNext, static_cast<DWORD>(nBytes), &dwRead, nullptr) || dwRead == 0)
                return false;
            pNext += dwRead;
            nBytes -= dwRead;
        }
        return true;
    }

    std::string WaitForEnd() override
    {
        Cut();
        ::WaitForSingleObject(m_hWorker, INFINITE);
        DWORD dwExit = 0;
        ::GetExitCodeProcess(m_hWorker, &dwExit);
        return DescribeExit(dwExit);
    }

    CProcessLink(HANDLE hRead, HANDLE hWrite, HANDLE hWorker) : m_hRead(hRead), m_hWrite(hWrite), m_hWorker(hWorker) {}

private:
    void Cut()
    {
        for (HANDLE* phEnd : {&m_hRead, &m_hWrite})
        {
            if (*phEnd != nullptr)
                ::CloseHandle(*phEnd);
            *phEnd = nullptr;
        }
    }

    static std::string DescribeExit(DWORD dwExit)
    {
        switch (dwExit)
        {
        case 0:
            return "";
        case STATUS_ACCESS_VIOLATION:
        case STATUS_IN_PAGE_ERROR:
            return "crashed: access violation";
        // This text is the same as on systems that cannot distinguish the two.
        case STATUS_STACK_OVERFLOW:
            return "crashed: access violation";
        case CALLED_ABORT:
            return "called abort()";
        case STATUS_INTEGER_DIVIDE_BY_ZERO:
        case STATUS_FLOAT_DIVIDE_BY_ZERO:
            return "crashed: arithmetic fault";
        case STATUS_ILLEGAL_INSTRUCTION:
        case STATUS_PRIVILEGED_INSTRUCTION:
            return "crashed: illegal instruction";
        case STATUS_CONTROL_C_EXIT:
            return "was interrupted";
        default:
            return dwExit >= 0x80000000u ? "was ended by exception " + std::to_string(dwExit)
                                         : "ended the process with status " + std::to_string(dwExit);
        }
    }

    HANDLE m_hRead;
    HANDLE m_hWrite;
    const HANDLE m_hWorker;
};

// Makes a pipe of which the worker inherits one end.
void MakePipe(HANDLE& hRead, HANDLE& hWrite, HANDLE& hOwn)
{
    SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), nullptr, TRUE};
    if (!::CreatePipe(&hRead, &hWrite, &oInherited, 0))
        throw std::runtime_error("no connection between processes");
    ::SetHandleInformation(hOwn, HANDLE_FLAG_INHERIT, 0);
}

HANDLE ToHandle(const char* szNumber, char** pszEnd)
{
    const HANDLE hEnd = reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(std::strtoul(szNumber, pszEnd, 10)));
    ::SetHandleInformation(hEnd, HANDLE_FLAG_INHERIT, 0);
    return hEnd;
}

std::string ToText(HANDLE hEnd)
{
    return std::to_string(static_cast<unsigned long>(reinterpret_cast<UINT_PTR>(hEnd)));
}

LONG WINAPI EndByFault(EXCEPTION_POINTERS* pFault)
{
    ::TerminateProcess(::GetCurrentProcess(), pFault->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

void EndByAbort(int /*nSignal*/)
{
    ::TerminateProcess(::GetCurrentProcess(), CALLED_ABORT);
}

// Ends the worker with the status of an interrupt, as the system's own handler does not do so everywhere.
BOOL WINAPI EndByInterrupt(DWORD dwEvent)
{
    if (dwEvent == CTRL_C_EVENT)
        ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(STATUS_CONTROL_C_EXIT));
    return FALSE;
}

BOOL WINAPI OnInterrupt(DWORD dwEvent)
{
    static LONG s_lInterrupts = 0;
    return dwEvent == CTRL_C_EVENT && ::InterlockedIncrement(&s_lInterrupts) == 1;
}

bool StartProcess(PROCESS_INFORMATION& oProcess)
{
    char szProgram[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, szProgram, sizeof(szProgram));
    std::string sCommandLine = ::GetCommandLineA();
    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    oStartup.hStdOutput = ::GetStdHandle(STD_OUTPUT_HANDLE);
    oStartup.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    return ::CreateProcessA(szProgram, &sCommandLine[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &oStartup,
                            &oProcess) != 0;
}
} // namespace

bool IsTerminal(std::FILE* pStream)
{
    return ::_isatty(::_fileno(pStream)) != 0;
}

const void* LoadSharedLibrary(const std::string& sFile, std::string& sReason)
{
    char szPath[MAX_PATH] = "";
    const DWORD dwLength = ::GetFullPathNameA(sFile.c_str(), sizeof(szPath), szPath, nullptr);
    // The libraries that this library needs may be in the same directory.
    const HMODULE hLibrary = dwLength > 0 && dwLength < sizeof(szPath)
                                 ? ::LoadLibraryExA(szPath, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)
                                 : nullptr;
    if (hLibrary == nullptr)
        sReason = sFile + ": error " + std::to_string(::GetLastError());
    return hLibrary;
}

bool StandInOneModule(const void* pOne, const void* pOther)
{
    HMODULE aModules[2] = {nullptr, nullptr};
    const DWORD dwFlags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return ::GetModuleHandleExA(dwFlags, static_cast<LPCSTR>(pOne), &aModules[0]) &&
           ::GetModuleHandleExA(dwFlags, static_cast<LPCSTR>(pOther), &aModules[1]) && aModules[0] == aModules[1];
}

void SendOutputToErrors()
{
    std::fflush(stdout);
    ::_dup2(::_fileno(stderr), ::_fileno(stdout));
}

std::unique_ptr<ITOVProcessLink> StartWorker(char** /*aszArguments*/)
{
    HANDLE hRead = nullptr, hWorkerWrite = nullptr, hWorkerRead = nullptr, hWrite = nullptr;
    MakePipe(hRead, hWorkerWrite, hRead);
    MakePipe(hWorkerRead, hWrite, hWrite);
    std::fflush(nullptr);
    ::SetEnvironmentVariableA(VARIABLE, (ToText(hWorkerRead) + "," + ToText(hWorkerWrite)).c_str());
    PROCESS_INFORMATION oProcess = {};
    const bool bStarted = StartProcess(oProcess);
    ::SetEnvironmentVariableA(VARIABLE, nullptr);
    ::CloseHandle(hWorkerRead);
    ::CloseHandle(hWorkerWrite);
    std::unique_ptr<ITOVProcessLink> pLink(new CProcessLink(hRead, hWrite, oProcess.hProcess));
    if (!bStarted)
        throw std::runtime_error("no second process");
    ::CloseHandle(oProcess.hThread);
    ::SetConsoleCtrlHandler(&OnInterrupt, TRUE);
    return pLink;
}

std::unique_ptr<ITOVProcessLink> FindParent()
{
    char szHandles[64] = "";
    const DWORD dwLength = ::GetEnvironmentVariableA(VARIABLE, szHandles, sizeof(szHandles));
    if (dwLength == 0 || dwLength >= sizeof(szHandles))
        return nullptr;
    // A process that a case starts is not a worker, and must not keep the link open.
    ::SetEnvironmentVariableA(VARIABLE, nullptr);
    char* szEnd = nullptr;
    const HANDLE hRead = ToHandle(szHandles, &szEnd);
    const HANDLE hWrite = ToHandle(szEnd + (*szEnd != '\0'), &szEnd);

    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ::SetUnhandledExceptionFilter(&EndByFault);
    std::signal(SIGABRT, &EndByAbort);
    ::SetConsoleCtrlHandler(&EndByInterrupt, TRUE);
    // This much is enough for the filter after a stack overflow.
    ULONG ulReserve = 32768;
    ::SetThreadStackGuarantee(&ulReserve);
    return std::unique_ptr<ITOVProcessLink>(new CProcessLink(hRead, hWrite, nullptr));
}

void EndWorker()
{
    ::TerminateProcess(::GetCurrentProcess(), 1);
    for (;;)
        ::Sleep(INFINITE);
}
} // namespace TOVTestHost
