// The memory that a catalogue of very many names takes.
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Posix/CatalogHindrance.h"
#include "Support/TOVAllocationCounter.h"

#include <sys/resource.h>
#include <unistd.h>

// A sanitizer takes memory of its own.
#if TOV_CAN_FAIL_ALLOCATIONS
namespace
{
constexpr std::size_t MEBIBYTE = 1024 * 1024;

// What the program takes to list a catalogue of one file.
constexpr std::size_t MEMORY_OF_PROGRAM = 4 * MEBIBYTE;

class CatalogPosixManyNamesTest : public CatalogTest
{
protected:
    // Lists the catalogue in so many bytes of memory.
    sRun ListIn(std::size_t nBytes)
    {
        return RunHindered({"list", "c.cat"}, Folder(), [nBytes] {
            const rlimit oLimit = {nBytes, nBytes};
            if (::setrlimit(RLIMIT_DATA, &oLimit) != 0)
                ::_exit(97);
        });
    }
};
} // namespace

TEST_F(CatalogPosixManyNamesTest, TakesAtMostTwiceItsSizeToBeListed)
{
    const std::vector<std::string> aNames(2000000, "x");
    for (const std::string& sBytes : {CatalogVersion3(aNames, {}, {}), CatalogVersion3({"tree"}, aNames, {})})
    {
        Write("c.cat", sBytes);
        const sRun oRun = ListIn(MEMORY_OF_PROGRAM + 2 * sBytes.size() + MEBIBYTE);
        EXPECT_EQ(0, oRun.nExitCode) << oRun.sErrors;
        EXPECT_EQ(2, ListIn(MEMORY_OF_PROGRAM + sBytes.size() / 4).nExitCode);
    }
}
#endif
