#include "Support/TOVLoadedModule.h"

#include "Support/TOVChildProcess.h"

#include <dlfcn.h>
#include <stdexcept>

CLoadedModule::CLoadedModule(const std::string& sFileName)
{
    const std::string sProgram = PathOfThisProgram();
    m_pModule = ::dlopen((sProgram.substr(0, sProgram.rfind('/') + 1) + sFileName).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (m_pModule == nullptr)
        throw std::runtime_error(::dlerror());
}

CLoadedModule::~CLoadedModule()
{
    ::dlclose(m_pModule);
}
