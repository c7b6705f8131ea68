// How a program is started: what the instruments for child processes and for terminals share.
#pragma once

#include "Support/TOVChildProcess.h"

#include <functional>
#include <sys/types.h>

// An open descriptor, closed at the end.
class CDescriptor
{
public:
    explicit CDescriptor(int nDescriptor = -1) : m_nDescriptor(nDescriptor) {}
    ~CDescriptor() { Set(-1); }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    // Closes the one that it has.
    void Set(int nDescriptor);

    int Get() const { return m_nDescriptor; }

private:
    int m_nDescriptor;
};

// A program inherits neither end of the pipe, except as one of its standard streams.
struct sPipe
{
    sPipe();

    CDescriptor oRead;
    CDescriptor oWrite;
};

// Appends what can be read, at most so many bytes, and waits for it where there is nothing yet. Returns false at the
// end.
bool ReadSome(int nDescriptor, std::string& sText, std::size_t nBytes = 65536);

// What a new process has from its start.
struct sStart
{
    // Its standard streams. -1 stands for /dev/null.
    int nInput = -1;
    int nOutput = -1;
    int nErrors = -1;

    bool bOwnSession = false; // no terminal of this process can reach it
    std::string sTerminal;    // the terminal that controls its own session, and stands in the place of /dev/null above

    std::function<void()> fnInChild; // called in the new process as the last thing before it becomes the program
};

// Starts a program and returns its process. A program that cannot be started ends with exit code 97 or 98.
pid_t StartProgram(const sProgram& oProgram, const sStart& oStart);

// The exit code in a status of waitpid, or -1 if a signal ended the process.
int ExitCodeOf(int nStatus);

// Waits without a deadline for the end of a process that does end, and returns its exit code in the same way.
int WaitForExitCode(pid_t nProcess);

// Does the same as RunProgram, with this action of the new process before it becomes the program.
sChildResult RunProgramAfter(const std::function<void()>& fnInChild, const sProgram& oProgram, eErrors eWhere);
