// A path against a simple model of its components, written after the description in its header.
#include "Fuzz.h"

#include <Path/TOVPath.h>

#include <algorithm>
#include <vector>

namespace
{
constexpr int MAX_TEXT = 60;

bool IsSlash(char cChar)
{
    return cChar == '/' || cChar == '\\';
}

std::string Lower(std::string sText)
{
    for (char& cChar : sText)
        if (cChar >= 'A' && cChar <= 'Z')
            cChar = static_cast<char>(cChar + 32);
    return sText;
}

int SignOf(int nValue)
{
    return static_cast<int>(nValue > 0) - static_cast<int>(nValue < 0);
}

std::string TextOf(const CTOVStringA& oText)
{
    return oText.IsEmpty() ? std::string()
                           : std::string(oText.GetString(), static_cast<std::size_t>(oText.GetLength()));
}

class CPathModel
{
public:
    struct sPart
    {
        std::size_t nStart;
        std::size_t nEnd;
    };

    explicit CPathModel(const std::string& sPath) : sText(sPath)
    {
        std::size_t nStart = HasLeading() ? 1 : 0;
        for (std::size_t nIndex = 1; nIndex < sText.size(); ++nIndex)
        {
            if (!IsSlash(sText[nIndex]))
                continue;
            aParts.push_back({nStart, nIndex});
            nStart = nIndex + 1;
        }
        if (nStart < sText.size())
            aParts.push_back({nStart, sText.size()});
    }

    bool HasLeading() const { return !sText.empty() && IsSlash(sText.front()); }
    bool HasTrailing() const { return !sText.empty() && IsSlash(sText.back()); }
    int GetCount() const { return static_cast<int>(aParts.size()); }

    // Components with the separators between them.
    std::string GetParts(int nFirst, int nCount) const
    {
        if (nCount == 0)
            return "";
        const std::size_t nStart = aParts[nFirst].nStart;
        return sText.substr(nStart, aParts[nFirst + nCount - 1].nEnd - nStart);
    }

    // The index of the last separator in the first nEnd characters.
    std::size_t FindSlash(std::size_t nEnd) const { return nEnd == 0 ? NONE : sText.find_last_of("/\\", nEnd - 1); }

    std::string GetParent() const
    {
        const std::size_t nSlash = FindSlash(sText.size() - (HasTrailing() ? 1 : 0));
        return nSlash == NONE ? "" : sText.substr(0, nSlash);
    }

    // The index of the dot that begins the extension, or -1.
    int FindExtension() const
    {
        const std::size_t nDot = sText.rfind('.');
        return nDot != NONE && !aParts.empty() && nDot > aParts.back().nStart ? static_cast<int>(nDot) : -1;
    }

    // Returns false where there is no name.
    bool GetFileName(std::string& sName) const
    {
        if (aParts.empty() || (aParts.size() == 1 && aParts[0].nStart == aParts[0].nEnd))
            return false;
        sName = GetParts(GetCount() - 1, 1);
        return true;
    }

    // Whether all components are the first ones of the other path.
    bool IsStartOf(const CPathModel& oOther) const
    {
        return Lower(GetParts(0, GetCount())) == Lower(oOther.GetParts(0, GetCount()));
    }

    int Compare(const CPathModel& oOther) const
    {
        for (int nPart = 0; nPart < GetCount() && nPart < oOther.GetCount(); ++nPart)
        {
            const int nOrder = Lower(GetParts(nPart, 1)).compare(Lower(oOther.GetParts(nPart, 1)));
            if (nOrder != 0)
                return SignOf(nOrder);
        }
        return SignOf(GetCount() - oOther.GetCount());
    }

    static constexpr std::size_t NONE = std::string::npos;
    std::string sText;
    std::vector<sPart> aParts;
};

// Calls a function that throws in some cases, and expects a text in all others.
template<class TFunction> void ExpectText(bool bFails, const std::string& sExpected, TFunction fnFunction)
{
    std::string sActual;
    FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { sActual = TextOf(fnFunction()); }));
    if (!bFails)
        FUZZ_EXPECT_EQ(sExpected, sActual);
}

template<class TFunction> void ExpectValue(bool bFails, int nExpected, TFunction fnFunction)
{
    int nActual = 0;
    FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { nActual = fnFunction(); }));
    if (!bFails)
        FUZZ_EXPECT_EQ(nExpected, nActual);
}

// Changes a path, and expects its text afterwards.
template<class TFunction>
void ExpectChange(const CPathModel& oModel, bool bFails, const std::string& sExpected, TFunction fnChange)
{
    CTOVPath oPath(oModel.sText.c_str());
    FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { fnChange(oPath); }));
    FUZZ_EXPECT_EQ(bFails ? oModel.sText : sExpected, TextOf(oPath));
}

void CheckComponents(const CTOVPath& oPath, const CPathModel& oModel, int nFirst, int nCount)
{
    FUZZ_EXPECT_EQ(oModel.GetCount(), oPath.GetNumComponents());
    CTOVStringA oComponent;
    long lPosition = 0;
    bool bFound = oPath.GetFirstComponent(oComponent, lPosition);
    for (int nPart = 0; nPart < oModel.GetCount(); ++nPart)
    {
        FUZZ_EXPECT(bFound);
        FUZZ_EXPECT_EQ(oModel.GetParts(nPart, 1), TextOf(oComponent));
        FUZZ_EXPECT_EQ(oModel.GetParts(nPart, 1), TextOf(oPath.GetComponent(nPart, 1)));
        FUZZ_EXPECT_EQ(static_cast<int>(oModel.aParts[nPart].nStart), oPath.GetComponentPosition(nPart));
        FUZZ_EXPECT_EQ(static_cast<long>(oModel.aParts[nPart].nEnd), lPosition);
        bFound = oPath.GetNextComponent(oComponent, lPosition);
    }
    FUZZ_EXPECT(!bFound);
    if (nFirst >= 0 && nCount >= 0 && static_cast<long long>(nFirst) + nCount <= oModel.GetCount())
        FUZZ_EXPECT_EQ(oModel.GetParts(nFirst, nCount), TextOf(oPath.GetComponent(nFirst, nCount)));
    else
        Fuzz::FailsCheck([&] { oPath.GetComponent(nFirst, nCount); });
    Fuzz::FailsCheck([&] { oPath.GetComponentPosition(nFirst); });
}

void CheckParts(const CTOVPath& oPath, const CPathModel& oModel)
{
    const std::string& sText = oModel.sText;
    const std::size_t nSlash = oModel.FindSlash(sText.size());
    ExpectText(sText.empty(), sText.empty() ? "" : oModel.GetParent(), [&] { return oPath.Parent().AsString(); });
    ExpectText(false, sText.substr(0, nSlash), [&] { return oPath.GetPath().AsString(); });
    ExpectChange(oModel, false, nSlash == CPathModel::NONE ? sText : sText.substr(nSlash + 1),
                 [](CTOVPath& oChanged) { oChanged.StripPath(); });

    std::string sName;
    const bool bNoName = !oModel.GetFileName(sName);
    ExpectText(bNoName, sName, [&] { return oPath.GetFileName(true); });
    ExpectText(bNoName, sName.substr(0, sName.rfind('.')), [&] { return oPath.GetFileName(false); });

    const int nDot = oModel.FindExtension();
    FUZZ_EXPECT_EQ(nDot, oPath.FindExtension());
    FUZZ_EXPECT_EQ(nDot != -1, oPath.HasExtension());
    ExpectText(false, nDot == -1 ? "" : sText.substr(nDot), [&] { return oPath.GetExtension(); });
    ExpectChange(oModel, false, nDot == -1 ? sText : sText.substr(0, nDot),
                 [](CTOVPath& oChanged) { oChanged.RemoveExtension(); });
    ExpectChange(oModel, false, nDot == -1 ? sText + ".x" : sText,
                 [](CTOVPath& oChanged) { oChanged.AddExtension(CTOVStringA(".x")); });
}

void CheckEnds(const CTOVPath& oPath, const CPathModel& oModel)
{
    const std::string& sText = oModel.sText;
    const bool bEmpty = sText.empty();
    const char cFirst = bEmpty ? ' ' : sText.front();
    const char cLast = bEmpty ? ' ' : sText.back();
    ExpectValue(bEmpty, cFirst == '\\', [&] { return oPath.HasLeadingBackslash(); });
    ExpectValue(bEmpty, cFirst == '/', [&] { return oPath.HasLeadingForwardslash(); });
    ExpectValue(bEmpty, IsSlash(cFirst), [&] { return oPath.HasLeadingSlash(); });
    ExpectValue(bEmpty, cLast == '\\', [&] { return oPath.HasTrailingBackslash(); });
    ExpectValue(bEmpty, cLast == '/', [&] { return oPath.HasTrailingForwardslash(); });
    ExpectValue(bEmpty, IsSlash(cLast), [&] { return oPath.HasTrailingSlash(); });
    ExpectValue(bEmpty || sText == "\\", sText.substr(0, 2) == "\\\\", [&] { return oPath.IsUNC(); });
    const bool bDrive = sText.size() > 1 && sText[1] == ':' && CTOVPath::IsDriveLetter(cFirst);
    ExpectValue(sText.size() < 2, bDrive ? Lower(sText)[0] - 'a' : -1, [&] { return oPath.GetDriveNumber(); });

    const std::string sShort = sText.substr(0, bEmpty ? 0 : sText.size() - 1);
    ExpectChange(oModel, bEmpty, cLast == '\\' ? sText : sText + '\\', [](CTOVPath& o) { o.AddTrailingBackslash(); });
    ExpectChange(oModel, bEmpty, cLast == '/' ? sText : sText + '/', [](CTOVPath& o) { o.AddTrailingForwardslash(); });
    ExpectChange(oModel, bEmpty, cFirst == '\\' ? sText : '\\' + sText, [](CTOVPath& o) { o.AddLeadingBackslash(); });
    ExpectChange(oModel, bEmpty, cFirst == '/' ? sText : '/' + sText, [](CTOVPath& o) { o.AddLeadingForwardslash(); });
    ExpectChange(oModel, bEmpty, cLast == '\\' ? sShort : sText, [](CTOVPath& o) { o.RemoveTrailingBackslash(); });
    ExpectChange(oModel, bEmpty, cLast == '/' ? sShort : sText, [](CTOVPath& o) { o.RemoveTrailingForwardslash(); });
    ExpectChange(oModel, bEmpty, IsSlash(cLast) ? sShort : sText, [](CTOVPath& o) { o.RemoveTrailingSlash(); });
    // The length stays, so that the terminator becomes a character.
    const std::string sRest = sText.substr(bEmpty ? 0 : 1) + '\0';
    ExpectChange(oModel, bEmpty, cFirst == '\\' ? sRest : sText, [](CTOVPath& o) { o.RemoveLeadingBackslash(); });
    ExpectChange(oModel, bEmpty, cFirst == '/' ? sRest : sText, [](CTOVPath& o) { o.RemoveLeadingForwardslash(); });

    std::string sForward = sText;
    std::replace(sForward.begin(), sForward.end(), '\\', '/');
    ExpectChange(oModel, false, sForward, [](CTOVPath& o) { o.MakeForwardslashes(); });
    ExpectChange(oModel, false, Lower(sText), [](CTOVPath& o) { o.MakePretty(); });
}

void CheckRelations(const CTOVPath& oPath, const CPathModel& oModel, const CTOVPath& oOther,
                    const CPathModel& oOtherModel, bool bIgnoreLeading, bool bIgnoreTrailing)
{
    const std::string& sText = oModel.sText;
    const std::string& sOther = oOtherModel.sText;
    const bool bSlash = oModel.HasTrailing() || oOtherModel.HasLeading();
    const bool bFails = sText.empty() || (sOther.empty() && !oModel.HasTrailing());
    const std::string sJoined = sText + (bSlash ? "" : "\\") + sOther;
    ExpectText(bFails, sJoined, [&] { return oPath.Concat(oOther).AsString(); });
    ExpectChange(oModel, bFails, sJoined, [&](CTOVPath& o) { o.Append(oOther); });
    ExpectChange(oModel, bFails, sJoined, [&](CTOVPath& o) { o += sOther.c_str(); });
    ExpectChange(oModel, bFails, sJoined, [&](CTOVPath& o) { o += oOther.AsString(); });

    const int nOrder = oModel.Compare(oOtherModel);
    FUZZ_EXPECT_EQ(nOrder, SignOf(oPath.Compare(oOther)));
    const int nCount = oModel.GetCount();
    const int nOtherCount = oOtherModel.GetCount();
    const bool bBelow = nCount < nOtherCount && oModel.IsStartOf(oOtherModel);
    const bool bAbove = nOtherCount < nCount && oOtherModel.IsStartOf(oModel);
    const bool bSameParts = nCount == nOtherCount && oModel.IsStartOf(oOtherModel);
    FUZZ_EXPECT_EQ(bBelow, oPath.IsBelow(oOther));
    FUZZ_EXPECT_EQ(bAbove, oPath.IsAbove(oOther));
    FUZZ_EXPECT_EQ(bBelow || bSameParts, oPath.IsBelowOrSame(oOther));
    FUZZ_EXPECT(oPath.IsAboveOrSame(oOther));

    const bool bSame = bSameParts && (bIgnoreTrailing || oModel.HasTrailing() == oOtherModel.HasTrailing()) &&
                       (bIgnoreLeading || oModel.HasLeading() == oOtherModel.HasLeading());
    const bool bRefused =
        (sText.empty() || sOther.empty()) && nCount == nOtherCount && !(bIgnoreLeading && bIgnoreTrailing);
    ExpectValue(bRefused, bSame, [&] { return oPath.IsSame(oOther, 0, bIgnoreLeading, bIgnoreTrailing); });

    const std::string sStripped = TextOf(oPath.Strip(oOther));
    FUZZ_EXPECT(sText.find(sStripped) != std::string::npos);
}
} // namespace

FUZZ_TARGET(Paths)
{
    const int nFirst = oInput.Number();
    const int nCount = oInput.Number();
    const int nFlags = oInput.Byte();
    const CPathModel oModel(oInput.Text(MAX_TEXT));
    const CPathModel oOtherModel((nFlags & 4) != 0 ? oModel.sText + oInput.Text(MAX_TEXT) : oInput.Text(MAX_TEXT));
    const CTOVPath oPath(oModel.sText.c_str());
    const CTOVPath oOther(oOtherModel.sText.c_str());

    CheckComponents(oPath, oModel, nFirst, nCount);
    CheckParts(oPath, oModel);
    CheckEnds(oPath, oModel);
    CheckRelations(oPath, oModel, oOther, oOtherModel, (nFlags & 1) != 0, (nFlags & 2) != 0);
    FUZZ_EXPECT_EQ(oModel.sText, TextOf(oPath));
    FUZZ_EXPECT_EQ(oOtherModel.sText, TextOf(oOther));
}
