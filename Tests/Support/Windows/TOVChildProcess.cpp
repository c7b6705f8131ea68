#include "Support/TOVChildProcess.h"
#include "Support/Windows/TOVStartedProgram.h"

#include <stdexcept>

namespace
{
constexpr DWORD CRASHED = 0xC0DE0000u;

LONG WINAPI EndCrashedProcess(EXCEPTION_POINTERS*)
{
    // A system debugger would wait for somebody to close it.
    ::TerminateProcess(::GetCurrentProcess(), CRASHED);
    return EXCEPTION_EXECUTE_HANDLER;
}
} // namespace

std::string PathOfThisProgram()
{
    char szPath[MAX_PATH];
    const DWORD dwLength = ::GetModuleFileNameA(nullptr, szPath, sizeof(szPath));
    if (dwLength == 0 || dwLength == sizeof(szPath))
        throw std::runtime_error("cannot find the running program");
    return std::string(szPath, dwLength);
}

sChildResult RunProgram(const sProgram& oProgram, eErrors eWhere)
{
    COutputPipe oOutput;
    COutputPipe oErrors;
    CStartedProgram oStarted(oProgram, ::GetStdHandle(STD_INPUT_HANDLE), oOutput.ForProgram(),
                             eWhere == eErrorsApart ? oErrors.ForProgram() : oOutput.ForProgram());
    oOutput.StartReading();
    oErrors.StartReading();

    const bool bEnded = oStarted.WaitForEnd();
    return {oStarted.ExitCode(), oOutput.Finish() + (bEnded ? "" : "\n<deadline passed>"), oErrors.Finish()};
}

void PrepareChild()
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ::SetUnhandledExceptionFilter(&EndCrashedProcess);
}
