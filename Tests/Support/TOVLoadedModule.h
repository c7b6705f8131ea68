// A library that is loaded while the program runs.
#pragma once

#include <string>

// Loads the library of this file name from the program's own folder, and unloads it at the end. Throws if it cannot be
// loaded.
class CLoadedModule
{
public:
    explicit CLoadedModule(const std::string& sFileName);
    ~CLoadedModule();
    CLoadedModule(const CLoadedModule&) = delete;
    CLoadedModule& operator=(const CLoadedModule&) = delete;

private:
    void* m_pModule;
};
