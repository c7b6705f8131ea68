#include "Support/TOVLibraryImage.h"

#include <map>
#include <stdexcept>
#include <windows.h>

namespace
{
// The export directory of a module in memory.
class CModule
{
public:
    explicit CModule(eModule eWhich)
        : m_pBase(
              reinterpret_cast<const char*>(::GetModuleHandleA(eWhich == eModuleLibrary ? "TOVKernel.dll" : nullptr)))
    {
        const auto& oDos = At<IMAGE_DOS_HEADER>(0);
        const auto& oHeaders = At<IMAGE_NT_HEADERS>(static_cast<DWORD>(oDos.e_lfanew));
        const auto& oPlace = oHeaders.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
        if (oPlace.Size == 0)
            throw std::runtime_error("module exports nothing");
        const auto& oExports = At<IMAGE_EXPORT_DIRECTORY>(oPlace.VirtualAddress);
        for (DWORD i = 0; i < oExports.NumberOfNames; ++i)
        {
            const char* szName = &At<char>((&At<DWORD>(oExports.AddressOfNames))[i]);
            const WORD wOrdinal = (&At<WORD>(oExports.AddressOfNameOrdinals))[i];
            m_aNames[szName] = &At<char>((&At<DWORD>(oExports.AddressOfFunctions))[wOrdinal]);
        }
    }

    const std::map<std::string, const void*>& Names() const { return m_aNames; }

private:
    template<class T> const T& At(DWORD dwOffset) const { return *reinterpret_cast<const T*>(m_pBase + dwOffset); }

    const char* m_pBase;
    std::map<std::string, const void*> m_aNames;
};
} // namespace

std::set<std::string> ExportedNames(eModule eWhich)
{
    std::set<std::string> aNames;
    const CModule oModule(eWhich);
    for (const auto& oName : oModule.Names())
        aNames.insert(oName.first);
    return aNames;
}

std::vector<std::set<std::string>> TableSlots(eModule eWhich, const std::string& sTable, std::size_t nMost)
{
    const CModule oModule(eWhich);
    const auto pTable = oModule.Names().find(sTable);
    if (pTable == oModule.Names().end())
        throw std::runtime_error("no virtual table " + sTable);

    std::map<const void*, std::set<std::string>> aFunctions;
    for (const auto& oName : oModule.Names())
        aFunctions[oName.second].insert(oName.first);

    std::vector<std::set<std::string>> aSlots;
    // The offset to the whole object and the type information stand before the slots.
    const void* const* const ppSlots = static_cast<const void* const*>(pTable->second) + 2;
    for (std::size_t i = 0; i < nMost; ++i)
        aSlots.push_back(aFunctions[ppSlots[i]]);
    return aSlots;
}
