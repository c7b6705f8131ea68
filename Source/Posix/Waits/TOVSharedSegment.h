// Named memory that the processes of one user share.
#pragma once

#include <cstddef>
#include <cstdint>

namespace TOVPlatform
{
namespace TOVPosix
{
// Serialises the opening and closing of segments over all processes of this user. The kernel drops the lock of a
// process that dies. If one that has been stopped keeps it for 10 seconds, the lock is not held.
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
// drops when the process dies. Closing a segment that no other process has open removes it. A segment whose users all
// died without closing it keeps its file until RemoveDead; a process that opens it before that makes it new. The child
// of a fork closes what it has inherited and removes nothing.
class CSharedSegment
{
public:
    static constexpr std::size_t MAX_NAME = 259; // the limit of Windows

    CSharedSegment();

    CSharedSegment(const CSharedSegment&) = default;
    CSharedSegment& operator=(const CSharedSegment&) = default;

    // Opens or makes the segment; a new one is all zeros and has to be set up before the lock is given up. Names may
    // hold any character. Two long names can, though it is unlikely, share one segment: a segment has to keep its name,
    // and its users compare it. False if the system has no room or does not allow it.
    bool Open(const CSegmentLock& oLock, const char* szName, std::size_t nSize);

    // Removes the segments of this user that no process has open any more.
    static void RemoveDead(const CSegmentLock& oLock);

    void Close(const CSegmentLock& oLock);

    // Removes the name as Close does, if no other process has the segment open; the memory stays mapped. True if it is
    // removed.
    bool RemoveName(const CSegmentLock& oLock);

    void* GetMemory() const { return m_pMemory; }

    bool IsNew() const { return m_bNew; }

    // A number that is the same in all processes, and another one for each open segment.
    std::uint64_t GetNumber() const { return m_nNumber; }

private:
    static constexpr std::size_t MAX_SEGMENT_PATH = 256;

    bool Attach(std::size_t nSize);

    int m_nFile;
    int m_nProcess; // the process that may remove the name; 0 when it has done so
    void* m_pMemory;
    std::size_t m_nSize;
    std::uint64_t m_nNumber;
    bool m_bNew;
    char m_szPath[MAX_SEGMENT_PATH];
};
} // namespace TOVPosix
} // namespace TOVPlatform
