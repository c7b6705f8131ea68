// Streams that one thread uses without the runtime's lock.
#pragma once

#include <Posix/Base/TOVOwner.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// Only its address counts.
inline TOV_FAST_THREAD_LOCAL tDword t_nOwnAddress = 0;

// The biased lock of each slot of the table of files. The runtime's functions lock their stream by two atomic
// exchanges; the owner of a stream uses those that do not. All others use the functions that lock.
//
// Each has a line of the cache to itself, as it is written at each use, while other threads use the next slots.
class alignas(64) CStreamOwner : public COwner
{
public:
    bool Enter() { return COwner::Enter(Self()); }
    void Share() { COwner::Share(Self()); }

    // Called in the child of a fork.
    void ForgetOtherThreads() { COwner::ForgetOtherThreads(Self()); }

private:
    // An address of the calling thread's own.
    static std::uintptr_t Self() { return reinterpret_cast<std::uintptr_t>(&t_nOwnAddress); }
};

// A use of a stream.
class COwnerScope
{
public:
    explicit COwnerScope(CStreamOwner& oOwner) : m_oOwner(oOwner), m_bEntered(oOwner.Enter()) {}

    ~COwnerScope()
    {
        if (m_bEntered)
            m_oOwner.Leave();
    }

    COwnerScope(const COwnerScope&) = delete;
    COwnerScope& operator=(const COwnerScope&) = delete;

    bool HasEntered() const { return m_bEntered; }

private:
    CStreamOwner& m_oOwner;
    const bool m_bEntered;
};

// The owners of the streams in the library's own table.
extern CStreamOwner s_aStreamOwners[];

// Does so for all of them.
void ForgetOtherStreamOwners();
} // namespace TOVPosix
} // namespace TOVPlatform
