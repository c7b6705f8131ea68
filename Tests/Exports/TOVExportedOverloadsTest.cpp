// Exports of one name, told apart by their parameters: a copy constructor that a header defined instead would be missed
// by whoever looks at names alone.
#include "Exports/TOVDemangled.h"
#include "Support/TOVLibraryImage.h"
#include "Support/TOVTestSupport.h"

#include <cstdlib>
#include <fstream>

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

std::set<std::string> DemangleAll(const std::set<std::string>& aLinkageNames)
{
    std::set<std::string> aNames;
    for (const std::string& sName : aLinkageNames)
    {
        const std::string sDemangled = Demangle(sName);
        if (sDemangled != sName)
            aNames.insert(sDemangled);
    }
    return aNames;
}

std::set<std::string> DemangledExports()
{
    return DemangleAll(ExportedNames(eModuleLibrary));
}

#if defined(TOV_DECLARED_NAMES)
// All members that the headers declare for exported classes, as the script list-declared writes them.
struct sDeclared
{
    std::set<std::string> aNames;
    std::set<std::string> aDeletedNames;
};

sDeclared ReadDeclared()
{
    const std::string DELETED = "deleted ";
    sDeclared oDeclared;
    std::ifstream oList(TOV_DECLARED_NAMES);
    for (std::string sLine; std::getline(oList, sLine);)
    {
        if (sLine.rfind(DELETED, 0) == 0)
            oDeclared.aDeletedNames.insert(sLine.substr(DELETED.size()));
        else
            oDeclared.aNames.insert(sLine);
    }
    return oDeclared;
}

// A constructor or destructor is declared as one and exported as two: for an object of its own and for one that is the
// base of another.
std::vector<std::string> Variants(const std::string& sDeclared)
{
    for (const char* szUnified : {"C4E", "D4E"})
    {
        const std::size_t nUnified = sDeclared.find(szUnified);
        if (nUnified != std::string::npos)
        {
            std::vector<std::string> aNames(2, sDeclared);
            aNames[0][nUnified + 1] = '1';
            aNames[1][nUnified + 1] = '2';
            return aNames;
        }
    }
    return {sDeclared};
}

// The classes that members belong to: of "A::B::C(int)", A::B.
std::set<std::string> ClassesOf(const std::set<std::string>& aMembers)
{
    std::set<std::string> aClasses;
    for (const std::string& sMember : aMembers)
        aClasses.insert(sMember.substr(0, sMember.rfind("::", sMember.find('('))));
    return aClasses;
}
#endif
} // namespace

TEST(TOVExportedOverloadsTest, HoldAllConstructorsAndAssignmentsOfTheExceptions)
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

#if defined(TOV_DECLARED_NAMES)
TEST(TOVDeclaredMembersTest, AreExportedAllOfThem)
{
    const std::set<std::string> aExports = ExportedNames(eModuleLibrary);
    const std::set<std::string> aDeclared = ReadDeclared().aNames;
    ASSERT_LT(500u, aDeclared.size()) << TOV_DECLARED_NAMES;
    for (const std::string& sDeclared : aDeclared)
        for (const std::string& sName : Variants(sDeclared))
            EXPECT_EQ(1u, aExports.count(sName)) << Demangle(sDeclared);
}

// Copies that a class leaves to the compiler are made in each module, and no module exports them.
TEST(TOVDeclaredMembersTest, HoldTheCopiesOfEachClass)
{
    const sDeclared oDeclared = ReadDeclared();
    std::set<std::string> aDeclared = DemangleAll(oDeclared.aNames);
    aDeclared.merge(DemangleAll(oDeclared.aDeletedNames));
    const std::set<std::string> aClasses = ClassesOf(aDeclared);
    ASSERT_LT(50u, aClasses.size()) << TOV_DECLARED_NAMES;
    for (const std::string& sClass : aClasses)
    {
        const std::size_t nScope = sClass.rfind(':');
        const std::string sConstructor = sClass + "::" + sClass.substr(nScope == std::string::npos ? 0 : nScope + 1);
        EXPECT_EQ(1u, aDeclared.count(sConstructor + '(' + sClass + " const&)")) << sClass;
        EXPECT_EQ(1u, aDeclared.count(sClass + "::operator=(" + sClass + " const&)")) << sClass;
    }
}
#endif
