#include "Support/TOVLoadedModule.h"

#include "Support/TOVChildProcess.h"

#include <stdexcept>
#include <windows.h>

CLoadedModule::CLoadedModule(const std::string& sFileName)
{
    const std::string sProgram = PathOfThisProgram();
    m_pModule = ::LoadLibraryA((sProgram.substr(0, sProgram.find_last_of("\\/") + 1) + sFileName).c_str());
    if (m_pModule == nullptr)
        throw std::runtime_error("cannot load " + sFileName);
}

CLoadedModule::~CLoadedModule()
{
    ::FreeLibrary(static_cast<HMODULE>(m_pModule));
}
