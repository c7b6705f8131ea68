// Puts a function of ours in the place of one that a loaded module imports.
#pragma once

#include <windows.h>

// Where the module holds the address of a function that it imports under this name from any library; NULL if it does
// not.
void** FindImport(HMODULE hModule, const char* szFunction);

// Writes such a place. Returns what stood there.
void* WriteImport(void** pEntry, void* pFunction);

// Both in one; does nothing if the module does not import that function.
void ReplaceImport(HMODULE hModule, const char* szFunction, void* pReplacement);
