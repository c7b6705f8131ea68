#include <Posix/Files/TOVFileName.h>

#include <algorithm>
#include <cstring>

#include <sys/stat.h>

namespace TOVPlatform
{
namespace TOVPosix
{
CFileName::CFileName(const char* szName) : m_szName(szName)
{
    struct stat oStat;
    if (std::strchr(szName, '\\') == nullptr || ::lstat(szName, &oStat) == 0)
        return;

    m_oTranslated = szName;
    std::replace(m_oTranslated.begin(), m_oTranslated.end(), '\\', '/');
    m_szName = m_oTranslated.c_str();
}
} // namespace TOVPosix
} // namespace TOVPlatform
