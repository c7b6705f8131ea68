// What a loaded module shows of its exported design: the names, and what stands in its virtual tables.
#pragma once

#include <set>
#include <string>
#include <vector>

// The library that this program has loaded, or the program itself.
enum eModule
{
    eModuleLibrary,
    eModuleProgram
};

// Names as the linker knows them, without the target's decoration of C names.
std::set<std::string> ExportedNames(eModule eModule);

// The functions that stand in the slots of a virtual table, in order, each with all its exported names, because
// functions with equal bodies can be one. A slot that no exported function fills, such as that of a pure operation, has
// no name. The table is named as the linker knows it. If the size of the table cannot be found out, the result has
// nMost slots.
std::vector<std::set<std::string>> TableSlots(eModule eModule, const std::string& sTable, std::size_t nMost);
