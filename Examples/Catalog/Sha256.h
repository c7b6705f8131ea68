// Declares CSha256, by which the program computes SHA-256. It is another library's; a program that was built without it
// has CRC-32 only.
#pragma once

#include <array>
#include <cstddef>
#include <memory>

typedef std::array<unsigned char, 32> tSha256;

// Returns whether this program was built with SHA-256.
bool HasSha256();

class CSha256
{
public:
    // Throws std::runtime_error if the program was built without SHA-256. The first object must be made while no other
    // thread makes one.
    CSha256();
    ~CSha256();
    CSha256(const CSha256&) = delete;
    CSha256& operator=(const CSha256&) = delete;

    void Add(const void* pBytes, std::size_t nSize);

    // Returns the value of all bytes since the last call, or since the beginning.
    tSha256 Finish();

private:
    struct sState;
    std::unique_ptr<sState> m_pState;
};
