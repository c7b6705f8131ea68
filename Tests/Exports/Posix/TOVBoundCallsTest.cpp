// The library's calls of its own functions do not pass through the tables that the loader fills: they cannot reach a
// function of another module that has the same name. Its variables are found there, since all modules share them.
#include "Exports/TOVDemangled.h"
#include "Support/TOVLibraryImage.h"
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVMemory.h>

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

namespace
{
// The library's dynamic section. The loader has made addresses of the offsets in it.
class CDynamicSection
{
public:
    CDynamicSection()
    {
        Dl_info oInfo;
        link_map* pMap = nullptr;
        if (::dladdr1(reinterpret_cast<void*>(&TOVMemory_Cmp), &oInfo, reinterpret_cast<void**>(&pMap),
                      RTLD_DL_LINKMAP) == 0)
            throw std::runtime_error("library not found");
        m_pEntries = pMap->l_ld;
    }

    ElfW(Addr) Get(ElfW(Sxword) nTag) const
    {
        for (const ElfW(Dyn)* pEntry = m_pEntries; pEntry->d_tag != DT_NULL; ++pEntry)
        {
            if (pEntry->d_tag == nTag)
                return pEntry->d_un.d_ptr;
        }
        return 0;
    }

private:
    const ElfW(Dyn) * m_pEntries;
};

// The names in a table of relocations that have this type: those of the library's own symbols, or those of others.
std::set<std::string> NamesIn(int nTable, int nSize, unsigned int nType, bool bOwn)
{
    const CDynamicSection oSection;
    const auto* const pSymbols = reinterpret_cast<const ElfW(Sym)*>(oSection.Get(DT_SYMTAB));
    const auto* const szNames = reinterpret_cast<const char*>(oSection.Get(DT_STRTAB));
    const auto* const pEntries = reinterpret_cast<const ElfW(Rela)*>(oSection.Get(nTable));

    std::set<std::string> aNames;
    for (std::size_t i = 0; i < oSection.Get(nSize) / sizeof(*pEntries); ++i)
    {
        const ElfW(Sym)& oSymbol = pSymbols[ELF64_R_SYM(pEntries[i].r_info)];
        if (ELF64_ST_TYPE(oSymbol.st_info) == nType && (oSymbol.st_shndx != SHN_UNDEF) == bOwn)
            aNames.insert(szNames + oSymbol.st_name);
    }
    return aNames;
}

// Type information, the standard library's variables and the compiler's need not be the same in all modules.
bool IsSharedByName(const std::string& sName)
{
    for (const char* szPrefix : {"_ZT", "_ZNSt", "_ZNKSt", "_ZZNSt", "_ZZNKSt", "_ZGVNSt", "_ZGVZNSt", "_ZSt", "__"})
    {
        if (sName.rfind(szPrefix, 0) == 0)
            return false;
    }
    return true;
}

bool IsVariable(void* pLibrary, const std::string& sName)
{
    Dl_info oInfo;
    void* pSymbol = nullptr;
    return ::dladdr1(::dlsym(pLibrary, sName.c_str()), &oInfo, &pSymbol, RTLD_DL_SYMENT) != 0 && pSymbol != nullptr &&
           ELF64_ST_TYPE(static_cast<const ElfW(Sym)*>(pSymbol)->st_info) == STT_OBJECT;
}
} // namespace

TEST(TOVBoundCallsTest, TheLibraryCallsItsOwnFunctionsDirectly)
{
    EXPECT_EQ(std::set<std::string>(), NamesIn(DT_JMPREL, DT_PLTRELSZ, STT_FUNC, true));
    EXPECT_EQ(std::set<std::string>(), NamesIn(DT_RELA, DT_RELASZ, STT_FUNC, true));
}

TEST(TOVBoundCallsTest, TheTablesHoldTheFunctionsOfOthers)
{
    EXPECT_EQ(1u, NamesIn(DT_JMPREL, DT_PLTRELSZ, STT_FUNC, false).count("opendir"));
}

TEST(TOVBoundCallsTest, TheLibrarySharesItsVariables)
{
    const std::set<std::string> aShared = NamesIn(DT_RELA, DT_RELASZ, STT_OBJECT, true);
    Dl_info oInfo;
    ASSERT_NE(0, ::dladdr(reinterpret_cast<void*>(&TOVMemory_Cmp), &oInfo));
    void* const pLibrary = ::dlopen(oInfo.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(nullptr, pLibrary);

    for (const std::string& sName : ExportedNames(eModuleLibrary))
    {
        const bool bShared = aShared.count(sName) > 0;
        EXPECT_TRUE(bShared || !IsSharedByName(sName) || !IsVariable(pLibrary, sName))
            << Demangle(sName) << " is missing in CMake/TOVSharedData.list";
    }
    EXPECT_LE(20u, aShared.size());
    ::dlclose(pLibrary);
}
