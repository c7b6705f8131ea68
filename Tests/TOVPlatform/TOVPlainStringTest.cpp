#include "TOVPlatform/TOVStringApis.h"

#include <cctype>
#include <clocale>
#include <type_traits>

namespace
{
struct sCopyN
{
    const char* szSource;
    tUchar ucCount;
    const char* szShown;
};

// A count as a caller with wider numbers hands it over: the function's own 8 bits cut it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
char* CopyN(char* szDestination, const char* szSource, int nCount)
{
    return TOVString_CopyN(szDestination, szSource, nCount);
}
#pragma GCC diagnostic pop

constexpr char LETTERS_AND_DIGITS[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr char WHITE_SPACE[] = " \t\n\v\f\r";
} // namespace

// Settled: behind a source that is shorter than the count, the byte at index count is cleared as well.
TEST(TOVPlatformStringCopyNTest, WritesTheCountOrOneByteMore)
{
    const sCopyN aCopies[] = {
        {"ab", 5, "ab0000##"},    {"", 5, "000000##"},        {"", 1, "00######"},  {"abcd", 5, "abcd00##"},
        {"abcde", 5, "abcde###"}, {"abcdefg", 5, "abcde###"}, {"a", 1, "a#######"}, {"ab", 1, "a#######"},
        {"a", 2, "a00#####"},     {"abc", 0, "########"},     {"", 0, "########"},
    };
    for (const sCopyN& oCopy : aCopies)
    {
        CRoom<char> oRoom(8);
        EXPECT_EQ(oRoom.Get(), TOVString_CopyN(oRoom, oCopy.szSource, oCopy.ucCount));
        EXPECT_EQ(oCopy.szShown, oRoom.Shown()) << '"' << oCopy.szSource << "\", " << static_cast<int>(oCopy.ucCount);
    }
}

TEST(TOVPlatformStringCopyNTest, GivesNullForNull)
{
    char szRoom[] = "abc";

    EXPECT_NO_CHECK(EXPECT_EQ(nullptr, TOVString_CopyN(nullptr, "x", 1)));
    EXPECT_EQ(nullptr, TOVString_CopyN(szRoom, nullptr, 1));
    EXPECT_EQ(nullptr, TOVString_CopyN(nullptr, nullptr, 1));
    EXPECT_EQ(nullptr, TOVString_CopyN(nullptr, "x", 0));
    EXPECT_EQ(nullptr, TOVString_CopyN(szRoom, nullptr, 0));
    EXPECT_STREQ("abc", szRoom);
}

TEST(TOVPlatformStringCopyNTest, CopiesUpTo255Characters)
{
    CRoom<char> oRoom(300);
    const std::string sSource(290, 'x');

    TOVString_CopyN(oRoom, sSource.c_str(), 255);

    EXPECT_EQ(std::string(255, 'x') + std::string(45, '#'), oRoom.Shown());
}

TEST(TOVPlatformStringCopyNTest, ClearsUpTo256Bytes)
{
    CRoom<char> oRoom(300);

    TOVString_CopyN(oRoom, "", 255);

    EXPECT_EQ(std::string(256, '0') + std::string(44, '#'), oRoom.Shown());
}

TEST(TOVPlatformStringCopyNTest, CutsTheCountToItsLow8Bits)
{
    CRoom<char> oRoom(4);

    EXPECT_EQ(oRoom.Get(), CopyN(oRoom, "abc", 256));
    EXPECT_EQ("####", oRoom.Shown());

    CopyN(oRoom, "abc", 258);
    EXPECT_EQ("ab##", oRoom.Shown());
}

TEST(TOVPlatformPlainCharacterTest, KnowsLettersDigitsAndWhiteSpace)
{
    for (int nCharacter = 0; nCharacter < 256; ++nCharacter)
    {
        const char cCharacter = static_cast<char>(nCharacter);
        const bool bIn = nCharacter != 0;
        EXPECT_EQ(bIn && std::string(LETTERS_AND_DIGITS).find(cCharacter) != std::string::npos,
                  IsAlphanumeric(nCharacter))
            << nCharacter;
        EXPECT_EQ(bIn && std::string(WHITE_SPACE).find(cCharacter) != std::string::npos, IsSpace(nCharacter))
            << nCharacter;
    }
}

TEST(TOVPlatformPlainCharacterTest, TheEndOfAFileIsNeither)
{
    EXPECT_FALSE(IsAlphanumeric(-1));
    EXPECT_FALSE(IsSpace(-1));
}

TEST(TOVPlatformPlainCharacterTest, AnswersTrueOrFalse)
{
    EXPECT_TRUE((std::is_same_v<bool, decltype(IsAlphanumeric('a'))>));
    EXPECT_TRUE((std::is_same_v<bool, decltype(IsSpace('a'))>));
}

TEST(TOVPlatformPlainCharacterTest, FollowsTheCurrentLocale)
{
    for (const char* szLocale : {"C", "", "C.UTF-8", "English_United States.1252", "de_DE.ISO-8859-1"})
    {
        if (std::setlocale(LC_CTYPE, szLocale) == nullptr)
            continue;
        for (int nCharacter = 0; nCharacter < 256; ++nCharacter)
        {
            EXPECT_EQ(std::isalnum(nCharacter) != 0, IsAlphanumeric(nCharacter)) << szLocale << ' ' << nCharacter;
            EXPECT_EQ(std::isspace(nCharacter) != 0, IsSpace(nCharacter)) << szLocale << ' ' << nCharacter;
        }
    }
    std::setlocale(LC_CTYPE, "C");
}
