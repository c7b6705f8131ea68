// What stands in for SHA-256 in a program that was built without it.
#include "Sha256.h"

#include <stdexcept>

struct CSha256::sState
{
};

bool HasSha256()
{
    return false;
}

// GCOVR_EXCL_START: nobody makes one where there is no SHA-256.
CSha256::CSha256()
{
    throw std::runtime_error("SHA-256 is not available");
}

CSha256::~CSha256() = default;

void CSha256::Add(const void*, std::size_t)
{
}

tSha256 CSha256::Finish()
{
    return tSha256();
}
// GCOVR_EXCL_STOP
