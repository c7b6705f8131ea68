// Named memory that the processes of one user share.
#pragma once

#include <cstddef>
#include <cstdint>

namespace TOVPlatform
{
namespace TOVPosix
{
// Serialises, over all processes of this user, the opening and closing of segments. The kernel drops it with a process.
class CSegmentLock
{
public:
    CSegmentLock();
    ~CSegmentLock();

    CSegmentLock(const CSegmentLock&) = delete;
    CSegmentLock& operator=(const CSegmentLock&) = delete;

    bool IsHeld() const { return m_nFile >= 0; }

private:
    int m_nFile;
};

// A mapped segment. It lives as long as a process has it open: each keeps a shared lock on its file, which the kernel
// drops when the process dies. Who closes a segment that nobody else has open removes it. A segment whose users all
// died without closing it keeps its file, and is made new by the next who opens it. The child of a fork closes what it
// has inherited and removes nothing.
class CSharedSegment
{
public:
    static constexpr std::size_t MAX_NAME = 259; // as on Windows

    CSharedSegment();

    CSharedSegment(const CSharedSegment&) = default;
    CSharedSegment& operator=(const CSharedSegment&) = default;

    // Opens or makes the segment; a new one is all zeros and has to be set up before the lock is given up. Names may
    // hold any character. Two long names can, very unlikely, meet in one segment: the user of a segment keeps the name
    // in it and compares. False if the system has no room or does not allow it.
    bool Open(const CSegmentLock& oLock, const char* szName, std::size_t nSize);
    void Close(const CSegmentLock& oLock);

    // What Close does to the name, if nobody else has the segment open; the memory stays mapped. True if it is removed.
    bool RemoveName(const CSegmentLock& oLock);

    void* GetMemory() const { return m_pMemory; }

    bool IsNew() const { return m_bNew; }

    // A number that is the same in all processes, and another one for each open segment.
    std::uint64_t GetNumber() const { return m_nNumber; }

private:
    static constexpr std::size_t MAX_SEGMENT_PATH = 256;

    bool Attach(std::size_t nSize);

    int m_nFile;
    int m_nProcess; // that may remove the name; 0 when it is done
    void* m_pMemory;
    std::size_t m_nSize;
    std::uint64_t m_nNumber;
    bool m_bNew;
    char m_szPath[MAX_SEGMENT_PATH];
};
} // namespace TOVPosix
} // namespace TOVPlatform
