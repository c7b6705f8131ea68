// The buffers of the runtime's streams, in which bytes wait until the system takes them.
#pragma once

#include "Debug/TOVCompiler.h"

#include <cstddef>

#include <stdio.h>

#if TOV_THREAD_SANITIZER
extern "C" void __tsan_acquire(void* pLock);
extern "C" void __tsan_release(void* pLock);
#endif

namespace TOVPlatform
{
namespace TOVPosix
{
// Holds the runtime's lock of a stream for a scope. ThreadSanitizer does not know this lock, and is told of it.
class CStreamLock
{
public:
    explicit CStreamLock(FILE* pFile) : m_pFile(pFile)
    {
        ::flockfile(m_pFile);
#if TOV_THREAD_SANITIZER
        __tsan_acquire(m_pFile);
#endif
    }

    ~CStreamLock()
    {
#if TOV_THREAD_SANITIZER
        __tsan_release(m_pFile);
#endif
        ::funlockfile(m_pFile);
    }

    CStreamLock(const CStreamLock&) = delete;
    CStreamLock& operator=(const CStreamLock&) = delete;

private:
    FILE* const m_pFile;
};

// Each of these needs the stream's lock, or an owner of the stream.

// Writes the bytes that a stream holds, and keeps those that the system refuses. Leaves it to the runtime to write wide
// text, single lines, and what goes to no file.
bool WriteHeld(FILE& oFile);

// Does what fwrite does, by the same calls of the system, which drops all bytes that the stream holds if the system
// refuses them. This function keeps them: those of earlier writes, and the elements that it returns as written. Further
// writes fail until the system takes bytes again.
std::size_t WriteAndKeep(FILE& oFile, const void* pBuffer, std::size_t ulSize, std::size_t ulCount);
} // namespace TOVPosix
} // namespace TOVPlatform
