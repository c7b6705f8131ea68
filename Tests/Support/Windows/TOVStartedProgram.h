// Starts programs. The instruments for child processes, for terminals and for observed children are made of this.
#pragma once

#include "Support/TOVChildProcess.h"

#include <mutex>
#include <thread>
#include <windows.h>

// A pipe into which a program writes, and a thread that reads from it.
class COutputPipe
{
public:
    COutputPipe();
    ~COutputPipe();
    COutputPipe(const COutputPipe&) = delete;
    COutputPipe& operator=(const COutputPipe&) = delete;

    // The end that a program inherits.
    HANDLE ForProgram() const { return m_hWrite; }

    // Closes that end here and begins to read, after the start of the program.
    void StartReading();

    // What the program has written so far, where lines end with \n alone.
    std::string SoFar() const;

    // All that the program wrote. To be called once, after its end.
    std::string Finish();

private:
    HANDLE m_hRead;
    HANDLE m_hWrite;
    mutable std::mutex m_oMutex;
    std::string m_sText;
    std::thread m_oReader;
};

// A program that was started.
class CStartedProgram
{
public:
    // The program inherits the handles as its standard streams. The flags are those of CreateProcess. Throws
    // std::runtime_error if the program cannot be started.
    CStartedProgram(const sProgram& oProgram, HANDLE hInput, HANDLE hOutput, HANDLE hErrors, DWORD dwFlags = 0);
    ~CStartedProgram();
    CStartedProgram(const CStartedProgram&) = delete;
    CStartedProgram& operator=(const CStartedProgram&) = delete;

    HANDLE Process() const { return m_oProcess.hProcess; }
    DWORD ProcessId() const { return m_oProcess.dwProcessId; }

    // Waits for its end no longer than this. Returns false if it still runs then.
    bool EndsWithin(DWORD dwMilliseconds) const;

    // Ends it from outside, and waits for its end under the deadline.
    void Kill();

    // Waits for its end, and ends it at the deadline. Returns false if that was necessary.
    bool WaitForEnd();

    // After its end: the exit code, or -1 if a fault or somebody else ended it.
    int ExitCode() const;

private:
    PROCESS_INFORMATION m_oProcess;
};
