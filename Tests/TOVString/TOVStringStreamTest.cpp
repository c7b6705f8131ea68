// Strings written to the standard library's streams.
#include "TOVString/TOVStringKinds.h"

#include <iomanip>
#include <sstream>

namespace
{
class CTOVStringStreamTest : public testing::Test
{
protected:
    // What the stream got, with a mark after it that only a good stream takes.
    template<class T> std::string Written(const T& oText)
    {
        m_oStream << oText << '|';
        return m_oStream.str();
    }

    std::ostringstream m_oStream;
};

class CDerivedString : public CTOVStringA
{
public:
    using CTOVStringA::CTOVStringA;
};
} // namespace

TEST_F(CTOVStringStreamTest, WritesTheText)
{
    EXPECT_EQ("text|", Written(CTOVStringA("text")));
}

TEST_F(CTOVStringStreamTest, WritesNothingOfAStringWithoutABlock)
{
    EXPECT_EQ("|", Written(CTOVStringA()));
    EXPECT_TRUE(m_oStream.good());
}

TEST_F(CTOVStringStreamTest, WritesNothingOfAnEmptiedString)
{
    CTOVStringA oEmptied("text");
    oEmptied.Empty();

    EXPECT_EQ("|", Written(oEmptied));
}

TEST_F(CTOVStringStreamTest, WritesNoCharacterBehindTheFirstZero)
{
    EXPECT_EQ("test|", Written(CTOVStringA("Das ist ein test").Right(5)));
}

TEST_F(CTOVStringStreamTest, FillsToTheWidthForOneText)
{
    m_oStream << std::setfill('.') << std::setw(6) << CTOVStringA("ab") << CTOVStringA("cd") << std::setw(3)
              << CTOVStringA() << std::left << std::setw(4) << CTOVStringA("e") << std::setw(1) << CTOVStringA("long");

    EXPECT_EQ("....abcd...e...long", m_oStream.str());
}

TEST_F(CTOVStringStreamTest, WritesADerivedString)
{
    EXPECT_EQ("text|", Written(CDerivedString("text")));
    EXPECT_EQ("text||", Written(CDerivedString()));
}

TEST_F(CTOVStringStreamTest, WritesToAStreamThatEndsWithTheStatement)
{
    const CTOVStringA oText("text");

    EXPECT_EQ("text1", static_cast<const std::ostringstream&>(std::ostringstream() << oText << 1).str());
}

// Characters as pointers go the stream's own way still.
TEST_F(CTOVStringStreamTest, LeavesOtherTextsToTheStream)
{
    const CTOVStringA oText("text");
    m_oStream << ~oText << oText.GetString() << "text" << std::string("text");

    EXPECT_EQ("texttexttexttext", m_oStream.str());
}
