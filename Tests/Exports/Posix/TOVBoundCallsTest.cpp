// The library's calls of its own functions do not pass through the tables that the loader fills: they cannot reach a
// function of another module that has the same name.
#include "Exports/TOVDemangled.h"
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

// The names of the functions to which a table of relocations refers, of those that the library defines, or of the
// others.
std::set<std::string> FunctionsIn(const CDynamicSection& oSection, int nTable, int nSize, bool bOwn)
{
    const auto* const pSymbols = reinterpret_cast<const ElfW(Sym)*>(oSection.Get(DT_SYMTAB));
    const auto* const szNames = reinterpret_cast<const char*>(oSection.Get(DT_STRTAB));
    const auto* const pEntries = reinterpret_cast<const ElfW(Rela)*>(oSection.Get(nTable));

    std::set<std::string> aNames;
    for (std::size_t i = 0; i < oSection.Get(nSize) / sizeof(*pEntries); ++i)
    {
        const ElfW(Sym)& oSymbol = pSymbols[ELF64_R_SYM(pEntries[i].r_info)];
        if (ELF64_ST_TYPE(oSymbol.st_info) == STT_FUNC && (oSymbol.st_shndx != SHN_UNDEF) == bOwn)
            aNames.insert(Demangle(szNames + oSymbol.st_name));
    }
    return aNames;
}
} // namespace

TEST(TOVBoundCallsTest, TheLibraryCallsItsOwnFunctionsDirectly)
{
    EXPECT_EQ(std::set<std::string>(), FunctionsIn(CDynamicSection(), DT_JMPREL, DT_PLTRELSZ, true));
    EXPECT_EQ(std::set<std::string>(), FunctionsIn(CDynamicSection(), DT_RELA, DT_RELASZ, true));
}

TEST(TOVBoundCallsTest, TheTablesHoldTheFunctionsOfOthers)
{
    EXPECT_EQ(1u, FunctionsIn(CDynamicSection(), DT_JMPREL, DT_PLTRELSZ, false).count("memmove"));
}
