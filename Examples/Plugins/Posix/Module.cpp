#include "Module.h"

#include <string>

#include <dlfcn.h>

namespace
{
// Without a slash, the system would look for the file in its own folders only.
std::string PathOf(const std::string& sFile)
{
    return sFile.find('/') == std::string::npos ? "./" + sFile : sFile;
}
} // namespace

CModule::CModule(const char* szFile) : m_pModule(::dlopen(PathOf(szFile).c_str(), RTLD_NOW | RTLD_LOCAL))
{
}

CModule::~CModule()
{
    if (m_pModule != nullptr)
        ::dlclose(m_pModule);
}

void* CModule::Find(const char* szName) const
{
    return ::dlsym(m_pModule, szName);
}
