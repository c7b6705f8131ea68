// Rows of the C library.

#include <Bench.h>
#include <Blocks.h>
#include <Inputs.h>
#include <NumbersFile.h>

#include <cstdlib>
#include <cstring>

using namespace Inputs;

namespace
{
void Compare(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    Use(std::memcmp(pFirst, pSecond, nSize));
}

void Copy(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    std::memcpy(pFirst, pSecond, nSize);
}

void Move(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    std::memmove(pFirst, pSecond, nSize);
}

void Set(unsigned char* pFirst, unsigned char*, std::size_t nSize)
{
    std::memset(pFirst, 1, nSize);
}
} // namespace

BENCH("string/findsub1K", "strstr")
{
    const std::string sText = TextWithNeedle(1024);
    const char* szText = sText.c_str();
    const char* const szNeedle = Hide(NEEDLE);
    for (auto _ : oState)
    {
        Touch(szText);
        Use(std::strstr(szText, szNeedle));
    }
}

BENCH("string/findchar1K", "strchr")
{
    const std::string sText = TextWithCharacter(1024);
    const char* szText = sText.c_str();
    for (auto _ : oState)
    {
        Touch(szText);
        Use(std::strchr(szText, NEEDLE_CHARACTER));
    }
}

BENCH("string/intparse7", "strtol")
{
    const char* szNumber = NUMBER7;
    for (auto _ : oState)
    {
        Touch(szNumber);
        Use(std::strtol(szNumber, nullptr, 10));
    }
}

BENCH("string/doubleparse", "strtod")
{
    const char* szNumber = NUMBER_DOUBLE;
    for (auto _ : oState)
    {
        Touch(szNumber);
        Use(std::strtod(szNumber, nullptr));
    }
}

BENCH("string/format_sds", "snprintf+string")
{
    for (auto _ : oState)
    {
        char szBuffer[100];
        std::snprintf(szBuffer, sizeof(szBuffer), "%s has %d parts of %s", Hide("catalogue"), Hide(4711),
                      Hide("the library"));
        std::string sString(szBuffer);
        Touch(sString);
    }
}

BENCH("string/format_sds (SNPrintf stack only)", "snprintf")
{
    for (auto _ : oState)
    {
        char szBuffer[100];
        std::snprintf(szBuffer, sizeof(szBuffer), "%s has %d parts of %s", Hide("catalogue"), Hide(4711),
                      Hide("the library"));
        Use(szBuffer);
    }
}

BENCH("string/format_f", "snprintf+string")
{
    for (auto _ : oState)
    {
        char szBuffer[100];
        std::snprintf(szBuffer, sizeof(szBuffer), "%f", Hide(NUMBER_FIXED));
        std::string sString(szBuffer);
        Touch(sString);
    }
}

BENCH("string/format_f (SNPrintf stack only)", "snprintf")
{
    for (auto _ : oState)
    {
        char szBuffer[100];
        std::snprintf(szBuffer, sizeof(szBuffer), "%f", Hide(NUMBER_FIXED));
        Use(szBuffer);
    }
}

BENCH("memory/compare64B", "memcmp")
{
    MeasureBlocks(oState, 64, Compare);
}

BENCH("memory/compare4K", "memcmp")
{
    MeasureBlocks(oState, 4096, Compare);
}

BENCH("memory/copy64B", "memcpy")
{
    MeasureBlocks(oState, 64, Copy);
}

BENCH("memory/copy4K", "memcpy")
{
    MeasureBlocks(oState, 4096, Copy);
}

BENCH("memory/move4K", "memmove")
{
    MeasureBlocks(oState, 4096, Move);
}

BENCH("memory/set64B", "memset")
{
    MeasureBlocks(oState, 64, Set);
}

BENCH("memory/set4K", "memset")
{
    MeasureBlocks(oState, 4096, Set);
}

BENCH("memory/malloc+free 32B", "malloc")
{
    for (auto _ : oState)
    {
        void* pMemory = std::malloc(Hide(32));
        Use(pMemory);
        std::free(pMemory);
    }
}

BENCH("file/write1M int", "fwrite")
{
    const CNumbersFile oNumbers("c", 1);
    for (auto _ : oState)
    {
        std::FILE* const pFile = std::fopen(oNumbers.GetName(), "wb");
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            Use(std::fwrite(&nNumber, sizeof(nNumber), 1, pFile));
        std::fclose(pFile);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/read1M int", "fread")
{
    const CNumbersFile oNumbers("c", MILLION);
    for (auto _ : oState)
    {
        std::FILE* const pFile = std::fopen(oNumbers.GetName(), "rb");
        for (int nIndex = 0; nIndex < MILLION; ++nIndex)
        {
            int nNumber = 0;
            Use(std::fread(&nNumber, sizeof(nNumber), 1, pFile));
            Use(nNumber);
        }
        std::fclose(pFile);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/open+close", "fopen")
{
    const CNumbersFile oNumbers("c", 1000);
    for (auto _ : oState)
        std::fclose(std::fopen(oNumbers.GetName(), "rb"));
}

BENCH("file/fopen+1 getc+close", "fopen")
{
    const CNumbersFile oNumbers("c", 1000);
    for (auto _ : oState)
    {
        std::FILE* const pFile = std::fopen(oNumbers.GetName(), "rb");
        Use(std::fgetc(pFile));
        std::fclose(pFile);
    }
}
