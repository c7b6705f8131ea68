// Declares what the test host needs from the operating system. Each system has its own source.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace TOVTestHost
{
bool IsTerminal(std::FILE* pStream);

// Loads a shared library until the process ends. A name without a directory means the current directory. Returns an
// address that identifies the library, by whatever name it is loaded. Returns null and the reason if it cannot be
// loaded.
const void* LoadSharedLibrary(const std::string& sFile, std::string& sReason);

// Returns whether both addresses belong to the same program or library.
bool StandInOneModule(const void* pOne, const void* pOther);

// Redirects standard output to standard error, from here on.
void SendOutputToErrors();

// The link to the other process, on either side. If a transfer fails, the other process has ended.
class ITOVProcessLink
{
public:
    virtual ~ITOVProcessLink() = default;

    // These transfer all bytes, or return false.
    virtual bool Write(const void* pBytes, std::size_t nBytes) = 0;
    virtual bool Read(void* pBytes, std::size_t nBytes) = 0;

    // Called in the parent: closes the link, waits until the worker has ended and describes how: "crashed: access
    // violation", "called abort()", "ended the process with status 5". Returns an empty text for status 0.
    virtual std::string WaitForEnd() = 0;
};

// Starts this program again, with the same arguments, as the worker, which shares the standard streams. From here on,
// the first interrupt by the user ends the worker only. Throws std::runtime_error if that fails.
std::unique_ptr<ITOVProcessLink> StartWorker(char** aszArguments);

// Returns the link to the parent if this process is a worker, else null. From here on, a fault ends the worker without
// a dialog.
std::unique_ptr<ITOVProcessLink> FindParent();

// Ends this process at once.
[[noreturn]] void EndWorker();
} // namespace TOVTestHost
