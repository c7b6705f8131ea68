#include "Support/TOVWaitInstruments.h"

#include <atomic>
#include <cstdint>
#include <random>

std::string UniqueName()
{
    static std::atomic<unsigned> s_nNext(0);
    static const unsigned s_nProcess = std::random_device{}();
    return "tovkernel test " + std::to_string(s_nProcess) + " " + std::to_string(++s_nNext);
}

std::vector<sBadHandle> BadHandles()
{
    using TOVPlatform::TOVSynchronization::Event::Create;
    using TOVPlatform::TOVSynchronization::Event::Destroy;

    const unsigned long long hStale = Create(true, true, nullptr);
    Destroy(hStale);

    static int s_nVariable;
    return {
        {"zero", 0},
        {"stale", hStale},
        {"one", 1},
        {"invented", 0x12345678},
        {"large positive", 0x7FFFFFF0},
        {"smallest negative", 0xFFFFFFFF80000000},
        {"zero below a high half", 0x8000000000000000},
        {"address", reinterpret_cast<std::uintptr_t>(&s_nVariable)},
    };
}
