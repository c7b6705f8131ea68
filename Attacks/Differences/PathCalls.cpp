// Calls of the members of CTOVPath that look at its text only.
#include "RandomCalls.h"

#include <Path/TOVPath.h>

namespace
{
std::string ShowPath(const CTOVStringA& oText)
{
    if (oText.GetString() == nullptr)
        return "no block";
    return ShowUnits(oText.GetString(), static_cast<int>(oText.GetLength()));
}

// Separators, dots and repeated names, so that the parts of two paths are often the same.
CSampleText<char> MakePath(CRandomSource& oRandom)
{
    static constexpr const char* PARTS[] = {"a",  "A", "dir", "Dir", "file.txt", ".", "..", ".ext", "x.",   "C:", "z:",
                                            "\\", "/", "\\",  "/",   "\\",       "/", "\\", "/",    "\xE4", " b"};
    std::vector<char> aUnits;
    for (int nLeft = oRandom.Below(9); nLeft > 0; --nLeft)
    {
        for (const char* szPart = oRandom.OneOf(PARTS); *szPart != 0; ++szPart)
            aUnits.push_back(*szPart);
    }
    return CSampleText<char>(aUnits);
}

struct sPathCalls
{
    CRandomSource& m_oRandom;
    CSampleText<char> m_oText;
    CSampleText<char> m_oOtherText;
    CTOVPath m_oPath;
    CTOVPath m_oOther;

    explicit sPathCalls(CRandomSource& oRandom)
        : m_oRandom(oRandom), m_oText(MakePath(oRandom)), m_oOtherText(MakePath(oRandom)), m_oPath(m_oText.Get()),
          m_oOther(m_oOtherText.Get())
    {
        if (m_oRandom.Once(3) && m_oText.GetLength() > 0)
        {
            // The beginning of the path, so that one is often above the other.
            const int nLength = m_oRandom.Below(m_oText.GetLength());
            m_oOtherText = CSampleText<char>(std::vector<char>(m_oText.Get(), m_oText.Get() + nLength));
            m_oOther = m_oOtherText.Get();
        }
    }

    template<class TCall, class... TArguments>
    std::string Line(const char* szName, TCall fnCall, const TArguments&... oArguments)
    {
        return CallLine(std::string("Path.") + szName, ShowAll(m_oText, oArguments...), fnCall);
    }

    template<class TCall, class... TArguments>
    std::string Changed(const char* szName, TCall fnCall, const TArguments&... oArguments)
    {
        const auto fnShow = [&]() -> std::string {
            fnCall();
            return ShowPath(m_oPath);
        };
        return Line(szName, fnShow, oArguments...);
    }

    std::string Test()
    {
        static constexpr struct
        {
            const char* szName;
            bool (CTOVPath::*fnTest)() const;
        } TESTS[] = {{"IsUNC", &CTOVPath::IsUNC},
                     {"HasLeadingBackslash", &CTOVPath::HasLeadingBackslash},
                     {"HasLeadingForwardslash", &CTOVPath::HasLeadingForwardslash},
                     {"HasLeadingSlash", &CTOVPath::HasLeadingSlash},
                     {"HasTrailingBackslash", &CTOVPath::HasTrailingBackslash},
                     {"HasTrailingForwardslash", &CTOVPath::HasTrailingForwardslash},
                     {"HasTrailingSlash", &CTOVPath::HasTrailingSlash},
                     {"HasExtension", &CTOVPath::HasExtension}};
        const auto& oTest = m_oRandom.OneOf(TESTS);
        return Line(oTest.szName, [&] { return Show((m_oPath.*oTest.fnTest)()); });
    }

    std::string Count()
    {
        static constexpr struct
        {
            const char* szName;
            int (CTOVPath::*fnCount)() const;
        } COUNTS[] = {{"GetDriveNumber", &CTOVPath::GetDriveNumber},
                      {"GetNumComponents", &CTOVPath::GetNumComponents},
                      {"FindExtension", &CTOVPath::FindExtension}};
        const auto& oCount = m_oRandom.OneOf(COUNTS);
        return Line(oCount.szName, [&] { return Show((m_oPath.*oCount.fnCount)()); });
    }

    std::string Change()
    {
        static constexpr struct
        {
            const char* szName;
            void (CTOVPath::*fnChange)();
        } CHANGES[] = {{"AddTrailingBackslash", &CTOVPath::AddTrailingBackslash},
                       {"AddTrailingForwardslash", &CTOVPath::AddTrailingForwardslash},
                       {"AddLeadingBackslash", &CTOVPath::AddLeadingBackslash},
                       {"AddLeadingForwardslash", &CTOVPath::AddLeadingForwardslash},
                       {"RemoveTrailingBackslash", &CTOVPath::RemoveTrailingBackslash},
                       {"RemoveTrailingForwardslash", &CTOVPath::RemoveTrailingForwardslash},
                       {"RemoveTrailingSlash", &CTOVPath::RemoveTrailingSlash},
                       {"RemoveLeadingBackslash", &CTOVPath::RemoveLeadingBackslash},
                       {"RemoveLeadingForwardslash", &CTOVPath::RemoveLeadingForwardslash},
                       {"StripPath", &CTOVPath::StripPath},
                       {"RemoveExtension", &CTOVPath::RemoveExtension},
                       {"MakeLower", &CTOVPath::MakeLower},
                       {"MakeUpper", &CTOVPath::MakeUpper},
                       {"MakePretty", &CTOVPath::MakePretty},
                       {"Empty", &CTOVPath::Empty}};
        const auto& oChange = m_oRandom.OneOf(CHANGES);
        return Changed(oChange.szName, [&] { (m_oPath.*oChange.fnChange)(); });
    }

    std::string Part()
    {
        const int nFirst = m_oRandom.Between(-1, 6);
        const int nCount = m_oRandom.Between(-1, 4);
        switch (m_oRandom.Below(8))
        {
        case 0:
            return Line(
                "GetComponent", [&] { return ShowPath(m_oPath.GetComponent(nFirst, nCount)); }, nFirst, nCount);
        case 1:
            return Line(
                "GetComponentPosition", [&] { return Show(m_oPath.GetComponentPosition(nFirst)); }, nFirst);
        case 2:
            return Line("Parent", [&] { return ShowPath(m_oPath.Parent()); });
        case 3:
            return Line("GetPath", [&] { return ShowPath(m_oPath.GetPath()); });
        case 4:
            return Line(
                "GetFileName", [&] { return ShowPath(m_oPath.GetFileName(nCount > 0)); }, nCount > 0);
        case 5:
            return Line("GetExtension", [&] { return ShowPath(m_oPath.GetExtension()); });
        case 6:
            return Line(
                "BuildRoot", [&] { return ShowPath(CTOVPath::BuildRoot(nFirst * 5)); }, nFirst * 5);
        default:
            return Line("GetNextComponent", [&] { return ShowComponents(); });
        }
    }

    std::string ShowComponents() const
    {
        CTOVStringA oComponent;
        long lPosition = 0;
        std::string sShown;
        for (bool bMore = m_oPath.GetFirstComponent(oComponent, lPosition); bMore;
             bMore = m_oPath.GetNextComponent(oComponent, lPosition))
            sShown += ShowPath(oComponent) + ' ' + Show(lPosition) + ' ';
        return sShown + "end";
    }

    std::string Join()
    {
        switch (m_oRandom.Below(6))
        {
        case 0:
            return Changed(
                "Append", [&] { m_oPath.Append(m_oOther); }, m_oOtherText);
        case 1:
            return Line(
                "Concat", [&] { return ShowPath(m_oPath.Concat(m_oOther)); }, m_oOtherText);
        case 2:
            return Changed(
                "operator+=", [&] { m_oPath += m_oOtherText.Get(); }, m_oOtherText);
        case 3:
            return Changed(
                "AddExtension", [&] { m_oPath.AddExtension(m_oOther); }, m_oOtherText);
        case 4:
        {
            const auto fnMake = [&] {
                const int nReplaced = m_oPath.MakeForwardslashes();
                return Show(nReplaced) + ' ' + ShowPath(m_oPath);
            };
            return Line("MakeForwardslashes", fnMake);
        }
        default:
            const auto fnMake = [&] {
                const int nReplaced = m_oPath.MakeBackwardslashes();
                return Show(nReplaced) + ' ' + ShowPath(m_oPath);
            };
            return Line("MakeBackwardslashes", fnMake);
        }
    }

    std::string Relate()
    {
        const bool bLeading = m_oRandom.Once(2);
        const bool bTrailing = m_oRandom.Once(2);
        switch (m_oRandom.Below(7))
        {
        case 0:
            return Line(
                "Strip", [&] { return ShowPath(m_oPath.Strip(m_oOther)); }, m_oOtherText);
        case 1:
            return Line(
                "Compare", [&] { return Show(m_oPath.Compare(m_oOther)); }, m_oOtherText);
        case 2:
            return Line(
                "IsSame", [&] { return Show(m_oPath.IsSame(m_oOther, 0, bLeading, bTrailing)); }, m_oOtherText,
                bLeading, bTrailing);
        case 3:
            return Line(
                "IsBelow", [&] { return Show(m_oPath.IsBelow(m_oOther)); }, m_oOtherText);
        case 4:
            return Line(
                "IsAbove", [&] { return Show(m_oPath.IsAbove(m_oOther)); }, m_oOtherText);
        case 5:
            return Line(
                "IsBelowOrSame", [&] { return Show(m_oPath.IsBelowOrSame(m_oOther)); }, m_oOtherText);
        default:
            return Line(
                "IsAboveOrSame", [&] { return Show(m_oPath.IsAboveOrSame(m_oOther)); }, m_oOtherText);
        }
    }

    std::string Call()
    {
        switch (m_oRandom.Below(7))
        {
        case 0:
            return Test();
        case 1:
            return Count();
        case 2:
            return Change();
        case 3:
        case 4:
            return Part();
        case 5:
            return Join();
        default:
            return Relate();
        }
    }
};
} // namespace

std::string CallPath(CRandomSource& oRandom)
{
    return sPathCalls(oRandom).Call();
}
