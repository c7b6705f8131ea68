// Libraries that are loaded at run time. Each system has its own source.
#pragma once

// What the library needs of the system stays loaded, as in other programs.
void KeepSystemLibraries();

void* LoadFile(const char* szFile); // null if that fails
void* FindFunction(void* pLoaded, const char* szName);
void UnloadFile(void* pLoaded);
bool IsLoaded(const char* szFile);
