// The matching of names by the rules of a Windows directory search.
#pragma once

#include <Debug/TOVBase.h>

#include <string>
#include <vector>

namespace TOVPlatform
{
namespace TOVPosix
{
// A mask for one component of a path. Case does not count; names and masks are characters of the process's locale, and
// a byte that is no character matches itself. `?` is one character and `*` any number, with these special cases:
//
//    *.*      everything, also names without a full stop
//    a.*      also "a": a full stop before a `*` may be missing at the end of a name
//    *.       names without a full stop
//    *.b      the `*` ends at the last full stop: "x.a.b" but not "x.b.a"
class CFilePattern
{
public:
    explicit CFilePattern(const char* szMask);

    static bool HasWildcard(const char* szMask, std::size_t ulLength);

    // Costs the product of both lengths at worst. Allocates only for a name that is longer than all before.
    bool Matches(const char* szName);

private:
    static void Decode(const char* szText, std::u32string& oText);

    std::u32string m_oMask; // characters in upper case, and the wildcards
    std::u32string m_oName; // the name that is compared, in upper case
    std::vector<char> m_aReached;
    std::vector<char> m_aNext;
};
} // namespace TOVPosix
} // namespace TOVPlatform
