#include "Support/TOVFullDisk.h"

#include "Support/TOVTestSupport.h"
#include "Support/Windows/TOVImportHook.h"

#include <cerrno>
#include <cstdio>

namespace
{
int RefuseToFlush(FILE*)
{
    errno = ENOSPC;
    return EOF;
}

int RefuseToWrite(int, const void*, unsigned int)
{
    errno = ENOSPC;
    return -1;
}
} // namespace

struct CFullDisk::sSystem
{
    const CTempFolder oFolder;
    const std::string sFile = oFolder.File("full");
    const CImportHook oFlush{"fflush", &RefuseToFlush};
    const CImportHook oWrite{"_write", &RefuseToWrite};
};

CFullDisk::CFullDisk() : m_pSystem(std::make_unique<sSystem>())
{
}

CFullDisk::~CFullDisk() = default;

const char* CFullDisk::Path() const
{
    return m_pSystem->sFile.c_str();
}
