#include "Support/TOVNativeFile.h"

#include <fcntl.h>
#include <io.h>
#include <stdexcept>
#include <sys/utime.h>
#include <windows.h>

CUnusableStream::CUnusableStream(FILE* pFile) : m_nDescriptor(::_fileno(pFile)), m_nKept(::_dup(m_nDescriptor))
{
    if (m_nKept == -1 || ::_close(m_nDescriptor) != 0)
        throw std::runtime_error("cannot take a descriptor away");
}

CUnusableStream::~CUnusableStream()
{
    ::_dup2(m_nKept, m_nDescriptor);
    ::_close(m_nKept);
}

CFewOpenFiles::CFewOpenFiles() : m_ullBefore(0)
{
}

CFewOpenFiles::~CFewOpenFiles() = default;

int DescriptorOf(FILE* pFile)
{
    return ::_fileno(pFile);
}

void SetFileTimes(const std::string& sPath, long long llAccess, long long llChange)
{
    __utimbuf64 oTimes = {llAccess, llChange};
    if (::_utime64(sPath.c_str(), &oTimes) != 0)
        throw std::runtime_error("cannot set the times of " + sPath);
}

bool IsReadOnly(const std::string& sPath)
{
    const DWORD dwAttributes = ::GetFileAttributesA(sPath.c_str());
    if (dwAttributes == INVALID_FILE_ATTRIBUTES)
        throw std::runtime_error("no file " + sPath);
    return (dwAttributes & FILE_ATTRIBUTE_READONLY) != 0;
}
