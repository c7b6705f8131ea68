#include <Posix/Base/TOVStreamStage.h>

#include <Posix/Base/TOVProcessLocks.h>
#include <Posix/Base/TOVStreamBuffer.h>
#include <TOVPlatform/Backend/TOVFile.h>

#include <stdio.h>
#include <stdio_ext.h>
#include <unistd.h>

namespace TOVPlatform
{
namespace TOVPosix
{
using Backend::File::MAX_HANDLES;

CStreamStage s_aStreamStages[MAX_HANDLES];

namespace
{
// How long to wait for the lock of a stream that another thread holds for a few steps.
constexpr unsigned int RETRY_US = 100;

// eLockStreamStages guards these.
bool s_bEnded = false;
FILE* s_pMark = nullptr;
char s_aMarkBuffer[16];
} // namespace

std::size_t CStreamStage::Write(CStreamOwner& oOwner, bool bIsOwner, FILE* pFile, const void* pBuffer,
                                std::size_t ulSize, std::size_t ulCount)
{
    // The first write, which allocates the stream's buffer, is often the only one.
    if (!IsInUse() && bIsOwner && ::__fbufsize(pFile) != 0)
        Begin(pFile);

    const CStreamLock oLock(pFile);
    Reveal(pFile);
    const std::size_t ulWritten = WriteAndKeep(*pFile, pBuffer, ulSize, ulCount);
    if (bIsOwner && IsInUse())
    {
        const COwnerScope oAgain(oOwner);
        if (oAgain.HasEntered())
            Hide(pFile);
    }
    return ulWritten;
}

// Whoever holds the stream's lock for long has revealed the bytes before.
void CStreamStage::Reveal()
{
    FILE* const pFile = m_pFile.load(std::memory_order_acquire);
    while (pFile != nullptr && m_pEnd.load(std::memory_order_acquire) != nullptr)
    {
        if (::ftrylockfile(pFile) == 0)
        {
            Reveal(pFile);
            ::funlockfile(pFile);
        }
        else
            ::usleep(RETRY_US);
    }
}

void CStreamStage::Share(CStreamOwner& oOwner)
{
    oOwner.Share();
    if (!IsInUse())
        return;

    // Meanwhile, another thread may have closed the stream and opened the next one.
    const CProcessLockScope oScope(eLockStreamStages);
    End(oOwner);
}

void CStreamStage::ForgetOtherThreads()
{
    for (CStreamStage& oStage : s_aStreamStages)
    {
        if (FILE* const pFile = oStage.m_pFile.load(std::memory_order_relaxed))
            oStage.Reveal(pFile);
        oStage.m_pFile.store(nullptr, std::memory_order_relaxed);
    }
}

// The runtime calls this when it writes out the mark. It holds its list of all streams meanwhile, so that a stream that
// is closed by another thread now is not freed before the end.
ssize_t CStreamStage::WriteMark(void*, const char*, std::size_t ulBytes)
{
    bool bWritten = true;
    for (unsigned long hFile = 0; hFile < MAX_HANDLES; ++hFile)
    {
        CStreamStage& oStage = s_aStreamStages[hFile];
        if (FILE* const pFile = oStage.m_pFile.load(std::memory_order_acquire))
        {
            s_aStreamOwners[hFile].Share();
            oStage.Reveal();
            bWritten = ::fflush(pFile) == 0 && bWritten;
        }
    }
    return bWritten ? static_cast<ssize_t>(ulBytes) : 0;
}

// Makes the mark, unless there is one. It is null if the system refuses. Called with eLockStreamStages.
void CStreamStage::MakeMark()
{
    if (s_pMark != nullptr)
        return;
    s_pMark = ::fopencookie(nullptr, "w", {nullptr, &WriteMark, nullptr, nullptr});
    if (s_pMark == nullptr)
        return;

    ::setvbuf(s_pMark, s_aMarkBuffer, _IOFBF, sizeof s_aMarkBuffer);
    // An object does it, and not a function for the end of the process, because sanitizers detach the latter from the
    // library.
    struct sEnd
    {
        ~sEnd() { EndAll(); }
    };
    static const sEnd s_oEnd;
}

// At the end of the process, the runtime writes out all streams without their locks, and so does not wait for a thread
// that writes to a full pipe, say. It finds all bytes without this class from now on. Nor does it know this class any
// more when the library is unloaded.
void CStreamStage::EndAll()
{
    const CProcessLockScope oScope(eLockStreamStages);
    s_bEnded = true;
    for (unsigned long hFile = 0; hFile < MAX_HANDLES; ++hFile)
        s_aStreamStages[hFile].End(s_aStreamOwners[hFile]);
    ::fclose(s_pMark);
}

void CStreamStage::Begin(FILE* pFile)
{
    const CProcessLockScope oScope(eLockStreamStages);
    if (s_bEnded)
        return;
    MakeMark();

    // The byte follows after the stage is known to be in use. While another thread has the mark, it may have passed
    // this stage by.
    m_pFile.store(pFile, std::memory_order_release);
    if (s_pMark == nullptr || ::ftrylockfile(s_pMark) != 0)
    {
        m_pFile.store(nullptr, std::memory_order_release);
        return;
    }
    if (::__fpending(s_pMark) == 0)
        ::putc_unlocked(0, s_pMark);
    ::funlockfile(s_pMark);
}

// Called with eLockStreamStages, without which nobody closes a stream whose stage is in use.
void CStreamStage::End(CStreamOwner& oOwner)
{
    if (!IsInUse())
        return;

    oOwner.Share();
    Reveal();
    m_pFile.store(nullptr, std::memory_order_release);
}

void CStreamStage::Hide(FILE* pFile)
{
#if defined(__GLIBC__) // the members that the macros of its public header read
    // A stream that is not ready to be written, or whose lines are written one by one, has no room in this sense.
    if (IsInUse() && pFile->_IO_write_ptr < pFile->_IO_write_end)
    {
        m_pLimit = pFile->_IO_write_end;
        m_pEnd.store(pFile->_IO_write_ptr, std::memory_order_relaxed);
        std::atomic_signal_fence(std::memory_order_release); // a fork may copy the process between these
        pFile->_IO_write_ptr = pFile->_IO_write_base;
    }
#else
    static_cast<void>(pFile);
#endif
}

void CStreamStage::Reveal(FILE* pFile)
{
#if defined(__GLIBC__)
    if (char* const pEnd = m_pEnd.load(std::memory_order_relaxed))
    {
        pFile->_IO_write_ptr = pEnd;
        m_pLimit = nullptr;
        m_pEnd.store(nullptr, std::memory_order_release);
    }
#else
    static_cast<void>(pFile);
#endif
}
} // namespace TOVPosix
} // namespace TOVPlatform
