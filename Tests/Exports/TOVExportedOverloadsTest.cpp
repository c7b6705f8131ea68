// Exports of one name, told apart by their parameters: a copy constructor that a header defined instead would be missed
// by whoever looks at names alone.
#include "Support/TOVLibraryImage.h"
#include "Support/TOVTestSupport.h"

#include <cstdlib>
#include <cxxabi.h>

namespace
{
struct sException
{
    const char* szClass;
    const char* szArguments; // of the constructor that makes one
};

const sException EXCEPTIONS[] = {
    {"CTOVException", "CTOVException::eErrorClass, unsigned long"},
    {"CTOVMemoryException", "unsigned short"},
    {"TOVDebug::CTOVAssertException", ""},
    {"ITOVFile::Exception", "unsigned short"},
    {"CTOVFile::FileException", "unsigned short"},
    {"CTOVVirtualFileSystem::Exception", "unsigned short"},
    {"ITOVStream::StreamException", "unsigned short"},
    {"CTOVFileStream::FileStreamException", "unsigned short"},
    {"CTOVReadFileStream::ReadFileStreamException", "unsigned short"},
    {"CTOVWriteFileStream::WriteFileStreamException", "unsigned short"},
};

std::set<std::string> DemangledExports()
{
    std::set<std::string> aNames;
    for (const std::string& sName : ExportedNames(eModuleLibrary))
    {
        int nStatus = 0;
        char* const szName = abi::__cxa_demangle(sName.c_str(), nullptr, nullptr, &nStatus);
        if (nStatus == 0)
            aNames.insert(szName);
        std::free(szName);
    }
    return aNames;
}
} // namespace

TEST(CTOVExportedOverloadsTest, HoldAllConstructorsAndAssignmentsOfTheExceptions)
{
    const std::set<std::string> aExports = DemangledExports();
    for (const sException& oException : EXCEPTIONS)
    {
        const std::string sClass = oException.szClass;
        const std::size_t nScope = sClass.rfind(':');
        const std::string sConstructor = sClass + "::" + sClass.substr(nScope == std::string::npos ? 0 : nScope + 1);
        EXPECT_EQ(1u, aExports.count(sConstructor + '(' + oException.szArguments + ')')) << sClass;
        EXPECT_EQ(1u, aExports.count(sConstructor + '(' + sClass + " const&)")) << sClass;
        EXPECT_EQ(1u, aExports.count(sClass + "::operator=(" + sClass + " const&)")) << sClass;
    }
}
