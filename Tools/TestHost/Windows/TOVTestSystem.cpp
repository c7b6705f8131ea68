#include <TestHost/TOVTestSystem.h>

#include <csignal>
#include <cstdlib>
#include <io.h>
#include <mutex>
#include <stdexcept>
#include <utility>
#include <windows.h>

namespace TOVTestHost
{
namespace
{
constexpr char VARIABLE[] = "TOV_TEST_WORKER";
constexpr DWORD CALLED_ABORT = 0xE0AB0047;

// The worker, and how the user asked for the end of the run. Such a request comes on a thread of its own.
std::mutex s_oRequestMutex;
HANDLE s_hWorker = nullptr;
const char* s_szAsked = nullptr;

// Closes a handle at its end.
class CHandle
{
public:
    explicit CHandle(HANDLE hObject = nullptr) : m_hObject(hObject) {}
    ~CHandle() { Set(nullptr); }
    CHandle(const CHandle&) = delete;
    CHandle& operator=(const CHandle&) = delete;

    HANDLE Get() const { return m_hObject; }
    bool IsValid() const { return m_hObject != nullptr && m_hObject != INVALID_HANDLE_VALUE; }
    void Set(HANDLE hObject)
    {
        if (IsValid())
            ::CloseHandle(m_hObject);
        m_hObject = hObject;
    }
    HANDLE Release() { return std::exchange(m_hObject, nullptr); }

private:
    HANDLE m_hObject;
};

// Keeps in a file what a process writes to it.
class COutputKeeper
{
public:
    COutputKeeper()
    {
        char szFolder[MAX_PATH + 1] = "";
        char szFile[MAX_PATH + 1] = "";
        constexpr DWORD SHARED = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        if (::GetTempPathA(sizeof(szFolder), szFolder) == 0 || ::GetTempFileNameA(szFolder, "tov", 0, szFile) == 0)
            throw std::runtime_error("no file for output: error " + std::to_string(::GetLastError()));
        m_oRead.Set(::CreateFileA(szFile, GENERIC_READ | DELETE, SHARED, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
        SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), nullptr, TRUE};
        m_oWrite.Set(
            ::CreateFileA(szFile, FILE_APPEND_DATA | SYNCHRONIZE, SHARED, &oInherited, OPEN_EXISTING, 0, nullptr));
        if (!m_oRead.IsValid() || !m_oWrite.IsValid())
            throw std::runtime_error("no file for output: error " + std::to_string(::GetLastError()));
    }

    // Returns the handle that the process inherits.
    HANDLE ForProcess() const { return m_oWrite.Get(); }

    std::string Take()
    {
        std::string sText;
        char szPart[4096];
        DWORD dwRead = 0;
        while (::ReadFile(m_oRead.Get(), szPart, sizeof(szPart), &dwRead, nullptr) && dwRead > 0)
            sText.append(szPart, dwRead);
        sText.insert(0, m_sRest);
        // The end of a line may have been written by half.
        m_sRest = !sText.empty() && sText.back() == '\r' ? "\r" : "";
        sText.resize(sText.size() - m_sRest.size());
        for (std::size_t nAt = 0; (nAt = sText.find("\r\n", nAt)) != std::string::npos; ++nAt)
            sText.erase(nAt, 1);
        return sText;
    }

private:
    CHandle m_oRead;
    CHandle m_oWrite;
    std::string m_sRest;
};

// Either side of the link.
template<class TLink> class CPipeLink : public TLink
{
public:
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

    CPipeLink(HANDLE hRead, HANDLE hWrite) : m_hRead(hRead), m_hWrite(hWrite) {}

protected:
    const HANDLE m_hRead;
    const HANDLE m_hWrite;
};

class CWorkerLink : public CPipeLink<ITOVWorkerLink>
{
public:
    ~CWorkerLink() override
    {
        CWorkerLink::End();
        SetWorker(nullptr);
        ::CloseHandle(m_hRead);
        ::CloseHandle(m_hWrite);
        ::CloseHandle(m_hWorker);
    }

    std::string TakeOutput(eTestStream eStream) override
    {
        return eStream == eStreamOutput ? m_pOutput->Take() : m_pErrors->Take();
    }

    bool HasEnded() override { return ::WaitForSingleObject(m_hWorker, 0) == WAIT_OBJECT_0; }

    void End() override { ::TerminateProcess(m_hWorker, 1); }

    sWorkerEnd WaitForEnd() override
    {
        ::WaitForSingleObject(m_hWorker, INFINITE);
        DWORD dwExit = 0;
        ::GetExitCodeProcess(m_hWorker, &dwExit);
        const std::lock_guard<std::mutex> oGuard(s_oRequestMutex);
        if (s_szAsked != nullptr)
            return {s_szAsked, true};
        return {DescribeExit(dwExit), false};
    }

    CWorkerLink(HANDLE hRead, HANDLE hWrite, HANDLE hWorker, std::unique_ptr<COutputKeeper> pOutput,
                std::unique_ptr<COutputKeeper> pErrors)
        : CPipeLink(hRead, hWrite), m_hWorker(hWorker), m_pOutput(std::move(pOutput)), m_pErrors(std::move(pErrors))
    {
        SetWorker(hWorker);
    }

private:
    void SetWorker(HANDLE hWorker)
    {
        const std::lock_guard<std::mutex> oGuard(s_oRequestMutex);
        s_hWorker = hWorker;
        if (s_szAsked != nullptr && hWorker != nullptr) // in the moment before the worker was known
            End();
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

    const HANDLE m_hWorker;
    const std::unique_ptr<COutputKeeper> m_pOutput;
    const std::unique_ptr<COutputKeeper> m_pErrors;
};

// Makes a pipe. The worker inherits the end that is not this process's own.
void MakePipe(CHandle& oRead, CHandle& oWrite, const CHandle& oOwn)
{
    HANDLE hRead = nullptr, hWrite = nullptr;
    SECURITY_ATTRIBUTES oInherited = {sizeof(oInherited), nullptr, TRUE};
    if (!::CreatePipe(&hRead, &hWrite, &oInherited, 0))
        throw std::runtime_error("no connection between processes");
    oRead.Set(hRead);
    oWrite.Set(hWrite);
    ::SetHandleInformation(oOwn.Get(), HANDLE_FLAG_INHERIT, 0);
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

// The worker leaves every request of the user to the parent, which then ends it.
BOOL WINAPI LeaveRequestToParent(DWORD /*dwEvent*/)
{
    return TRUE;
}

// The first request ends the worker, and the second one this process.
BOOL WINAPI EndWorkerOnRequest(DWORD dwEvent)
{
    {
        const std::lock_guard<std::mutex> oGuard(s_oRequestMutex);
        if (s_szAsked != nullptr)
            return FALSE;
        s_szAsked = dwEvent == CTRL_C_EVENT ? "was interrupted" : "was terminated";
        if (s_hWorker != nullptr)
            ::TerminateProcess(s_hWorker, 1);
    }
    // The system ends this process when the handler of these events returns; the reports are written before that.
    if (dwEvent != CTRL_C_EVENT && dwEvent != CTRL_BREAK_EVENT)
        ::Sleep(INFINITE);
    return TRUE;
}

bool StartProcess(PROCESS_INFORMATION& oProcess, HANDLE hOutput, HANDLE hErrors)
{
    char szProgram[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, szProgram, sizeof(szProgram));
    std::string sCommandLine = ::GetCommandLineA();
    STARTUPINFOA oStartup = {};
    oStartup.cb = sizeof(oStartup);
    oStartup.dwFlags = STARTF_USESTDHANDLES;
    oStartup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    oStartup.hStdOutput = hOutput;
    oStartup.hStdError = hErrors;
    return ::CreateProcessA(szProgram, &sCommandLine[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &oStartup,
                            &oProcess) != 0;
}
} // namespace

bool IsTerminal(std::FILE* pStream)
{
    return ::_isatty(::_fileno(pStream)) != 0;
}

std::size_t WidthOfTerminal(std::FILE* pStream)
{
    CONSOLE_SCREEN_BUFFER_INFO oInfo = {};
    const HANDLE hConsole = reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(pStream)));
    return ::GetConsoleScreenBufferInfo(hConsole, &oInfo) && oInfo.srWindow.Right > oInfo.srWindow.Left
               ? static_cast<std::size_t>(oInfo.srWindow.Right - oInfo.srWindow.Left + 1)
               : 80;
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

std::unique_ptr<ITOVWorkerLink> StartWorker(char** /*aszArguments*/)
{
    CHandle oRead, oWorkerWrite, oWorkerRead, oWrite;
    MakePipe(oRead, oWorkerWrite, oRead);
    MakePipe(oWorkerRead, oWrite, oWrite);
    std::unique_ptr<COutputKeeper> pOutput(new COutputKeeper);
    std::unique_ptr<COutputKeeper> pErrors(new COutputKeeper);
    static const BOOL s_bRequests = ::SetConsoleCtrlHandler(&EndWorkerOnRequest, TRUE);
    static_cast<void>(s_bRequests);
    std::fflush(nullptr);
    ::SetEnvironmentVariableA(VARIABLE, (ToText(oWorkerRead.Get()) + "," + ToText(oWorkerWrite.Get())).c_str());
    PROCESS_INFORMATION oProcess = {};
    const bool bStarted = StartProcess(oProcess, pOutput->ForProcess(), pErrors->ForProcess());
    ::SetEnvironmentVariableA(VARIABLE, nullptr);
    if (!bStarted)
        throw std::runtime_error("no second process");
    ::CloseHandle(oProcess.hThread);
    return std::unique_ptr<ITOVWorkerLink>(
        new CWorkerLink(oRead.Release(), oWrite.Release(), oProcess.hProcess, std::move(pOutput), std::move(pErrors)));
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
    ::SetConsoleCtrlHandler(&LeaveRequestToParent, TRUE);
    // This much is enough for the filter after a stack overflow.
    ULONG ulReserve = 32768;
    ::SetThreadStackGuarantee(&ulReserve);
    // What a case writes is not lost if it then crashes. The runtime has no buffer for single lines.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    return std::unique_ptr<ITOVProcessLink>(new CPipeLink<ITOVProcessLink>(hRead, hWrite));
}

void EndWorker()
{
    ::TerminateProcess(::GetCurrentProcess(), 1);
    for (;;)
        ::Sleep(INFINITE);
}
} // namespace TOVTestHost
