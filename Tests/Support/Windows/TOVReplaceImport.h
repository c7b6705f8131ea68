// Puts a function of the test program in the place of one that a loaded module imports.
#pragma once

#include <windows.h>

// The place where the module keeps the address of the function that it imports under this name from any library, or
// null if it imports none.
void** FindImport(HMODULE hModule, const char* szFunction);

// Writes an address into such a place. Returns the one that stood there.
void* WriteImport(void** pEntry, void* pFunction);

// Does both. Does nothing if the module does not import that function.
void ReplaceImport(HMODULE hModule, const char* szFunction, void* pReplacement);
