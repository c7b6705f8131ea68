// The translation of names that were written for Windows.
#pragma once

#include <memory>

namespace TOVPlatform
{
namespace TOVPosix
{
// A name that exists is used unchanged; in any other name the backslashes are read as slashes. A name without a
// backslash costs nothing: no copy, and no look at the file system. If there is no memory for the translation, the name
// is empty, and no file has it.
class CFileName
{
public:
    explicit CFileName(const char* szName);

    CFileName(const CFileName&) = delete;
    CFileName& operator=(const CFileName&) = delete;

    operator const char*() const { return m_szName; }

private:
    std::unique_ptr<char[]> m_pTranslated;
    const char* m_szName; // the caller's text or the translated one
};
} // namespace TOVPosix
} // namespace TOVPlatform
