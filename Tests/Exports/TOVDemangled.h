// Exported names as they are written in the source.
#pragma once

#include <cstdlib>
#include <cxxabi.h>
#include <string>

// The name itself where it is not a decorated one.
inline std::string Demangle(const std::string& sName)
{
    int nStatus = 0;
    char* const szDemangled = abi::__cxa_demangle(sName.c_str(), nullptr, nullptr, &nStatus);
    const std::string sDemangled = nStatus == 0 ? szDemangled : sName;
    std::free(szDemangled);
    return sDemangled;
}
