// The translation of names that were written for Windows.
#pragma once

#include <string>

namespace TOVPlatform
{
namespace TOVPosix
{
// A name that exists is used unchanged; in any other name the backslashes are read as slashes. A name without a
// backslash costs nothing: no copy, and no look at the file system.
class CFileName
{
public:
    explicit CFileName(const char* szName);

    CFileName(const CFileName&) = delete;
    CFileName& operator=(const CFileName&) = delete;

    operator const char*() const { return m_szName; }

private:
    std::string m_oTranslated;
    const char* m_szName; // the caller's text or the translated one
};
} // namespace TOVPosix
} // namespace TOVPlatform
