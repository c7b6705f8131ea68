// Changing both strings in place: replacing, case, order.
#include "TOVString/TOVStringKinds.h"

namespace
{
constexpr char NO_END[] = "GetData()->GetBuffer()[nNewLength] == '\\0'";

template<class TString> class CTOVStringReplaceTest : public testing::Test
{
};
TYPED_TEST_SUITE(CTOVStringReplaceTest, tStrings, sStringName);

struct sCharacterReplacement
{
    const char* szWhat;
    std::string sBefore;
    char cOld;
    char cNew;
    int nHits;
    std::string sAfter;
};

const sCharacterReplacement CHARACTER_REPLACEMENTS[] = {
    {"everywhere", "Das ist ein test", ' ', '_', 3, "Das_ist_ein_test"},
    {"at both ends", "xabx", 'x', 'y', 2, "yaby"},
    {"one that is not there", "yaby", 'x', 'y', 0, "yaby"},
    {"after zeros", {"x\0x\0x", 5}, 'x', 'y', 3, {"y\0y\0y", 5}},
    {"zeros inside the text, and not its terminator", {"a\0b\0c", 5}, '\0', '-', 2, "a-b-c"},
    {"by itself", "xabx", 'x', 'x', 0, "xabx"},
};

struct sTextReplacement
{
    const char* szWhat;
    std::string sBefore;
    const char* szOld;
    const char* szNew;
    int nHits;
    std::string sAfter;
};

const sTextReplacement TEXT_REPLACEMENTS[] = {
    {"of the same length", "Das ist ein test", "ein", "der", 1, "Das ist der test"},
    {"longer", "a.b.c.", ".", "<->", 3, "a<->b<->c<->"},
    {"shorter", "<->a<->b<->", "<->", ".", 3, ".a.b."},
    {"deleted", "a--b--c", "--", "", 2, "abc"},
    {"deleted by null", "a--b--c", "--", nullptr, 2, "abc"},
    {"the whole text deleted", "abab", "ab", "", 2, ""},
    {"nothing", "abc", "", "x", 0, "abc"},
    {"null", "abc", nullptr, "x", 0, "abc"},
    {"null by null", "abc", nullptr, nullptr, 0, "abc"},
    {"of another case", "abc", "ABC", "x", 0, "abc"},
    {"longer than the text", "abc", "abcd", "x", 0, "abc"},
    {"hits do not overlap", "aaaaa", "aa", "b", 2, "bba"},
    {"not searched again when growing", "xax", "a", "aaa", 1, "xaaax"},
    {"not searched again when shrinking", "abab", "ab", "a", 2, "aa"},
    {"not searched again when joined", "aabb", "ab", "", 1, "ab"},
    {"every segment, growing", {"ein\0zwei\0\0ein!", 14}, "ein", "drei", 2, {"drei\0zwei\0\0drei!", 16}},
    {"every segment, shrinking", {"\0ein\0ein\0", 9}, "ein", "1", 2, {"\0001\0001\0", 5}},
    {"every segment, in place", {"ein\0ein", 7}, "ein", "der", 2, {"der\0der", 7}},
    {"a segment that moves past the old length", {"a\0a", 3}, "a", "12345", 2, {"12345\00012345", 11}},
};

// The text in units of the string, and a terminator.
template<class TString> std::vector<tUnitOf<TString>> Units(const std::string& sText)
{
    std::vector<tUnitOf<TString>> aUnits;
    for (const char cCharacter : sText)
        aUnits.push_back(static_cast<tUnitOf<TString>>(cCharacter));
    aUnits.push_back(0);
    return aUnits;
}

// A string whose block has just room for the text.
template<class TString> TString Filled(const std::string& sText)
{
    TString oText;
    oText.Copy(Units<TString>(sText).data(), static_cast<int>(sText.size()));
    return oText;
}
} // namespace

TYPED_TEST(CTOVStringReplaceTest, ReplacesCharacters)
{
    for (const sCharacterReplacement& oCase : CHARACTER_REPLACEMENTS)
    {
        TypeParam oText = Filled<TypeParam>(oCase.sBefore);

        EXPECT_EQ(oCase.nHits, oText.Replace(Units<TypeParam>({oCase.cOld})[0], Units<TypeParam>({oCase.cNew})[0]))
            << oCase.szWhat;

        EXPECT_EQ((sHeld{oCase.sAfter, static_cast<long>(oCase.sBefore.size() + 1)}), StateOf(oText)) << oCase.szWhat;
    }
}

// A block grows to the exact size; where the text gets no longer, it stays with its capacity.
TYPED_TEST(CTOVStringReplaceTest, ReplacesTexts)
{
    for (const sTextReplacement& oCase : TEXT_REPLACEMENTS)
    {
        SCOPED_TRACE(oCase.szWhat);
        TypeParam oText = Filled<TypeParam>(oCase.sBefore);
        const auto* const pBlock = oText.GetString();
        const auto aOld = Units<TypeParam>(oCase.szOld != nullptr ? oCase.szOld : "");
        const auto aNew = Units<TypeParam>(oCase.szNew != nullptr ? oCase.szNew : "");

        EXPECT_EQ(oCase.nHits, oText.Replace(oCase.szOld != nullptr ? aOld.data() : nullptr,
                                             oCase.szNew != nullptr ? aNew.data() : nullptr));

        const std::size_t nCapacity = std::max(oCase.sBefore.size(), oCase.sAfter.size()) + 1;
        EXPECT_EQ((sHeld{oCase.sAfter, static_cast<long>(nCapacity)}), StateOf(oText));
        EXPECT_EQ(oCase.sAfter.size() <= oCase.sBefore.size(), pBlock == oText.GetString());
    }
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesNoCharacterBehindTheText)
{
    TypeParam oText(TXT("axbx"));
    oText.ReleaseBuffer(2);

    EXPECT_EQ(1, oText.Replace(CHR('x'), CHR('y')));

    EXPECT_EQ(std::string("ay\0x\0", 5), BlockOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ReplacesNoCharacterOfAnEmptyString)
{
    TypeParam oNew;
    TypeParam oEmptied(TXT("xx"));
    oEmptied.Empty();

    EXPECT_EQ(0, oNew.Replace(CHR('x'), CHR('y')));
    EXPECT_EQ(0, oEmptied.Replace(CHR('\0'), CHR('y')));

    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
    EXPECT_EQ(Holds("", 3), StateOf(oEmptied));
}

TYPED_TEST(CTOVStringReplaceTest, RefusesACharacterOfZeroAsTheNewOne)
{
    TypeParam oText(TXT("xabx"));
    TypeParam oNew;

    EXPECT_SOURCE_CHECK("cNewChar > 0", oText.Replace(CHR('x'), CHR('\0')));
    EXPECT_SOURCE_CHECK("cNewChar > 0", oText.Replace(CHR('\0'), CHR('\0')));
    EXPECT_SOURCE_CHECK("cNewChar > 0", oNew.Replace(CHR('x'), CHR('\0')));

    EXPECT_EQ(Holds("xabx", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, GrowsInTheCapacityThatIsThere)
{
    TypeParam oText(TXT("a.b.......")); // capacity 11
    oText.ReleaseBuffer(4);
    const auto* const pBlock = oText.GetString();

    EXPECT_EQ(2, oText.Replace(TXT("."), TXT("1234")));

    EXPECT_EQ(Holds("a1234b1234", 11), StateOf(oText));
    EXPECT_EQ(pBlock, oText.GetString());
}

TYPED_TEST(CTOVStringReplaceTest, FindsNothingInAnEmptyString)
{
    TypeParam oNew;
    TypeParam oEmptied(TXT("xx"));
    oEmptied.Empty();

    EXPECT_EQ(0, oNew.Replace(TXT("x"), TXT("yy")));
    EXPECT_EQ(0, oEmptied.Replace(TXT("x"), TXT("yy")));

    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
    EXPECT_EQ(Holds("", 3), StateOf(oEmptied));
}

TYPED_TEST(CTOVStringReplaceTest, SegmentsMovedBehindTheOldLengthAreNotReachedInPlace)
{
    TypeParam oText(TXT("0123456789ABCDEFGHI"));
    oText.Empty();
    oText.ConcatInPlace(3, TXT("a\0a"));

    EXPECT_EQ(2, oText.Replace(TXT("a"), TXT("12345")));

    EXPECT_EQ(Holds("12345\0a\0\0\0\0", 20), StateOf(oText));
}

// The same, but what the block held past the text stands where the new end should be.
TYPED_TEST(CTOVStringReplaceTest, RefusesToEndInWhatTheBlockHeldBehindTheText)
{
    TypeParam oText(TXT("0123456789ABCDEFGHI"));
    oText.ReleaseBuffer(0);
    oText.ConcatInPlace(3, TXT("a\0a"));

    EXPECT_SOURCE_CHECK(NO_END, oText.Replace(TXT("a"), TXT("12345")));
}

TYPED_TEST(CTOVStringReplaceTest, ATextCutShorterIsSearchedToItsEndOnly)
{
    TypeParam oText(TXT("a.b.c.d"));
    oText.ReleaseBuffer(3);

    EXPECT_EQ(1, oText.Replace(TXT("."), TXT("--")));

    EXPECT_EQ(Holds("a--b", 8), StateOf(oText));
}

// The sharer that was appended to wrote over the shorter one's terminator. Of the two hits that the first pass now
// counts, the second is out of the second pass's reach.
TYPED_TEST(CTOVStringReplaceTest, RefusesAResultWithoutATerminatorAtItsEnd)
{
    TypeParam oShort(TXT("abcdef"));
    oShort.ReleaseBuffer(2);
    TypeParam oLong(oShort);
    oLong += TXT("xa");

    EXPECT_SOURCE_CHECK(NO_END, oShort.Replace(TXT("a"), TXT("")));
}

TYPED_TEST(CTOVStringReplaceTest, LowersAndRaises)
{
    TypeParam oText(TXT("UPPPERLETTERS"));

    oText.MakeLower();
    EXPECT_EQ(Holds("uppperletters", 14), StateOf(oText));

    oText.MakeUpper();
    EXPECT_EQ(Holds("UPPPERLETTERS", 14), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, TurnsRound)
{
    TypeParam oText(TXT("abcd"));

    oText.Reverse();

    EXPECT_EQ(Holds("dcba", 5), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ChangesUpToTheFirstZero)
{
    TypeParam oText;
    oText.Copy(TXT("aB\0cD"), 5);

    oText.MakeUpper();
    EXPECT_EQ(Holds("AB\0cD", 6), StateOf(oText));
    oText.MakeLower();
    EXPECT_EQ(Holds("ab\0cD", 6), StateOf(oText));
    oText.Reverse();
    EXPECT_EQ(Holds("ba\0cD", 6), StateOf(oText));
}

TYPED_TEST(CTOVStringReplaceTest, ChangesNothingWithoutABlock)
{
    TypeParam oNew;

    oNew.MakeLower();
    oNew.MakeUpper();
    oNew.Reverse();

    EXPECT_EQ(HoldsNothing(), StateOf(oNew));
}
