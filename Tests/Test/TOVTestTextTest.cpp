#include "Support/TOVTestSupport.h"

#include <Test/TOVTestText.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

using TOVTest::CTOVTestText;

namespace
{
constexpr char UNPRINTABLE[] = "(unprintable value)";

template<class T> std::string TextOf(const T& oValue)
{
    return static_cast<const char*>(CTOVTestText(oValue));
}

enum ePlain
{
    ePlainValue
};

enum class eScoped
{
    eScopedValue
};

struct sAnything
{
    operator int() const { return 7; }
};

// The text of a character by the rule, which knows ten digits.
std::string CharacterText(unsigned long ulCode)
{
    static constexpr char ESCAPED[] = {0, 7, 8, 9, 10, 13, '"', '\'', '\\'};
    static constexpr char ESCAPES[] = {'0', 'a', 'b', 't', 'n', 'r', '"', '\'', '\\'};
    for (std::size_t i = 0; i < sizeof(ESCAPED); ++i)
    {
        if (ulCode == static_cast<unsigned long>(ESCAPED[i]))
            return std::string("'\\") + ESCAPES[i] + "'";
    }
    if (ulCode >= 32 && ulCode <= 127)
        return std::string("'") + static_cast<char>(ulCode) + "'";

    std::string sDigits;
    for (unsigned long ulRest = ulCode; ulRest != 0; ulRest /= 16)
        sDigits.insert(sDigits.begin(), ulRest % 16 < 10 ? static_cast<char>('0' + ulRest % 16) : '?');
    return "'\\x" + std::string(ulCode < 10 ? "0" : "") + sDigits + "'";
}

struct sDouble
{
    double dValue;
    const char* szText;
};

class TOVTestTextOfDoubleTest : public testing::TestWithParam<sDouble>
{
};

std::ostream& operator<<(std::ostream& oOutput, const sDouble& oDouble)
{
    return oOutput << oDouble.szText;
}
} // namespace

TEST(TOVTestTextTest, ShowsTruth)
{
    EXPECT_EQ("true", TextOf(true));
    EXPECT_EQ("false", TextOf(false));
}

TEST(TOVTestTextTest, ShowsIntegersInDecimal)
{
    EXPECT_EQ("0", TextOf(0));
    EXPECT_EQ("7", TextOf(7));
    EXPECT_EQ("1234567890", TextOf(1234567890));
    EXPECT_EQ("-1", TextOf(-1));
    EXPECT_EQ("-1234567890", TextOf(-1234567890));
    EXPECT_EQ("0", TextOf(0L));
    EXPECT_EQ("-98765", TextOf(-98765L));
}

TEST(TOVTestTextTest, ShowsTheEndsOfTheSignedIntegers)
{
    EXPECT_EQ("2147483647", TextOf(INT_MAX));
    EXPECT_EQ("-2147483648", TextOf(INT_MIN));
    EXPECT_EQ(std::to_string(LONG_MAX), TextOf(LONG_MAX));
    EXPECT_EQ(std::to_string(LONG_MIN), TextOf(LONG_MIN));
}

TEST(TOVTestTextTest, ShowsUnsignedIntegersInDecimal)
{
    EXPECT_EQ("0", TextOf(0u));
    EXPECT_EQ("65535", TextOf(static_cast<unsigned short>(0xffff)));
    EXPECT_EQ("4294967295", TextOf(0xffffffffu));
    EXPECT_EQ(std::to_string(ULONG_MAX), TextOf(ULONG_MAX));
    EXPECT_EQ("18446744073709551615", TextOf(0xffffffffffffffffull));
}

TEST(TOVTestTextTest, ShowsWhatIsTypedLikeThem)
{
    EXPECT_EQ("12", TextOf(static_cast<tDword>(12)));
    EXPECT_EQ("12", TextOf(static_cast<std::size_t>(12)));
    EXPECT_EQ("'A'", TextOf(static_cast<tChar>('A')));
    EXPECT_EQ("'A'", TextOf(static_cast<tUchar>('A')));
    EXPECT_EQ("'A'", TextOf(static_cast<tByte>('A')));
}

TEST(TOVTestTextTest, ShowsEachNarrowCharacter)
{
    for (unsigned int nCode = 0; nCode <= 255; ++nCode)
    {
        EXPECT_EQ(CharacterText(nCode), TextOf(static_cast<unsigned char>(nCode))) << nCode;
        EXPECT_EQ(CharacterText(nCode), TextOf(static_cast<signed char>(nCode))) << nCode;
        EXPECT_EQ(CharacterText(nCode), TextOf(static_cast<char>(nCode))) << nCode;
    }
}

TEST(TOVTestTextTest, ShowsCharactersByExample)
{
    EXPECT_EQ("'a'", TextOf('a'));
    EXPECT_EQ("' '", TextOf(' '));
    EXPECT_EQ("'\x7f'", TextOf('\x7f'));
    EXPECT_EQ("'\\0'", TextOf('\0'));
    EXPECT_EQ("'\\a'", TextOf('\a'));
    EXPECT_EQ("'\\b'", TextOf('\b'));
    EXPECT_EQ("'\\t'", TextOf('\t'));
    EXPECT_EQ("'\\n'", TextOf('\n'));
    EXPECT_EQ("'\\r'", TextOf('\r'));
    EXPECT_EQ("'\\\"'", TextOf('"'));
    EXPECT_EQ("'\\''", TextOf('\''));
    EXPECT_EQ("'\\\\'", TextOf('\\'));
}

TEST(TOVTestTextTest, ShowsDigitsAboveNineAsQuestionMarks)
{
    EXPECT_EQ("'\\x01'", TextOf('\x01'));
    EXPECT_EQ("'\\x06'", TextOf('\x06'));
    EXPECT_EQ("'\\x?'", TextOf('\x0b'));
    EXPECT_EQ("'\\x?'", TextOf('\x0f'));
    EXPECT_EQ("'\\x10'", TextOf('\x10'));
    EXPECT_EQ("'\\x1?'", TextOf('\x1f'));
    EXPECT_EQ("'\\x80'", TextOf('\x80'));
    EXPECT_EQ("'\\x?\?'", TextOf('\xff'));
}

TEST(TOVTestTextTest, ShowsWideCharactersByTheSameRule)
{
    for (const unsigned long ulCode : {0ul, 7ul, 9ul, 31ul, 34ul, 65ul, 127ul, 128ul, 255ul, 256ul, 0x1234ul, 0xfffful})
    {
        EXPECT_EQ(CharacterText(ulCode), TextOf(static_cast<wchar_t>(ulCode))) << ulCode;
        EXPECT_EQ(CharacterText(ulCode), TextOf(static_cast<char16_t>(ulCode))) << ulCode;
        EXPECT_EQ(CharacterText(ulCode), TextOf(static_cast<char32_t>(ulCode))) << ulCode;
    }
    EXPECT_EQ("'\\x263?'", TextOf(static_cast<wchar_t>(0x263a)));
    EXPECT_EQ("'\\x1?600'", TextOf(static_cast<char32_t>(0x1f600)));
    EXPECT_EQ("'\\x?\?\?\?\?\?\?\?'", TextOf(static_cast<char32_t>(0xffffffff)));
}

TEST_P(TOVTestTextOfDoubleTest, CountsDigitsAndCutsDecimals)
{
    EXPECT_EQ(GetParam().szText, TextOf(GetParam().dValue));
}

const sDouble DOUBLES[] = {
    // A digit count of 1: up to 1.
    {0.0, "0.0000"},
    {-0.0, "0.0000"},
    {0.5, "0.5000"},
    {-0.25, "-0.2500"},
    {1.0, "1.0000"},
    {-1.0, "-1.0000"},
    // Cut, not rounded.
    {0.99999, "0.9999"},
    {-0.99999, "-0.9999"},
    {0.00001, "0.0000"},
    {-0.00001, "-0.0000"},
    {0.0009765625, "0.0009"},
    {2.03125, "2.0312"},
    {-12.34567, "-12.3456"},
    {5e-324, "0.0000"},
    // No digit in front that is not there.
    {1.5, "1.5000"},
    {9.75, "9.7500"},
    {10.0, "10.0000"},
    {10.5, "10.5000"},
    {99.5, "99.5000"},
    {100.0, "100.0000"},
    {-100.0, "-100.0000"},
    {123456789.96875, "123456789.9687"},
    {4294967296.0, "4294967296.0000"},
    {18446744073709551616.0, "18446744073709551616.0000"},
    // 23 and 24 by the count.
    {1e22, "10000000000000000000000.0000"},
    {-1e22, "-10000000000000000000000.0000"},
    {37778931862957161709568.0, "37778931862957161709568.0000"},
    {-75557863725914323419136.0, "-75557863725914323419136.0000"},
    // 25 and more.
    {302231454903657293676544.0, "3.0223E24"},
    {-302231454903657293676544.0, "-3.0223E24"},
    {1208925819614629174706176.0, "1.2089E25"},
    {5e24, "5.0000E25"},
    {-2.5e40, "-2.5000E41"},
    {DBL_MAX, "1.7976E309"},
    {-DBL_MAX, "-1.7976E309"},
    // What is no number to count.
    {std::numeric_limits<double>::infinity(), "inf"},
    {-std::numeric_limits<double>::infinity(), "-inf"},
    {std::numeric_limits<double>::quiet_NaN(), "nan"},
};

std::string TestName(const testing::TestParamInfo<sDouble>& oInfo)
{
    std::string sName = std::to_string(oInfo.index) + "_" + oInfo.param.szText;
    for (char& cCharacter : sName)
    {
        if (!std::isalnum(static_cast<unsigned char>(cCharacter)))
            cCharacter = '_';
    }
    return sName;
}

INSTANTIATE_TEST_SUITE_P(Doubles, TOVTestTextOfDoubleTest, testing::ValuesIn(DOUBLES), TestName);

TEST(TOVTestTextTest, ShowsNothingOfOtherTypes)
{
    EXPECT_EQ(UNPRINTABLE, TextOf("text"));
    EXPECT_EQ(UNPRINTABLE, TextOf(static_cast<const char*>("text")));
    EXPECT_EQ(UNPRINTABLE, TextOf(std::string("text")));
    EXPECT_EQ(UNPRINTABLE, TextOf(nullptr));
    EXPECT_EQ(UNPRINTABLE, TextOf(static_cast<void*>(nullptr)));
    EXPECT_EQ(UNPRINTABLE, TextOf(static_cast<int*>(nullptr)));
    EXPECT_EQ(UNPRINTABLE, TextOf(&TextOf<int>));
    EXPECT_EQ(UNPRINTABLE, TextOf(ePlainValue));
    EXPECT_EQ(UNPRINTABLE, TextOf(eScoped::eScopedValue));
    EXPECT_EQ(UNPRINTABLE, TextOf(sAnything()));
}

TEST(TOVTestTextTest, ShowsNothingOfNumbersThatAreNoneOfTheseTypes)
{
    EXPECT_EQ(UNPRINTABLE, TextOf(1.5f));
    EXPECT_EQ(UNPRINTABLE, TextOf(1.5L));
    EXPECT_EQ(UNPRINTABLE, TextOf(static_cast<short>(1)));
    EXPECT_EQ(UNPRINTABLE, TextOf(1LL));
}

TEST(CTOVTestTextTest, IsCopiedWithItsText)
{
    const CTOVTestText oText(42);
    const CTOVTestText oCopy(oText);
    CTOVTestText oAssigned("old");
    oAssigned = oText;

    EXPECT_STREQ("42", static_cast<const char*>(oCopy));
    EXPECT_STREQ("42", static_cast<const char*>(oAssigned));
}
