// Which operations of both strings leave a shared block alone, leave it, or write into it.
#include "TOVString/TOVStringKinds.h"

#include <functional>
#include <optional>
#include <vector>

namespace
{
// Two strings on one block: "abc" in a capacity of 7, with "ef" behind the terminator.
template<class TString> class CTOVStringSharingTest : public testing::Test
{
protected:
    typedef TString TypeParam;
    typedef std::function<void(TString& oText)> tOperation;

    struct sCase
    {
        const char* szName;
        tOperation fnOperation;
        std::string sText;        // of the string itself afterwards
        long lCapacity;           // and its capacity
        std::string sSharersText; // the first three characters of the other
    };

    CTOVStringSharingTest() { Begin(); }

    void Begin()
    {
        m_oText = TXT("abcdef");
        m_oText.ReleaseBuffer(3);
        m_oSharer = m_oText;
    }

    void ExpectTheSharerSeesNothing(const std::vector<sCase>& aCases)
    {
        for (const sCase& oCase : aCases)
        {
            SCOPED_TRACE(oCase.szName);
            Begin();
            oCase.fnOperation(m_oText);

            EXPECT_NE(m_oSharer.GetString(), m_oText.GetString());
            EXPECT_EQ((sHeld{oCase.sText, oCase.lCapacity}), StateOf(m_oText));
            EXPECT_EQ(Holds("abc", 7), StateOf(m_oSharer));
            EXPECT_EQ(std::string("abc\0ef\0", 7), BlockOf(m_oSharer));
        }
    }

    void ExpectTheSharerSeesIt(const std::vector<sCase>& aCases)
    {
        for (const sCase& oCase : aCases)
        {
            SCOPED_TRACE(oCase.szName);
            Begin();
            oCase.fnOperation(m_oText);

            EXPECT_EQ(m_oSharer.GetString(), m_oText.GetString());
            EXPECT_EQ((sHeld{oCase.sText, oCase.lCapacity}), StateOf(m_oText));
            EXPECT_EQ(3, m_oSharer.GetLength());
            EXPECT_EQ(oCase.sSharersText, BytesOf(m_oSharer.GetString(), 3));
        }
    }

    TString m_oText;
    TString m_oSharer;
};
TYPED_TEST_SUITE(CTOVStringSharingTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringSharingTest, CopyingAndAssigningShareTheBlock)
{
    const TypeParam oCopy(this->m_oText);
    TypeParam oAssigned;
    oAssigned = this->m_oText;

    EXPECT_EQ(this->m_oText.GetString(), oCopy.GetString());
    EXPECT_EQ(this->m_oText.GetString(), oAssigned.GetString());
    EXPECT_EQ(this->m_oText.GetString(), this->m_oSharer.GetString());
}

TYPED_TEST(CTOVStringSharingTest, AStringReturnedByValueSharesTheBlock)
{
    const auto fnGive = [](const TypeParam& oString) { return oString; };

    EXPECT_EQ(this->m_oText.GetString(), fnGive(this->m_oText).GetString());
}

TYPED_TEST(CTOVStringSharingTest, TheWholeStringCutOutSharesTheBlockAndTheLength)
{
    for (const TypeParam& oWhole : {this->m_oText.Left(7), this->m_oText.Right(7), this->m_oText.Mid(0, 7),
                                    this->m_oText.Mid(0), this->m_oText.Left(8), this->m_oText.Right(100)})
    {
        EXPECT_EQ(this->m_oText.GetString(), oWhole.GetString());
        EXPECT_EQ(3, oWhole.GetLength());
    }
}

TYPED_TEST(CTOVStringSharingTest, ElementsOfAnArrayShareTheBlock)
{
    CTOVArray<TypeParam> aTexts;

    aTexts.Add(this->m_oText);
    aTexts.Add(this->m_oText);

    EXPECT_EQ(this->m_oText.GetString(), aTexts[0].GetString());
    EXPECT_EQ(this->m_oText.GetString(), aTexts[1].GetString());
}

TYPED_TEST(CTOVStringSharingTest, NothingElseSharesABlock)
{
    const auto* const szText = this->m_oText.GetString();
    TypeParam oAssigned;
    oAssigned = szText;
    TypeParam oCopied;
    oCopied.Copy(szText, 3);
    TypeParam oAppended;
    oAppended += this->m_oText;

    for (const TypeParam* pOther : {&oAssigned, &oCopied, &oAppended})
    {
        EXPECT_EQ(Holds("abc", 4), StateOf(*pOther));
        EXPECT_NE(szText, pOther->GetString());
    }
    EXPECT_NE(szText, TypeParam(szText).GetString());
    EXPECT_NE(szText, this->m_oText.Left(6).GetString());
}

TYPED_TEST(CTOVStringSharingTest, WhatResizesTakesAPrivateCopy)
{
    this->ExpectTheSharerSeesNothing({
        {"AssignCopy", [](TypeParam& oText) { oText.AssignCopy(2, TXT("xy")); }, "xy", 3, ""},
        {"Copy", [](TypeParam& oText) { oText.Copy(TXT("xyz"), 3); }, "xyz", 4, ""},
        {"ConcatCopy", [](TypeParam& oText) { oText.ConcatCopy(1, TXT("x"), 1, TXT("y")); }, "xy", 3, ""},
        {"ConcatInPlace that grows", [](TypeParam& oText) { oText.ConcatInPlace(4, TXT("wxyz")); }, "abcwxyz", 8, ""},
        {"+= of a text that grows", [](TypeParam& oText) { oText += TXT("wxyz"); }, "abcwxyz", 8, ""},
        {"= of a text", [](TypeParam& oText) { oText = TXT("x"); }, "x", 2, ""},
        {"= of a character", [](TypeParam& oText) { oText = CHR('x'); }, "x", 2, ""},
        {"Replace that grows", [](TypeParam& oText) { oText.Replace(TXT("b"), TXT("12345")); }, "a12345c", 8, ""},
        {"FormatV that grows", [](TypeParam& oText) { oText.Format(TXT("%s"), TXT("1234567")); }, "1234567", 8, ""},
        {"Empty", [](TypeParam& oText) { oText.Empty(); }, "", 7, ""},
        {"= of no text", [](TypeParam& oText) { oText = TXT(""); }, "", 7, ""},
    });
}

TYPED_TEST(CTOVStringSharingTest, AllocBufferTakesAPrivateBlockEvenOfTheSameSize)
{
    this->m_oText.AllocBuffer(6);

    EXPECT_NE(this->m_oSharer.GetString(), this->m_oText.GetString());
    EXPECT_EQ(7, CapacityOf(this->m_oText));
    EXPECT_EQ(Holds("abc", 7), StateOf(this->m_oSharer));
}

TYPED_TEST(CTOVStringSharingTest, GetBufferThatGrowsLeavesTheBlock)
{
    auto* const pBlock = this->m_oText.GetBuffer(7);
    pBlock[0] = 'x';
    this->m_oText.ReleaseBuffer(1);

    EXPECT_EQ(Holds("x", 8), StateOf(this->m_oText));
    EXPECT_EQ(Holds("abc", 7), StateOf(this->m_oSharer));
}

TYPED_TEST(CTOVStringSharingTest, AssigningAnotherStringLeavesTheBlock)
{
    const TypeParam oOther(TXT("xyz"));

    this->m_oText = oOther;

    EXPECT_EQ(oOther.GetString(), this->m_oText.GetString());
    EXPECT_EQ(Holds("abc", 7), StateOf(this->m_oSharer));
}

TYPED_TEST(CTOVStringSharingTest, TheBlockOutlivesTheStringThatMadeIt)
{
    std::optional<TypeParam> oFirst(TypeParam(TXT("abc")));
    const TypeParam oSecond(*oFirst);

    oFirst.reset();

    EXPECT_EQ(Holds("abc", 4), StateOf(oSecond));
}

TYPED_TEST(CTOVStringSharingTest, WhatWritesInPlaceIsSeenByAll)
{
    this->ExpectTheSharerSeesIt({
        {"SetAt", [](TypeParam& oText) { oText.SetAt(0, 'x'); }, "xbc", 7, "xbc"},
        {"GetString", [](TypeParam& oText) { oText.GetString()[1] = 'x'; }, "axc", 7, "axc"},
        {"GetBuffer", [](TypeParam& oText) { oText.GetBuffer(6)[2] = 'x'; }, "abx", 7, "abx"},
        {"ReleaseBuffer", [](TypeParam& oText) { oText.ReleaseBuffer(1); }, "a", 7, std::string("a\0c", 3)},
        {"AssignCopy of nothing", [](TypeParam& oText) { oText.AssignCopy(0, TXT("x")); }, "", 7,
         std::string("\0bc", 3)},
        {"MakeUpper", [](TypeParam& oText) { oText.MakeUpper(); }, "ABC", 7, "ABC"},
        {"Reverse", [](TypeParam& oText) { oText.Reverse(); }, "cba", 7, "cba"},
        {"Replace of a character", [](TypeParam& oText) { oText.Replace(CHR('c'), CHR('x')); }, "abx", 7, "abx"},
        {"Replace of a text of that length", [](TypeParam& oText) { oText.Replace(TXT("bc"), TXT("yz")); }, "ayz", 7,
         "ayz"},
        {"Replace of a shorter text", [](TypeParam& oText) { oText.Replace(TXT("ab"), TXT("x")); }, "xc", 7,
         std::string("xc\0", 3)},
        {"Replace that finds room", [](TypeParam& oText) { oText.Replace(TXT("b"), TXT("1234")); }, "a1234c", 7, "a12"},
        {"FormatV that finds room", [](TypeParam& oText) { oText.Format(TXT("%s"), TXT("xy")); }, "xy", 7,
         std::string("xy\0", 3)},
    });
}

TYPED_TEST(CTOVStringSharingTest, MakeLowerIsSeenByAll)
{
    TypeParam oText(TXT("ABC"));
    const TypeParam oSharer(oText);

    oText.MakeLower();

    EXPECT_EQ(oText.GetString(), oSharer.GetString());
    EXPECT_EQ(Holds("abc", 4), StateOf(oSharer));
}

TYPED_TEST(CTOVStringSharingTest, AppendingInPlaceIsSeenByAllBehindTheirLengths)
{
    this->m_oText += TXT("xyz");

    EXPECT_EQ(this->m_oSharer.GetString(), this->m_oText.GetString());
    EXPECT_EQ(Holds("abcxyz", 7), StateOf(this->m_oText));
    EXPECT_EQ(3, this->m_oSharer.GetLength());
    EXPECT_EQ("abcxyz", VisibleOf(this->m_oSharer));
    EXPECT_EQ(0, this->m_oSharer.Compare(TXT("abcxyz")));
    EXPECT_EQ(4, this->m_oSharer.Find(CHR('y')));
    EXPECT_EQ(-1, this->m_oSharer.Find(CHR('y'), 3));
    EXPECT_EQ(4, this->m_oSharer.Find(TXT("yz"), 3));
    EXPECT_EQ(-1, this->m_oSharer.Find(TXT("yz"), 4));
}

TYPED_TEST(CTOVStringSharingTest, AllocBufferOfZeroLeavesTheBlockShared)
{
    this->m_oText.AllocBuffer(0);

    EXPECT_EQ(this->m_oSharer.GetString(), this->m_oText.GetString());
    EXPECT_EQ(0, this->m_oText.GetLength());
    EXPECT_EQ(Holds("abc", 7), StateOf(this->m_oSharer));
}

TYPED_TEST(CTOVStringSharingTest, EmptyOfLengthZeroLeavesTheBlockShared)
{
    this->m_oText.AllocBuffer(0);

    this->m_oText.Empty();
    this->m_oText = TXT("");

    EXPECT_EQ(this->m_oSharer.GetString(), this->m_oText.GetString());
    EXPECT_EQ(Holds("abc", 7), StateOf(this->m_oSharer));
}

TYPED_TEST(CTOVStringSharingTest, ACharacterChangedInACopyChangesTheOriginal)
{
    TypeParam oFirst(TXT("abc"));
    TypeParam oSecond;
    oSecond = oFirst;

    oSecond.SetAt(0, 'x');
    EXPECT_EQ(Holds("xbc", 4), StateOf(oFirst));

    oSecond = TXT("x");
    EXPECT_EQ(Holds("xbc", 4), StateOf(oFirst));
}

TYPED_TEST(CTOVStringSharingTest, TestsWithoutCaseChangeNeitherString)
{
    const TypeParam oText(TXT("Dies ist ein Test"));
    const TypeParam oBegin(TXT("DIES"));
    const TypeParam oEnd(TXT("TEST"));

    EXPECT_TRUE(oText.BeginsWithNoCase(oBegin));
    EXPECT_TRUE(oText.EndsWithNoCase(oEnd));

    EXPECT_EQ(Holds("Dies ist ein Test", 18), StateOf(oText));
    EXPECT_EQ(Holds("DIES", 5), StateOf(oBegin));
    EXPECT_EQ(Holds("TEST", 5), StateOf(oEnd));
}
