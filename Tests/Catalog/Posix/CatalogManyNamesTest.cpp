// The memory that a catalogue of very many names takes.
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Posix/CatalogHindrance.h"
#include "Support/TOVAllocationCounter.h"

#include <fcntl.h>
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
    // Lists the catalogue in so many bytes of memory, and drops the list.
    sRun ListIn(std::size_t nBytes, const std::vector<std::string>& aForm)
    {
        std::vector<std::string> aArguments = {"list", "c.cat"};
        aArguments.insert(aArguments.end(), aForm.begin(), aForm.end());
        return RunHindered(aArguments, Folder(), [nBytes] {
            ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
            const rlimit oLimit = {nBytes, nBytes};
            if (::setrlimit(RLIMIT_DATA, &oLimit) != 0)
                ::_exit(97);
        });
    }

    // Lists a catalogue of these bytes in each form, in twice its size.
    void ExpectToBeListed(const std::string& sBytes)
    {
        Write("c.cat", sBytes);
        for (const tNames& aForm : {tNames{}, {"--json"}})
        {
            const sRun oRun = ListIn(MEMORY_OF_PROGRAM + 2 * sBytes.size() + MEBIBYTE, aForm);
            EXPECT_EQ(0, oRun.nExitCode) << testing::PrintToString(aForm) << oRun.sErrors;
            EXPECT_EQ(2, ListIn(MEMORY_OF_PROGRAM + sBytes.size() / 4, aForm).nExitCode);
        }
    }
};
} // namespace

TEST_F(CatalogPosixManyNamesTest, TakesAtMostTwiceItsSizeToBeListed)
{
    const std::vector<std::string> aNames(2000000, "x");
    ExpectToBeListed(CatalogVersion3(aNames, {}, {}));
    ExpectToBeListed(CatalogVersion3({"tree"}, aNames, {}));
}

TEST_F(CatalogPosixManyNamesTest, TakesAtMostTwiceItsSizeToBeListedWithNamesThatAreEscaped)
{
    const std::vector<std::string> aNames(2000, std::string(4096, '\x01'));
    ExpectToBeListed(CatalogVersion3(aNames, {}, {}));
    ExpectToBeListed(CatalogVersion3({"tree"}, aNames, {}));
}
#endif
