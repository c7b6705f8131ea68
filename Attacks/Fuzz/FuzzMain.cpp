// The program that libFuzzer runs. TOV_FUZZ_TARGET names its target; with "?", it prints the names of all.
#include "Fuzz.h"

#include <cstdio>
#include <cstdlib>

namespace
{
const Fuzz::CTarget* g_pTarget;
}

void Fuzz::Fail(const char* szFile, int nLine, const std::string& sText)
{
    std::fprintf(stderr, "%s:%d: %s\n", szFile, nLine, sText.c_str());
    std::abort();
}

extern "C" int LLVMFuzzerInitialize(int* /*pArguments*/, char*** /*paszArguments*/)
{
    const char* szName = std::getenv("TOV_FUZZ_TARGET");
    g_pTarget = szName != nullptr ? Fuzz::CTarget::Find(szName) : nullptr;
    if (g_pTarget != nullptr)
        return 0;
    for (const Fuzz::CTarget* pTarget : Fuzz::CTarget::GetAll())
        std::printf("%s\n", pTarget->GetName());
    std::exit(szName != nullptr && std::strcmp(szName, "?") == 0 ? 0 : 2);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t nSize)
{
    g_pTarget->Run(pBytes, nSize);
    return 0;
}
