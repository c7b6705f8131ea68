#include "Catalog/CatalogFiles.h"
#include "Support/TOVTestSupport.h"

#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

void WriteSparseFile(const std::string& sPath, unsigned long long ullZeros, const std::string& sTail)
{
    WriteWholeFile(sPath, "");
    const int nFile = ::open(sPath.c_str(), O_WRONLY | O_CLOEXEC);
    const bool bSized = ::ftruncate(nFile, static_cast<off_t>(ullZeros)) == 0;
    const ssize_t nWritten = ::pwrite(nFile, sTail.data(), sTail.size(), static_cast<off_t>(ullZeros));
    ::close(nFile);
    if (!bSized || nWritten != static_cast<ssize_t>(sTail.size()))
        throw std::runtime_error("cannot write " + sPath);
}

void CutFile(const std::string& sPath, long lSize)
{
    if (::truncate(sPath.c_str(), lSize) != 0)
        throw std::runtime_error("cannot cut " + sPath);
}

void MakeDirectoryOfBytes(const std::string& sPath)
{
    if (::mkdir(sPath.c_str(), 0777) != 0 && errno != EEXIST)
        throw std::runtime_error("cannot make " + sPath);
}
