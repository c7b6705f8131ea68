// What the test host takes from the operating system; one source for each system.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace TOVTestHost
{
bool IsTerminal(std::FILE* pStream);

// Loads a shared library for as long as the process lives. A name without a directory means the current one. Whatever
// it is called by, a library has one address. NULL with the reason if it cannot be loaded.
const void* LoadSharedLibrary(const std::string& sFile, std::string& sReason);

// Whether both addresses belong to the same program or library.
bool StandInOneModule(const void* pOne, const void* pOther);

// Standard output goes where standard error goes, from here on.
void SendOutputToErrors();

// The other process, from each side. It has gone once a transfer fails.
class ITOVProcessLink
{
public:
    virtual ~ITOVProcessLink() = default;

    // All of the bytes, or false.
    virtual bool Write(const void* pBytes, std::size_t nBytes) = 0;
    virtual bool Read(void* pBytes, std::size_t nBytes) = 0;

    // In the parent: cuts the link, waits for the worker's end and tells how it was: "crashed: access violation",
    // "called abort()", "ended the process with status 5"; empty for status 0.
    virtual std::string WaitForEnd() = 0;
};

// Starts this program again, with the same arguments, as the worker. It shares the standard streams. From here on, the
// first interrupt by the user ends the worker only. Throws std::runtime_error if that fails.
std::unique_ptr<ITOVProcessLink> StartWorker(char** aszArguments);

// The link to the parent in a worker; NULL in any other process. A fault ends the worker without a dialog.
std::unique_ptr<ITOVProcessLink> FindParent();

// Ends this process, on the spot.
[[noreturn]] void EndWorker();
} // namespace TOVTestHost
