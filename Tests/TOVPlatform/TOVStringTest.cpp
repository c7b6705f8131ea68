#include "TOVPlatform/TOVStringApis.h"

namespace
{
constexpr char NO_STRING1[] = "szString1 != NULL";
constexpr char NO_STRING2[] = "szString2 != NULL";
constexpr char NO_STRING[] = "szString != NULL";
constexpr char NO_SET[] = "szCharSet != NULL";
constexpr char NO_DESTINATION[] = "szStringDest != NULL";
constexpr char NO_SOURCE[] = "szStringSrc != NULL";
constexpr char NO_COUNT[] = "nCount > 0";

struct sFind
{
    const char* szText;
    const char* szWanted;
    long lOffset;
};

struct sChange
{
    const char* szBefore;
    const char* szAfter;
};

template<class TApi> class TOVPlatformStringTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVPlatformStringTest, tStringApis, );

// Runs a table of finds through a function of two texts.
template<class TApi, class TFunction, std::size_t nFinds>
void ExpectFinds(TFunction fnFind, const sFind (&aFinds)[nFinds])
{
    for (const sFind& oFind : aFinds)
    {
        auto oText = TApi::Text(oFind.szText);
        auto oWanted = TApi::Text(oFind.szWanted);
        EXPECT_EQ(oFind.lOffset, OffsetOf<typename TApi::tUnit>(fnFind(oText.Get(), oWanted.Get()), oText))
            << '"' << oFind.szWanted << "\" in \"" << oFind.szText << '"';
    }
}
} // namespace

TYPED_TEST(TOVPlatformStringTest, ComparesByUnsignedUnits)
{
    const sOrder aOrders[] = {
        {"", "", 0},    {"abc", "abc", 0},    {"", "a", -1},        {"abc", "abd", -1},     {"abc", "abcd", -1},
        {"B", "a", -1}, {"Test", "test", -1}, {"\x7F", "\x80", -1}, {"a\x01", "a\xFF", -1}, {"a", "aa", -1},
    };
    ExpectOrders<TypeParam>(TypeParam::Compare, aOrders);
}

TYPED_TEST(TOVPlatformStringTest, ComparesATextWithItself)
{
    auto oText = TypeParam::Text("This is a test");
    EXPECT_EQ(0, TypeParam::Compare(oText, oText));
    EXPECT_EQ(0, TypeParam::CompareNoCase(oText, oText));
    EXPECT_EQ(0, TypeParam::Collate(oText, oText));
    EXPECT_EQ(0, TypeParam::CollateNoCase(oText, oText));
}

TYPED_TEST(TOVPlatformStringTest, ComparesWithoutCaseByLowerCaseLetters)
{
    const sOrder aOrders[] = {
        {"", "", 0},        {"AbC", "aBc", 0},  {"This is a Test", "THIS IS A tEST", 0},
        {"abc", "ABD", -1}, {"ABC", "abd", -1}, {"", "A", -1},
        {"ab", "ABC", -1},  {"_", "A", -1},     {"[", "a", -1},
        {"@", "a", -1},     {"Z", "{", -1},
    };
    ExpectOrders<TypeParam>(SignOfCompareNoCase<TypeParam>, aOrders);
    ExpectOrders<TypeParam>(SignOfCollateNoCase<TypeParam>, aOrders);
}

// A runtime may take bytes from 0x80 up as negative.
TYPED_TEST(TOVPlatformStringTest, ComparesByUnsignedUnitsWithoutCaseToo)
{
    const sOrder aOrders[] = {
        {"\x7F", "\x80", -1},
        {"z", "\xFF", -1},
        {"Z", "\x80", -1},
        {"", "\xFF", -1},
        {"a\x01", "A\xFF", -1},
        {"\x80", "\xFF", -1},
        {"\x80"
         "A",
         "\x80"
         "a",
         0},
    };
    ExpectOrders<TypeParam>(SignOfCompareNoCase<TypeParam>, aOrders);
    ExpectOrders<TypeParam>(SignOfCollateNoCase<TypeParam>, aOrders);
}

TYPED_TEST(TOVPlatformStringTest, CollatesToMinusOneZeroOrOne)
{
    const sOrder aOrders[] = {{"", "", 0}, {"abc", "abc", 0}, {"", "zz", -1}, {"abc", "xyz", -1}, {"a", "abcdef", -1}};
    ExpectOrders<TypeParam>(TypeParam::Collate, aOrders);
}

TYPED_TEST(TOVPlatformStringTest, ComparisonsRefuseNull)
{
    auto oText = TypeParam::Text("a");
    for (const auto fnCompare :
         {TypeParam::Compare, TypeParam::CompareNoCase, TypeParam::Collate, TypeParam::CollateNoCase})
    {
        EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING1, fnCompare(nullptr, oText));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING2, fnCompare(oText, nullptr));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING1, fnCompare(nullptr, nullptr));
    }
    EXPECT_EQ(0, TypeParam::Compare(oText, TypeParam::Text("a")));
}

TYPED_TEST(TOVPlatformStringTest, CountsTheUnitsInFrontOfTheTerminator)
{
    EXPECT_EQ(0, TypeParam::Length(TypeParam::Text("")));
    EXPECT_EQ(1, TypeParam::Length(TypeParam::Text("a")));
    EXPECT_EQ(14, TypeParam::Length(TypeParam::Text("This is a test")));
    EXPECT_EQ(5000, TypeParam::Length(TypeParam::Text(std::string(5000, 'x'))));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::Length(nullptr));
}

TYPED_TEST(TOVPlatformStringTest, LowersInPlace)
{
    auto oText = TypeParam::Text("This Is A @[`{ TEST 123");

    EXPECT_EQ(oText.Get(), TypeParam::ToLower(oText));

    EXPECT_EQ(0, TypeParam::Compare(oText, TypeParam::Text("this is a @[`{ test 123")));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::ToLower(nullptr));
}

TYPED_TEST(TOVPlatformStringTest, RaisesInPlace)
{
    auto oText = TypeParam::Text("This Is A @[`{ test 123");

    EXPECT_EQ(oText.Get(), TypeParam::ToUpper(oText));

    EXPECT_EQ(0, TypeParam::Compare(oText, TypeParam::Text("THIS IS A @[`{ TEST 123")));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::ToUpper(nullptr));
}

TYPED_TEST(TOVPlatformStringTest, ReversesInPlace)
{
    const sChange aChanges[] = {{"", ""}, {"a", "a"}, {"ab", "ba"}, {"abc", "cba"}, {"This is", "si sihT"}};
    for (const sChange& oChange : aChanges)
    {
        auto oText = TypeParam::Text(oChange.szBefore);
        EXPECT_EQ(oText.Get(), TypeParam::Reverse(oText));
        EXPECT_EQ(0, TypeParam::Compare(oText, TypeParam::Text(oChange.szAfter))) << oChange.szBefore;
    }
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::Reverse(nullptr));
}

TYPED_TEST(TOVPlatformStringTest, FindsTheFirstCharacter)
{
    auto oText = TypeParam::Text("This is a test");
    const typename TypeParam::tUnit* szText = oText;

    EXPECT_EQ(szText, TypeParam::FindCharacter(szText, 'T'));
    EXPECT_EQ(szText + 3, TypeParam::FindCharacter(szText, 's'));
    EXPECT_EQ(nullptr, TypeParam::FindCharacter(szText, 'z'));
    EXPECT_EQ(nullptr, TypeParam::FindCharacter(szText, 0xFF));
    EXPECT_EQ(szText + 14, TypeParam::FindCharacter(szText, 0));
}

TYPED_TEST(TOVPlatformStringTest, FindsTheLastCharacter)
{
    auto oText = TypeParam::Text("This is a test");
    const typename TypeParam::tUnit* szText = oText;

    EXPECT_EQ(szText, TypeParam::FindLastCharacter(szText, 'T'));
    EXPECT_EQ(szText + 12, TypeParam::FindLastCharacter(szText, 's'));
    EXPECT_EQ(nullptr, TypeParam::FindLastCharacter(szText, 'z'));
    EXPECT_EQ(nullptr, TypeParam::FindLastCharacter(szText, 0xFF));
    EXPECT_EQ(szText + 14, TypeParam::FindLastCharacter(szText, 0));
}

TYPED_TEST(TOVPlatformStringTest, FindsCharactersAbove127)
{
    auto oText = TypeParam::Text("a\xFF\x80\xFF");
    const typename TypeParam::tUnit* szText = oText;

    EXPECT_EQ(szText + 1, TypeParam::FindCharacter(szText, 0xFF));
    EXPECT_EQ(szText + 3, TypeParam::FindLastCharacter(szText, 0xFF));
}

TYPED_TEST(TOVPlatformStringTest, CutsTheWantedCharacterToAUnit)
{
    auto oText = TypeParam::Text("abca");
    const typename TypeParam::tUnit* szText = oText;
    const int nWider = 1 << (8 * sizeof(typename TypeParam::tUnit));

    EXPECT_EQ(szText, TypeParam::FindCharacter(szText, nWider | 'a'));
    EXPECT_EQ(szText + 3, TypeParam::FindLastCharacter(szText, nWider | 'a'));
}

TYPED_TEST(TOVPlatformStringTest, CharacterSearchesFindOnlyTheTerminatorInAnEmptyText)
{
    auto oText = TypeParam::Text("");

    EXPECT_EQ(nullptr, TypeParam::FindCharacter(oText, 'a'));
    EXPECT_EQ(nullptr, TypeParam::FindLastCharacter(oText, 'a'));
    EXPECT_EQ(oText.Get(), TypeParam::FindCharacter(oText, 0));
    EXPECT_EQ(oText.Get(), TypeParam::FindLastCharacter(oText, 0));
}

TYPED_TEST(TOVPlatformStringTest, CharacterSearchesRefuseNull)
{
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::FindCharacter(nullptr, 'a'));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::FindLastCharacter(nullptr, 'a'));
}

TYPED_TEST(TOVPlatformStringTest, FindsTheFirstOccurrenceOfAText)
{
    const sFind aFinds[] = {
        {"This is a find test", "find", 10},
        {"This is a find test", "is", 2},
        {"This is a find test", "Bla", -1},
        {"This is a find test", "", 0},
        {"This is a find test", "test", 15},
        {"This is a find test", "tests", -1},
        {"aaab", "aab", 1},
        {"", "a", -1},
        {"", "", 0},
        {"abc", "abc", 0},
        {"abc", "ABC", -1},
    };
    ExpectFinds<TypeParam>(TypeParam::FindString, aFinds);
}

TYPED_TEST(TOVPlatformStringTest, FindsTheFirstUnitOfASet)
{
    const sFind aFinds[] = {
        {"This is a test", "sa", 3},
        {"This is a test", "T", 0},
        {"This is a test", "zq", -1},
        {"This is a test", "", -1},
        {"", "abc", -1},
        {"This is a test", "et", 10},
        {"abc", "c", 2},
        {"a\xFF", "\xFF", 1},
    };
    ExpectFinds<TypeParam>(TypeParam::FindOneOf, aFinds);
}

TYPED_TEST(TOVPlatformStringTest, FindsTheFirstUnitOutsideASet)
{
    const sFind aFinds[] = {
        {"This is a test", "Th", 2},
        {"This is a test", "x", 0},
        {"test", "tse", -1},
        {"This", "", 0},
        {"", "abc", -1},
        {"", "", -1},
        {"aab", "a", 2},
    };
    ExpectFinds<TypeParam>(TypeParam::FindNotOneOf, aFinds);
}

TYPED_TEST(TOVPlatformStringTest, FindsTheLastUnitOfASet)
{
    const sFind aFinds[] = {
        {"This is a test", "s", 12}, {"This is a test", "hi", 5}, {"This is a test", "t", 13},
        {"This is a test", "z", -1}, {"This is a test", "", -1},  {"TT", "T", 1},
    };
    ExpectFinds<TypeParam>(TypeParam::ReverseFindOneOf, aFinds);
}

TYPED_TEST(TOVPlatformStringTest, FindsTheLastUnitOutsideASet)
{
    const sFind aFinds[] = {
        {"This is a test", "tse", 9},
        {"This is a test", "x", 13},
        {"test", "st", 1},
        {"ttest", "tse", -1},
        {"Test", "", 3},
        {"xyz", "yz", -1},
    };
    ExpectFinds<TypeParam>(TypeParam::ReverseFindNotOneOf, aFinds);
}

// Settled: the walk ends where it becomes equal to the start.
TYPED_TEST(TOVPlatformStringTest, ReverseSearchesNeverExamineTheFirstUnit)
{
    const sFind aInSet[] = {{"This", "T", -1}, {"T", "T", -1}, {"This is", "TX", -1}};
    const sFind aOutsideSet[] = {{"This", "his", -1}, {"T", "his", -1}, {"T", "", -1}};

    ExpectFinds<TypeParam>(TypeParam::ReverseFindOneOf, aInSet);
    ExpectFinds<TypeParam>(TypeParam::ReverseFindNotOneOf, aOutsideSet);
}

TYPED_TEST(TOVPlatformStringTest, ReverseSearchesFindNothingInAnEmptyText)
{
    // The unit before the text would be a match.
    auto oText = TypeParam::Text("a");
    typename TypeParam::tUnit* szEmpty = oText + 1;

    EXPECT_EQ(nullptr, TypeParam::ReverseFindOneOf(szEmpty, TypeParam::Text("a")));
    EXPECT_EQ(nullptr, TypeParam::ReverseFindNotOneOf(szEmpty, TypeParam::Text("b")));
}

TYPED_TEST(TOVPlatformStringTest, SetSearchesRefuseNull)
{
    auto oText = TypeParam::Text("a");
    for (const auto fnFind :
         {TypeParam::FindOneOf, TypeParam::FindNotOneOf, TypeParam::ReverseFindOneOf, TypeParam::ReverseFindNotOneOf})
    {
        EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, fnFind(nullptr, oText));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_SET, fnFind(oText, nullptr));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, fnFind(nullptr, nullptr));
    }
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::FindString(nullptr, oText));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_SET, TypeParam::FindString(oText, nullptr));
    EXPECT_EQ(0, TypeParam::Compare(oText, TypeParam::Text("a")));
}

TYPED_TEST(TOVPlatformStringTest, CopiesWithTheTerminator)
{
    auto oRoom = TypeParam::Room(6);

    EXPECT_EQ(oRoom.Get(), TypeParam::Copy(oRoom, TypeParam::Text("abcd")));
    EXPECT_EQ("abcd0#", oRoom.Shown());

    EXPECT_EQ(oRoom.Get(), TypeParam::Copy(oRoom, TypeParam::Text("")));
    EXPECT_EQ("0bcd0#", oRoom.Shown());
}

TYPED_TEST(TOVPlatformStringTest, CopiesACountAndPadsWithZeros)
{
    struct
    {
        int nCount;
        const char* szShown;
    } const aCopies[] = {{1, "a######"}, {2, "ab#####"}, {3, "abc####"}, {4, "abc0###"}, {6, "abc000#"}};
    for (const auto& oCopy : aCopies)
    {
        auto oRoom = TypeParam::Room(7);
        EXPECT_EQ(oRoom.Get(), TypeParam::NCopy(oRoom, TypeParam::Text("abc"), oCopy.nCount));
        EXPECT_EQ(oCopy.szShown, oRoom.Shown()) << oCopy.nCount;
    }
}

TYPED_TEST(TOVPlatformStringTest, Appends)
{
    auto oRoom = TypeParam::Room(8);
    TypeParam::Copy(oRoom, TypeParam::Text("ab"));

    EXPECT_EQ(oRoom.Get(), TypeParam::Concat(oRoom, TypeParam::Text("cde")));
    EXPECT_EQ("abcde0##", oRoom.Shown());

    TypeParam::Concat(oRoom, TypeParam::Text(""));
    EXPECT_EQ("abcde0##", oRoom.Shown());
}

TYPED_TEST(TOVPlatformStringTest, AppendsACountAndAlwaysTerminates)
{
    struct
    {
        int nCount;
        const char* szShown;
    } const aAppends[] = {{1, "abc0###"}, {2, "abcd0##"}, {3, "abcde0#"}, {4, "abcde0#"}, {100, "abcde0#"}};
    for (const auto& oAppend : aAppends)
    {
        auto oRoom = TypeParam::Room(7);
        TypeParam::Copy(oRoom, TypeParam::Text("ab"));
        EXPECT_EQ(oRoom.Get(), TypeParam::NConcat(oRoom, TypeParam::Text("cde"), oAppend.nCount));
        EXPECT_EQ(oAppend.szShown, oRoom.Shown()) << oAppend.nCount;
    }
}

TYPED_TEST(TOVPlatformStringTest, CopiesRefuseNull)
{
    auto oText = TypeParam::Text("a");
    for (const auto fnCopy : {TypeParam::Copy, TypeParam::Concat})
    {
        EXPECT_CHECK_AT(STRING_SOURCE, NO_DESTINATION, fnCopy(nullptr, oText));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_SOURCE, fnCopy(oText, nullptr));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_DESTINATION, fnCopy(nullptr, nullptr));
    }
    EXPECT_EQ(0, TypeParam::Compare(oText, TypeParam::Text("a")));
}

TYPED_TEST(TOVPlatformStringTest, CountedCopiesRefuseNullAndNothing)
{
    auto oText = TypeParam::Text("a");
    auto oSource = TypeParam::Text("b");
    for (const auto fnCopy : {TypeParam::NCopy, TypeParam::NConcat})
    {
        EXPECT_CHECK_AT(STRING_SOURCE, NO_DESTINATION, fnCopy(nullptr, oSource, 1));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_SOURCE, fnCopy(oText, nullptr, 1));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_COUNT, fnCopy(oText, oSource, 0));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_COUNT, fnCopy(oText, oSource, -1));
        EXPECT_CHECK_AT(STRING_SOURCE, NO_SOURCE, fnCopy(oText, nullptr, 0));
    }
    EXPECT_EQ(0, TypeParam::Compare(oSource, TypeParam::Text("b")));
    EXPECT_EQ(0, TypeParam::Compare(oText, TypeParam::Text("a")));
}

TYPED_TEST(TOVPlatformStringTest, StepsForwardAndBack)
{
    auto oText = TypeParam::Text("This is a test");
    typename TypeParam::tUnit* szText = oText;

    EXPECT_EQ(szText + 1, TypeParam::Inc(szText));
    EXPECT_EQ(szText + 2, TypeParam::NInc(szText, 2));
    EXPECT_EQ('i', *TypeParam::NInc(szText, 2));
    EXPECT_EQ(szText, TypeParam::NInc(szText, 0));
    EXPECT_EQ(szText + 3, TypeParam::Dec(szText, szText + 4));
    EXPECT_EQ(szText, TypeParam::Dec(szText, szText + 1));
}

TYPED_TEST(TOVPlatformStringTest, StepsBackToNothingAtTheStartAndInFrontOfIt)
{
    auto oText = TypeParam::Text("This is a test");
    typename TypeParam::tUnit* szText = oText;

    EXPECT_EQ(nullptr, TypeParam::Dec(szText, szText));
    EXPECT_EQ(nullptr, TypeParam::Dec(szText + 4, szText + 3));
}

TYPED_TEST(TOVPlatformStringTest, StepsRefuseNullAndNegativeCounts)
{
    auto oText = TypeParam::Text("a");

    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::Inc(nullptr));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::NInc(nullptr, 1));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_STRING, TypeParam::NInc(nullptr, -1));
    EXPECT_CHECK_AT(STRING_SOURCE, "nCount >= 0", TypeParam::NInc(oText, -1));
    EXPECT_CHECK_AT(STRING_SOURCE, "szStringStart != NULL", TypeParam::Dec(nullptr, oText));
    EXPECT_CHECK_AT(STRING_SOURCE, "szStringCurrent != NULL", TypeParam::Dec(oText, nullptr));
    EXPECT_CHECK_AT(STRING_SOURCE, "szStringStart != NULL", TypeParam::Dec(nullptr, nullptr));
    EXPECT_EQ(0, TypeParam::Compare(oText, TypeParam::Text("a")));
}

TYPED_TEST(TOVPlatformStringTest, LogsNothing)
{
    CLogRecorder oLog;
    auto oText = TypeParam::Text("This is no number");

    TypeParam::ToLong(oText, nullptr, 10);
    TypeParam::FindCharacter(oText, 0xFF);
    TypeParam::NInc(oText, 0);

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}
