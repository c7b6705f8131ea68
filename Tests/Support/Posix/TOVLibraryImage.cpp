#include "Support/TOVLibraryImage.h"

#include <TOVPlatform/TOVMemory.h>

#include <dlfcn.h>
#include <elf.h>
#include <fstream>
#include <map>
#include <stdexcept>

#if TOV_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace
{
struct sSymbol
{
    const char* szName;
    Elf64_Addr ulValue;
};

// The dynamic symbols of a module that the system has loaded, read from its file.
class CModule
{
public:
    explicit CModule(eModule eWhich)
    {
        const void* pInside = eWhich == eModuleLibrary ? reinterpret_cast<const void*>(&TOVMemory_Cmp)
                                                       : reinterpret_cast<const void*>(&ExportedNames);
        Dl_info oInfo;
        if (::dladdr(pInside, &oInfo) == 0)
            throw std::runtime_error("module not found");
        m_pBase = static_cast<const char*>(oInfo.dli_fbase);
        std::ifstream oFile(oInfo.dli_fname, std::ios::binary | std::ios::ate);
        m_aBytes.resize(static_cast<std::size_t>(oFile.tellg()));
        oFile.seekg(0);
        oFile.read(m_aBytes.data(), static_cast<std::streamsize>(m_aBytes.size()));
        ReadSymbols();
    }

    const std::vector<sSymbol>& Symbols() const { return m_aSymbols; }

    const char* Base() const { return m_pBase; }

private:
    template<class T> const T* At(std::size_t ulOffset) const
    {
        if (ulOffset + sizeof(T) > m_aBytes.size())
            throw std::runtime_error("module's file is not what it should be");
        return reinterpret_cast<const T*>(m_aBytes.data() + ulOffset);
    }

    void ReadSymbols()
    {
        const Elf64_Ehdr& oHeader = *At<Elf64_Ehdr>(0);
        for (int i = 0; i < oHeader.e_shnum; ++i)
        {
            const Elf64_Shdr& oSection = *At<Elf64_Shdr>(oHeader.e_shoff + i * sizeof(Elf64_Shdr));
            if (oSection.sh_type != SHT_DYNSYM)
                continue;
            const Elf64_Shdr& oStrings = *At<Elf64_Shdr>(oHeader.e_shoff + oSection.sh_link * sizeof(Elf64_Shdr));
            for (std::size_t ulOffset = 0; ulOffset < oSection.sh_size; ulOffset += sizeof(Elf64_Sym))
            {
                const Elf64_Sym& oSymbol = *At<Elf64_Sym>(oSection.sh_offset + ulOffset);
                if (oSymbol.st_shndx != SHN_UNDEF)
                    m_aSymbols.push_back({At<char>(oStrings.sh_offset + oSymbol.st_name), oSymbol.st_value});
            }
        }
    }

    const char* m_pBase;
    std::vector<char> m_aBytes;
    std::vector<sSymbol> m_aSymbols;
};
} // namespace

std::set<std::string> ExportedNames(eModule eWhich)
{
    std::set<std::string> aNames;
    const CModule oModule(eWhich);
    for (const sSymbol& oSymbol : oModule.Symbols())
        aNames.insert(oSymbol.szName);
    return aNames;
}

std::vector<std::set<std::string>> TableSlots(eModule eWhich, const std::string& sTable, std::size_t nMost)
{
    const CModule oModule(eWhich);
    std::map<const void*, std::set<std::string>> aFunctions;
    for (const sSymbol& oSymbol : oModule.Symbols())
        aFunctions[oModule.Base() + oSymbol.ulValue].insert(oSymbol.szName);

    // Another module may have the table that all use.
    void* const* const ppTable = static_cast<void* const*>(::dlsym(RTLD_DEFAULT, sTable.c_str()));
    Dl_info oTable;
    void* pSymbol = nullptr;
    if (::dladdr1(ppTable, &oTable, &pSymbol, RTLD_DL_SYMENT) == 0 || pSymbol == nullptr)
        throw std::runtime_error("no virtual table " + sTable);
    const std::size_t nSize = static_cast<const Elf64_Sym*>(pSymbol)->st_size / sizeof(void*);

    std::vector<std::set<std::string>> aSlots;
    // The offset to the whole object and the type information stand before the slots.
    for (std::size_t i = 2; i < nSize && i <= nMost + 2; ++i)
    {
#if TOV_ADDRESS_SANITIZER
        // Clang counts what guards the table's end to its size.
        if (::__asan_address_is_poisoned(&ppTable[i]) != 0)
            break;
#endif
        // A function of the same name in another module may go before this one.
        Dl_info oInfo = {};
        if (aFunctions.count(ppTable[i]) == 0 && ::dladdr(ppTable[i], &oInfo) != 0 && oInfo.dli_saddr == ppTable[i] &&
            std::string(oInfo.dli_sname) != "__cxa_pure_virtual")
            aFunctions[ppTable[i]].insert(oInfo.dli_sname);
        aSlots.push_back(aFunctions[ppTable[i]]);
    }
    return aSlots;
}
