#include <Posix/Files/TOVFileName.h>

#include <algorithm>
#include <cstring>
#include <new>

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

    const std::size_t ulSize = std::strlen(szName) + 1;
    m_pTranslated.reset(new (std::nothrow) char[ulSize]);
    m_szName = m_pTranslated.get();
    if (m_szName != nullptr)
        std::replace_copy(szName, szName + ulSize, m_pTranslated.get(), '\\', '/');
    else
        m_szName = "";
}
} // namespace TOVPosix
} // namespace TOVPlatform
