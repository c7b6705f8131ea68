// Writing to a stream without the runtime's lock.
#pragma once

#include <Posix/Base/TOVStreamOwner.h>

#include <cstdio>
#include <cstring>

namespace TOVPlatform
{
namespace TOVPosix
{
// Copies without a call what an element is most often.
inline void CopyFew(void* pTo, const void* pFrom, std::size_t ulBytes)
{
    if (ulBytes == 4)
        std::memcpy(pTo, pFrom, 4);
    else
        std::memcpy(pTo, pFrom, ulBytes);
}

// What the owner of a stream (see CStreamOwner) has written, and the runtime does not know yet. There is one for each
// slot of the table of files.
//
// The owner fills the stream's own buffer. Meanwhile, the stream looks to the runtime as if its buffer had just been
// written out:
//
//   +----------------------+--------------------+
//   | staged bytes         | free               |  the stream's buffer
//   +----------------------+--------------------+
//   ^ the runtime's        ^ m_pEnd             ^ m_pLimit
//     position
//
// A write that does not fit first reveals the staged bytes, by moving the runtime's position to their end, and goes on
// as the runtime does (see WriteAndKeep). The system therefore gets the same bytes by the same calls, and fails at the
// same write, as if the runtime had done it all. What it refuses is kept.
//
// Whoever else uses the stream must reveal the bytes first. The functions of this library do so. fflush(nullptr) knows
// no bytes but those of the runtime. It finds a stream of this class's own, the mark, which holds a byte as long as any
// other may hold staged ones: to write it out, the runtime calls this class, which flushes them all.
//
// A stage is changed by the stream's owner between Enter and Leave, or with the stream's lock by a thread that has
// called Enter or Share before, so that no owner is busy. Between Enter and Leave, the owner of a stage in use waits
// for nothing that can last: others wait for it.
class CStreamStage
{
public:
    constexpr CStreamStage() : m_pFile(nullptr), m_pEnd(nullptr), m_pLimit(nullptr) {}

    // Called by the owner between Enter and Leave. Returns false, with nothing done, if the bytes do not fit or are
    // none.
    bool Take(const void* pBytes, std::size_t ulBytes)
    {
        char* const pEnd = m_pEnd.load(std::memory_order_relaxed);
        if (ulBytes - 1 >= static_cast<std::size_t>(m_pLimit - pEnd))
            return false;

        CopyFew(pEnd, pBytes, ulBytes);
        m_pEnd.store(pEnd + ulBytes, std::memory_order_release); // a fork may copy the process before or after it
        return true;
    }

    // Whether bytes can be staged. If not, the other functions have no effect.
    bool IsInUse() const { return m_pFile.load(std::memory_order_acquire) != nullptr; }

    // fwrite, called after Enter, but not before Leave. The owner may go on by Take.
    std::size_t Write(CStreamOwner& oOwner, bool bIsOwner, FILE* pFile, const void* pBuffer, std::size_t ulSize,
                      std::size_t ulCount);

    // Called after Enter, but not before Leave, before any other function of the runtime gets the stream.
    void Reveal();

    // Called before somebody else gets the stream, and before it is closed. Revokes its ownership, and ends the use of
    // the stage.
    void Share(CStreamOwner& oOwner);

    // Called in the child of a fork: threads other than the calling one do not exist there.
    static void ForgetOtherThreads();

private:
    static ssize_t WriteMark(void*, const char*, std::size_t ulBytes);
    static void MakeMark();
    static void EndAll();

    void Begin(FILE* pFile);
    void End(CStreamOwner& oOwner);
    void Hide(FILE* pFile);
    void Reveal(FILE* pFile);

    std::atomic<FILE*> m_pFile; // not null while the stage is in use; eLockStreamStages guards its changes
    std::atomic<char*> m_pEnd;
    char* m_pLimit;
};

// The stages of the streams in the library's own table.
extern CStreamStage s_aStreamStages[];
} // namespace TOVPosix
} // namespace TOVPlatform
