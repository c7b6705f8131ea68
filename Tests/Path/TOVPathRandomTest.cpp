// Random paths give the same answers as the plain model.
#include "Path/TOVPathInstruments.h"
#include "Path/TOVPathModel.h"

#include <clocale>
#include <random>

namespace
{
constexpr int NUM_PAIRS = 100000;
constexpr int NUM_PAIRS_OF_A_LOCALE = 20000;

// Short pieces make random paths of every form: both separators, drives, UNC starts, empty components, dots, both
// cases, characters of several bytes, and zeros. Many of a pair's paths are nearly equal, so that their ends are
// compared too.
class CRandomPaths
{
public:
    std::string Next()
    {
        std::string sPath;
        for (unsigned int nPieces = Below(8); nPieces > 0; --nPieces)
            sPath += Piece();
        return sPath;
    }

    std::string NextLike(std::string sPath)
    {
        for (unsigned int nChanges = Below(4); nChanges > 0 && !sPath.empty(); --nChanges)
        {
            char& cChar = sPath[Below(static_cast<unsigned int>(sPath.size()))];
            const unsigned int nChange = Below(8);
            if (nChange == 0)
                sPath += Piece();
            else if (nChange == 1)
                sPath.insert(0, Piece());
            else if (nChange == 2)
                sPath.pop_back();
            else if (cChar == '/' || cChar == '\\')
                cChar = cChar == '/' ? '\\' : '/';
            else if (nChange < 7)
                cChar = static_cast<char>(cChar ^ 0x20);
            else
                cChar = Piece()[0];
        }
        return Below(8) == 0 ? Next() : sPath;
    }

    unsigned int Below(unsigned int nLimit) { return static_cast<unsigned int>(m_oRandom()) % nLimit; }

private:
    std::string Piece()
    {
        static const std::string s_asPieces[] = {"/",
                                                 "\\",
                                                 "/",
                                                 "\\",
                                                 "//",
                                                 "\\\\",
                                                 "a",
                                                 "B",
                                                 "c",
                                                 "Z",
                                                 "_",
                                                 "[",
                                                 "C:",
                                                 "d:\\",
                                                 ".",
                                                 "..",
                                                 ".txt",
                                                 ".TAR.gz",
                                                 "..",
                                                 "name",
                                                 "DIR",
                                                 "program",
                                                 "Long component name",
                                                 "\xC3\xA9",
                                                 "\xC3\x89",
                                                 "\xC4\xE4\xD6\xF6",
                                                 "I",
                                                 "i",
                                                 "@`",
                                                 "a.b",
                                                 "\xE2\x82\xAC",
                                                 "\x83\x41x",
                                                 "\x83\x61x",
                                                 std::string(1, '\0')};
        return s_asPieces[Below(sizeof s_asPieces / sizeof s_asPieces[0])];
    }

    std::mt19937 m_oRandom{20261122};
};

CTOVStringA ToText(const std::string& sText)
{
    CTOVStringA oText;
    oText.AssignCopy(static_cast<int>(sText.size()), sText.c_str());
    return oText;
}

void ExpectEqualParts(const std::string& sPath)
{
    const CTOVPath oPath(ToText(sPath));
    const CPathModel oModel(sPath);
    std::vector<std::string> aComponents;
    CTOVStringA oComponent;
    long lPosition;
    for (bool b = oPath.GetFirstComponent(oComponent, lPosition); b; b = oPath.GetNextComponent(oComponent, lPosition))
        aComponents.push_back(TextOf(oComponent));

    EXPECT_EQ(oModel.GetComponents(), aComponents);
    EXPECT_EQ(oModel.GetNumComponents(), oPath.GetNumComponents());
    EXPECT_EQ(oModel.GetPath(), TextOf(oPath.GetPath()));
    EXPECT_EQ(oModel.FindExtension(), oPath.FindExtension());
    EXPECT_EQ(oModel.GetExtension(), TextOf(oPath.GetExtension()));
    if (!sPath.empty())
    {
        EXPECT_EQ(oModel.Parent(), TextOf(oPath.Parent()));
    }

    CTOVPath oStripped(oPath);
    oStripped.StripPath();
    EXPECT_EQ(oModel.StripPath(), TextOf(oStripped));
}

void ExpectEqualPieces(const std::string& sPath, int nFirst, int nCount)
{
    const CTOVPath oPath(ToText(sPath));
    const CPathModel oModel(sPath);

    EXPECT_EQ(oModel.GetComponent(nFirst, nCount), TextOf(oPath.GetComponent(nFirst, nCount)));
    EXPECT_EQ(oModel.GetComponentPosition(nFirst), oPath.GetComponentPosition(nFirst));
}

void ExpectEqualRelations(const std::string& sPath, const std::string& sOther)
{
    const CTOVPath oPath(ToText(sPath));
    const CTOVPath oOther(ToText(sOther));
    const CPathModel oModel(sPath);
    const CPathModel oOtherModel(sOther);

    EXPECT_EQ(oModel.Compare(oOtherModel), oPath.Compare(oOther));
    EXPECT_EQ(oModel.IsSame(oOtherModel, true, true), oPath.IsSame(oOther, 0, true, true));
    EXPECT_EQ(oModel.IsBelow(oOtherModel), oPath.IsBelow(oOther));
    EXPECT_EQ(oOtherModel.IsBelow(oModel), oPath.IsAbove(oOther));
    EXPECT_EQ(oModel.Strip(oOtherModel), TextOf(oPath.Strip(oOther)));
    if (sPath.empty() || sOther.empty())
        return;
    for (const bool bLeading : {false, true})
        EXPECT_EQ(oModel.IsSame(oOtherModel, bLeading, !bLeading), oPath.IsSame(oOther, 0, bLeading, !bLeading));
    EXPECT_EQ(oModel.IsSame(oOtherModel, false, false), oPath.IsSame(oOther, 0, false, false));
}

// What a joined path and the sharer of its block hold, and the capacities of both.
struct sJoined
{
    std::string sText;
    std::string sSharer;
    long lSize;
    long lSharerSize;
};

bool operator==(const sJoined& oFirst, const sJoined& oSecond)
{
    return oFirst.sText == oSecond.sText && oFirst.sSharer == oSecond.sSharer && oFirst.lSize == oSecond.lSize &&
           oFirst.lSharerSize == oSecond.lSharerSize;
}

sJoined Joined(const CTOVStringA& oText, const CTOVStringA& oSharer)
{
    return {TextOf(oText), ~oSharer, oText.GetData()->GetSize(), oSharer.GetData()->GetSize()};
}

// A text with nRoom places after its terminator.
CTOVStringA RoomyText(const std::string& sText, unsigned int nRoom)
{
    CTOVStringA oText;
    const int nLength = static_cast<int>(sText.size());
    char* const pBlock = oText.GetBuffer(nLength + static_cast<int>(nRoom));
    std::memset(pBlock, '#', sText.size() + nRoom);
    sText.copy(pBlock, sText.size());
    oText.ReleaseBuffer(nLength);
    return oText;
}

// The separator is appended first, and then the other path.
sJoined JoinPlainly(const std::string& sPath, unsigned int nRoom, const std::string& sOther)
{
    CTOVStringA oText = RoomyText(sPath, nRoom);
    const CTOVStringA oSharer(oText);
    if (!CPathModel::IsSlash(sPath.back()) && !CPathModel::IsSlash(sOther.front()))
        oText += '\\';
    oText += ToText(sOther);
    return Joined(oText, oSharer);
}

template<class TJoin> sJoined JoinBy(const std::string& sPath, unsigned int nRoom, const TJoin& fnJoin)
{
    CTOVPath oPath(RoomyText(sPath, nRoom));
    const CTOVStringA oSharer(oPath);
    return Joined(fnJoin(oPath), oSharer);
}

class CTOVPathRandomTest : public testing::TestWithParam<const char*>
{
protected:
    CTOVPathRandomTest() { EXPECT_NE(nullptr, std::setlocale(LC_CTYPE, GetParam())); }
    ~CTOVPathRandomTest() override { std::setlocale(LC_CTYPE, "C"); }

    const int m_nPairs = std::strcmp(GetParam(), "C") == 0 ? NUM_PAIRS : NUM_PAIRS_OF_A_LOCALE;
    CRandomPaths m_oPaths;
};
} // namespace

TEST_P(CTOVPathRandomTest, TakesPathsApartAsTheModelDoes)
{
    for (int i = 0; i < m_nPairs && !HasFailure(); ++i)
    {
        const std::string sPath = m_oPaths.Next();
        SCOPED_TRACE(testing::PrintToString(sPath));
        ExpectEqualParts(sPath);
        ExpectEqualPieces(sPath, static_cast<int>(m_oPaths.Below(9)) - 2, static_cast<int>(m_oPaths.Below(9)) - 2);
    }
}

TEST_P(CTOVPathRandomTest, RelatesPathsAsTheModelDoes)
{
    for (int i = 0; i < m_nPairs && !HasFailure(); ++i)
    {
        const std::string sPath = m_oPaths.Next();
        const std::string sOther = m_oPaths.NextLike(sPath);
        SCOPED_TRACE(testing::PrintToString(sPath) + " and " + testing::PrintToString(sOther));
        ExpectEqualRelations(sPath, sOther);
    }
}

TEST_P(CTOVPathRandomTest, JoinsPathsAsIfPieceByPiece)
{
    for (int i = 0; i < m_nPairs && !HasFailure(); ++i)
    {
        const std::string sPath = m_oPaths.Next() + 'x';
        const std::string sOther = 'y' + m_oPaths.Next();
        const std::string sText = sOther.c_str();
        const unsigned int nRoom = m_oPaths.Below(4) == 0 ? m_oPaths.Below(50) : 0;
        SCOPED_TRACE(testing::PrintToString(sPath) + " and " + testing::PrintToString(sOther));
        const sJoined oExpected = JoinPlainly(sPath, nRoom, sOther);
        const CTOVPath oOther(ToText(sOther));

        EXPECT_TRUE(oExpected == JoinBy(sPath, nRoom, [&](CTOVPath& oPath) { return oPath += oOther; }));
        EXPECT_TRUE(oExpected == JoinBy(sPath, nRoom, [&](CTOVPath& oPath) { return oPath.Concat(oOther); }));
        EXPECT_TRUE(JoinPlainly(sPath, nRoom, sText) ==
                    JoinBy(sPath, nRoom, [&](CTOVPath& oPath) { return oPath += sText.c_str(); }));
    }
}

// The case rules are those of the process's locale. Each system has some of these.
static std::vector<const char*> Locales()
{
    std::vector<const char*> aszLocales;
    for (const char* szLocale : {"C", "C.UTF-8", "German_Germany.1252", "de_DE.ISO-8859-1", "Japanese_Japan.932"})
    {
        if (std::setlocale(LC_CTYPE, szLocale) != nullptr)
            aszLocales.push_back(szLocale);
    }
    std::setlocale(LC_CTYPE, "C");
    return aszLocales;
}
INSTANTIATE_TEST_SUITE_P(Locales, CTOVPathRandomTest, testing::ValuesIn(Locales()));
