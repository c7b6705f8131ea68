// SHA-256 by libgcrypt, which uses what the processor has for it.
#include "Sha256.h"

#include <cstring>
#include <stdexcept>

#include <gcrypt.h>

struct CSha256::sState
{
    gcry_md_hd_t hDigest = nullptr;
};

namespace
{
// The library wants to be set up once. Checksums are no secrets, which would need locked memory.
bool SetUp()
{
    if (gcry_check_version(GCRYPT_VERSION) == nullptr)
        return false;
    gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
    gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
    return true;
}
} // namespace

bool HasSha256()
{
    return true;
}

CSha256::CSha256() : m_pState(new sState)
{
    static const bool s_bSetUp = SetUp();
    if (!s_bSetUp || gcry_md_open(&m_pState->hDigest, GCRY_MD_SHA256, 0) != 0)
        throw std::runtime_error("SHA-256 is not available");
}

CSha256::~CSha256()
{
    gcry_md_close(m_pState->hDigest);
}

void CSha256::Add(const void* pBytes, std::size_t nSize)
{
    gcry_md_write(m_pState->hDigest, pBytes, nSize);
}

tSha256 CSha256::Finish()
{
    tSha256 aValue;
    std::memcpy(aValue.data(), gcry_md_read(m_pState->hDigest, GCRY_MD_SHA256), aValue.size());
    gcry_md_reset(m_pState->hDigest);
    return aValue;
}
