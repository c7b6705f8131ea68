// Declares what the test host needs from the operating system. Each system has its own source.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace TOVTestHost
{
bool IsTerminal(std::FILE* pStream);

// Returns how many characters fit on a line of the terminal's window, or 80 if the system does not know.
std::size_t WidthOfTerminal(std::FILE* pStream);

// Loads a shared library until the process ends. A name without a directory means the current directory. Returns an
// address that identifies the library, by whatever name it is loaded. Returns null and the reason if it cannot be
// loaded.
const void* LoadSharedLibrary(const std::string& sFile, std::string& sReason);

// Returns whether both addresses belong to the same program or library.
bool StandInOneModule(const void* pOne, const void* pOther);

enum eTestStream
{
    eStreamOutput,
    eStreamErrors
};

struct sWorkerEnd
{
    // "crashed: access violation", "called abort()", "ended the process with status 5"; empty for status 0.
    std::string sHow;
    bool bByUser; // the user interrupted or terminated the run
};

// The link to the other process, on either side. If a transfer fails, the other process has ended.
class ITOVProcessLink
{
public:
    virtual ~ITOVProcessLink() = default;

    // These transfer all bytes, or return false.
    virtual bool Write(const void* pBytes, std::size_t nBytes) = 0;
    virtual bool Read(void* pBytes, std::size_t nBytes) = 0;
};

// The parent's side of the link. Its destructor ends the worker.
class ITOVWorkerLink : public ITOVProcessLink
{
public:
    // Returns what the worker has written to the stream since the last call. Lines end with \n on every system.
    virtual std::string TakeOutput(eTestStream eStream) = 0;

    virtual bool HasEnded() = 0;

    // Ends the worker, if it still runs, and every transfer that waits. It may be called while another thread reads.
    virtual void End() = 0;

    // Waits until the worker has ended, and describes how.
    virtual sWorkerEnd WaitForEnd() = 0;
};

// Starts this program again, with the same arguments, as the worker. What it writes to its standard streams is kept for
// TakeOutput. From here on, the first request of the user to interrupt or to terminate this process ends the worker
// only. Throws std::runtime_error if no worker can be started.
std::unique_ptr<ITOVWorkerLink> StartWorker(char** aszArguments);

// Returns the link to the parent if this process is a worker, else null. From here on, a fault ends the worker without
// a dialog. The worker's side of the link stays open until its process ends.
std::unique_ptr<ITOVProcessLink> FindParent();

// Ends this process at once.
[[noreturn]] void EndWorker();
} // namespace TOVTestHost
