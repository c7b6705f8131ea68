#include "Support/TOVNativeFile.h"

#include <fcntl.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
rlimit OpenFileLimit()
{
    rlimit oLimit;
    if (::getrlimit(RLIMIT_NOFILE, &oLimit) != 0)
        throw std::runtime_error("no limit of open files");
    return oLimit;
}

void SetOpenFileLimit(unsigned long long ullSoft)
{
    rlimit oLimit = OpenFileLimit();
    oLimit.rlim_cur = ullSoft;
    if (::setrlimit(RLIMIT_NOFILE, &oLimit) != 0)
        throw std::runtime_error("cannot limit the open files");
}
} // namespace

CUnusableStream::CUnusableStream(FILE* pFile) : m_nDescriptor(::fileno(pFile)), m_nKept(::dup(m_nDescriptor))
{
    if (m_nKept == -1 || ::close(m_nDescriptor) != 0)
        throw std::runtime_error("cannot take a descriptor away");
}

CUnusableStream::~CUnusableStream()
{
    ::dup2(m_nKept, m_nDescriptor);
    ::close(m_nKept);
}

CFewOpenFiles::CFewOpenFiles() : m_ullBefore(OpenFileLimit().rlim_cur)
{
    SetOpenFileLimit(64);
}

CFewOpenFiles::~CFewOpenFiles()
{
    SetOpenFileLimit(m_ullBefore);
}

int DescriptorOf(FILE* pFile)
{
    return ::fileno(pFile);
}

void SetFileTimes(const std::string& sPath, long long llAccess, long long llChange)
{
    const timespec aTimes[] = {{llAccess, 0}, {llChange, 0}};
    if (::utimensat(AT_FDCWD, sPath.c_str(), aTimes, 0) != 0)
        throw std::runtime_error("cannot set the times of " + sPath);
}

bool IsReadOnly(const std::string& sPath)
{
    struct stat oStatus;
    if (::stat(sPath.c_str(), &oStatus) != 0)
        throw std::runtime_error("no file " + sPath);
    return (oStatus.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}
