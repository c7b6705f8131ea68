// What the common operations of both strings and of their buffer take from the heap. A holder and its text are one
// block; a new size takes a new one, but for a text that grows into the rest of its block, and no operation takes more
// than it needs.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVRefusal.h"
#include "TOVString/TOVStringKinds.h"

#include <new>
#include <optional>

namespace
{
// Blocks that the statement takes.
#define TAKEN_BY(...)                                                                                                  \
    [&] {                                                                                                              \
        const CAllocationCounter oCounter;                                                                             \
        __VA_ARGS__;                                                                                                   \
        return oCounter.Taken();                                                                                       \
    }()

template<class TString> class CTOVStringAllocationTest : public testing::Test
{
protected:
    typedef TString TypeParam;

    CTOVStringAllocationTest() : m_oText(TXT("abcdef")), m_oOther(TXT("xyz")) {}

    TString m_oText;
    TString m_oOther;
    const TString m_oNew;
    std::optional<TString> m_oMade;
};
TYPED_TEST_SUITE(CTOVStringAllocationTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringAllocationTest, ANewStringTakesItsHolder)
{
    EXPECT_EQ(1u, TAKEN_BY(this->m_oMade.emplace()));
}

TYPED_TEST(CTOVStringAllocationTest, AStringMadeOfATextTakesABlock)
{
    EXPECT_EQ(1u, TAKEN_BY(this->m_oMade.emplace(TXT("abc"))));
}

TYPED_TEST(CTOVStringAllocationTest, AStringMadeOfNoTextTakesItsHolder)
{
    EXPECT_EQ(1u, TAKEN_BY(this->m_oMade.emplace(TXT(""))));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oMade.emplace(CHR('x'), 0)));
}

TYPED_TEST(CTOVStringAllocationTest, AFilledStringTakesAHolderAndABlock)
{
    EXPECT_EQ(2u, TAKEN_BY(this->m_oMade.emplace(CHR('x'), 4)));
}

TYPED_TEST(CTOVStringAllocationTest, ACopyTakesNothing)
{
    EXPECT_EQ(0u, TAKEN_BY(this->m_oMade.emplace(this->m_oText)));
}

TYPED_TEST(CTOVStringAllocationTest, ACopyOfAStringWithoutABlockTakesAHolderOfItsOwn)
{
    EXPECT_EQ(1u, TAKEN_BY(this->m_oMade.emplace(this->m_oNew)));
}

TYPED_TEST(CTOVStringAllocationTest, AssigningAStringTakesNothing)
{
    EXPECT_EQ(0u, TAKEN_BY(this->m_oOther = this->m_oText));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oOther = this->m_oText));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oOther = this->m_oNew));
}

TYPED_TEST(CTOVStringAllocationTest, AssigningATextTakesABlock)
{
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText = TXT("123456")));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText = TXT("1")));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText = TXT("123456789")));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText = CHR('x')));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText = TXT("")));
}

TYPED_TEST(CTOVStringAllocationTest, AssigningATextToASharerTakesABlock)
{
    const TypeParam oSharer(this->m_oText);

    EXPECT_EQ(1u, TAKEN_BY(this->m_oText = TXT("123456")));
}

TYPED_TEST(CTOVStringAllocationTest, CopyAndConcatCopyTakeABlock)
{
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.Copy(TXT("abc"), 3)));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.ConcatCopy(1, TXT("a"), 1, TXT("b"))));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.AllocBuffer(2)));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.AllocBuffer(0)));
}

TYPED_TEST(CTOVStringAllocationTest, AppendingInPlaceTakesNothing)
{
    this->m_oText.ReleaseBuffer(1);

    EXPECT_EQ(0u, TAKEN_BY(this->m_oText += TXT("bc")));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText += CHR('d')));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText += this->m_oNew));
}

TYPED_TEST(CTOVStringAllocationTest, AppendingThatGrowsTakesOneBlockAtMost)
{
    EXPECT_GE(1u, TAKEN_BY(this->m_oText += TXT("gh")));
    EXPECT_GE(1u, TAKEN_BY(this->m_oText += CHR('i')));
    EXPECT_GE(1u, TAKEN_BY(this->m_oText += this->m_oOther));
    EXPECT_GE(1u, TAKEN_BY(this->m_oText += this->m_oText));

    const TypeParam oLong(CHR('x'), 100);
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText += oLong));
}

// The text moves when the rest of its block is used up, and the block for a long text has some more in reserve.
TYPED_TEST(CTOVStringAllocationTest, AppendingInALoopTakesFewBlocks)
{
    TypeParam oText;
    const unsigned long ulForShort = TAKEN_BY(for (int i = 0; i < 1000; ++i) oText += CHR('x'));
    const unsigned long ulForLong = TAKEN_BY(for (int i = 1000; i < 100000; ++i) oText += CHR('x'));

#if TOV_CAN_FAIL_ALLOCATIONS
    EXPECT_GE(1000 * sizeof(tUnitOf<TypeParam>) / 16 + 2, ulForShort);
    EXPECT_GE(60u, ulForLong);
#else
    EXPECT_GE(1000u, ulForShort);
    EXPECT_GE(99000u, ulForLong);
#endif
    EXPECT_EQ(100001, oText.GetData()->GetSize());
}

TYPED_TEST(CTOVStringAllocationTest, AppendingToASharerThatGrowsTakesABlock)
{
    const TypeParam oSharer(this->m_oText);

    EXPECT_EQ(1u, TAKEN_BY(this->m_oText += TXT("gh")));
    EXPECT_EQ(Holds("abcdef", 7), StateOf(oSharer));
}

TYPED_TEST(CTOVStringAllocationTest, FormatOfANewStringTakesABlock)
{
    TypeParam oText;

    EXPECT_EQ(1u, TAKEN_BY(oText.Format(TXT("%d"), 42)));
    EXPECT_EQ(0u, TAKEN_BY(oText.Format(TXT("%d"), -1)));
}

TYPED_TEST(CTOVStringAllocationTest, FormatTakesABlockAsLargeAsACopyDoes)
{
    TypeParam oText;
    for (int nLength = 1; nLength < 100; ++nLength)
    {
        oText += CHR('x');
        TypeParam oCopied;
        TypeParam oFormatted;
        const CAllocationCounter oCounter;
        oCopied.Copy(oText.GetString(), nLength);
        const std::size_t nCopied = oCounter.LastSize();
        oFormatted.Format(TXT("%s"), oText.GetString());
        const std::size_t nFormatted = oCounter.LastSize();

        EXPECT_EQ(nCopied, nFormatted) << nLength;
        EXPECT_EQ(oCopied.GetData()->GetSize(), oFormatted.GetData()->GetSize()) << nLength;
    }
}

// Its arguments may lie in the old block, which lives on until they are printed.
TYPED_TEST(CTOVStringAllocationTest, FormatThatOutgrowsABlockTakesABlock)
{
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.Format(TXT("%d"), 42)));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.Format(TXT("%d"), -1)));

    const TypeParam oSharer(this->m_oText);
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.Format(TXT("%s"), TXT("some text that needs more room than a number"))));
}

TYPED_TEST(CTOVStringAllocationTest, APartTakesABlock)
{
    EXPECT_EQ(1u, TAKEN_BY(this->m_oMade.emplace(this->m_oText.Left(3))));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oMade.emplace(this->m_oText.Right(3))));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oMade.emplace(this->m_oText.Mid(1, 3))));
}

TYPED_TEST(CTOVStringAllocationTest, TheWholeCutOutTakesNothing)
{
    EXPECT_EQ(0u, TAKEN_BY(this->m_oMade.emplace(this->m_oText.Left(7))));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oMade.emplace(this->m_oText.Mid(0))));
}

TYPED_TEST(CTOVStringAllocationTest, EmptyTakesNothing)
{
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.Empty()));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.Empty()));
}

TYPED_TEST(CTOVStringAllocationTest, EmptyOfASharerTakesABlock)
{
    const TypeParam oSharer(this->m_oText);

    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.Empty()));
}

TYPED_TEST(CTOVStringAllocationTest, ReplacingTakesABlockWhereItMustGrow)
{
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.Replace(CHR('a'), CHR('x'))));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.Replace(TXT("x"), TXT("a"))));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.Replace(TXT("z"), TXT("longer"))));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.Replace(TXT("a"), TXT("longer"))));
}

TYPED_TEST(CTOVStringAllocationTest, ABufferTakesABlockWhereItMustGrow)
{
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.GetBuffer(6)));
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.GetBuffer(7)));
    EXPECT_EQ(0u, TAKEN_BY(this->m_oText.ReleaseBuffer(0)));

    const TypeParam oSharer(this->m_oText);
    EXPECT_EQ(1u, TAKEN_BY(this->m_oText.GetBuffer(8)));
}

TYPED_TEST(CTOVStringAllocationTest, LookingTakesNothing)
{
    const TypeParam& oText = this->m_oText;

    EXPECT_EQ(0u, TAKEN_BY(oText.Find(TXT("cd")); oText.Find(CHR('c')); oText.FindOneOf(TXT("c"))));
    EXPECT_EQ(0u, TAKEN_BY(oText.Compare(TXT("abc")); oText.BeginsWith(this->m_oOther)));
    EXPECT_EQ(0u, TAKEN_BY(oText.EndsWith(this->m_oOther); oText.AsInt(); oText.AsDouble()));
}

TYPED_TEST(CTOVStringAllocationTest, ChangingInPlaceTakesNothing)
{
    TypeParam& oText = this->m_oText;

    EXPECT_EQ(0u, TAKEN_BY(oText.MakeUpper(); oText.MakeLower(); oText.Reverse(); oText.SetAt(0, 'x')));
}

TYPED_TEST(CTOVStringAllocationTest, TestsWithoutCaseTakeTwoWorkingStrings)
{
    EXPECT_EQ(4u, TAKEN_BY(this->m_oText.BeginsWithNoCase(this->m_oOther)));
    EXPECT_EQ(4u, TAKEN_BY(this->m_oText.EndsWithNoCase(this->m_oOther)));
}

TYPED_TEST(CTOVStringAllocationTest, ADestroyedStringGivesBackWhatItTook)
{
    this->m_oMade.emplace(TXT("abc"));
    const CAllocationCounter oCounter;

    this->m_oMade.reset();

    EXPECT_EQ(-1, oCounter.Kept());
}

TYPED_TEST(CTOVStringAllocationTest, ADestroyedStringTakesNothingItself)
{
    this->m_oMade.emplace(TXT("abc"));

    EXPECT_EQ(0u, TAKEN_BY(this->m_oMade.reset()));
}

TYPED_TEST(CTOVStringAllocationTest, NothingIsLeftBehind)
{
    const CAllocationCounter oCounter;
    {
        TypeParam oText(TXT("abc"));
        const TypeParam oSharer(oText);
        oText += TXT("defghi");
        oText.Replace(TXT("d"), TXT("12345"));
        oText.Format(TXT("%d"), 1);
        oText.Empty();
        oText.GetBuffer(100);
        oText = oSharer.Mid(1);
    }
    EXPECT_EQ(0, oCounter.Kept());
}

TYPED_TEST(CTOVStringAllocationTest, ABufferResizedTakesABlock)
{
    typedef CTOVBuffer<tUnitOf<TypeParam>> tBuffer;
    std::optional<tBuffer> oBuffer;
    std::optional<tBuffer> oSharer;

    EXPECT_EQ(1u, TAKEN_BY(oBuffer.emplace()));
    EXPECT_EQ(1u, TAKEN_BY(oBuffer->Resize(10)));
    EXPECT_EQ(1u, TAKEN_BY(oBuffer->Resize(10)));
    EXPECT_EQ(1u, TAKEN_BY(oBuffer->Resize(5, false)));
    EXPECT_EQ(0u, TAKEN_BY(oSharer.emplace(*oBuffer)));
    EXPECT_EQ(1u, TAKEN_BY(oBuffer->Resize(10)));
}

TYPED_TEST(CTOVStringAllocationTest, ABufferAppendedToTakesABlock)
{
    typedef CTOVBuffer<tUnitOf<TypeParam>> tBuffer;
    tBuffer oBuffer;
    tBuffer oSharer;

    EXPECT_EQ(1u, TAKEN_BY(oBuffer.Append(TXT("abc"), 3)));
    EXPECT_EQ(1u, TAKEN_BY(oBuffer.Append(TXT("de"), 2)));
    EXPECT_EQ(0u, TAKEN_BY(oBuffer.Zero()));
    EXPECT_EQ(0u, TAKEN_BY(oSharer = oBuffer));
    EXPECT_EQ(1u, TAKEN_BY(oBuffer.Zero()));
    EXPECT_EQ(1u, TAKEN_BY(oBuffer.Free()));
    EXPECT_EQ(0u, TAKEN_BY(oBuffer.Free()));
}

#if TOV_CAN_FAIL_ALLOCATIONS
namespace
{
// The operation fails with every allocation of its own in turn; each time the string stays as it was.
template<class TString, class TOperation> void ExpectUnchangedWithoutMemory(TString& oText, TOperation fnOperation)
{
    const sHeld oBefore = StateOf(oText);
    const auto* const pBlock = oText.GetString();
    const unsigned long ulNeeded =
        TAKEN_BY(TString oCopy; oCopy.Copy(pBlock, static_cast<int>(oText.GetLength())); fnOperation(oCopy)) - 2;
    ASSERT_LT(0u, ulNeeded);
    for (unsigned long ulSuccesses = 0; ulSuccesses < ulNeeded; ++ulSuccesses)
    {
        EXPECT_TRUE(RunsOutOfMemory([&] { fnOperation(oText); }, ulSuccesses));
        EXPECT_EQ(oBefore, StateOf(oText));
        EXPECT_EQ(pBlock, oText.GetString());
    }
}
} // namespace

TYPED_TEST(CTOVStringAllocationTest, WithoutMemoryTheStringStaysAsItWas)
{
    TypeParam& oText = this->m_oText;

    ExpectUnchangedWithoutMemory(oText, [](TypeParam& oString) { oString = TXT("some other text"); });
    ExpectUnchangedWithoutMemory(oText, [](TypeParam& oString) { oString.Copy(TXT("some other text"), 5); });
    ExpectUnchangedWithoutMemory(oText, [](TypeParam& oString) { oString += TXT("more than its block has room for"); });
    ExpectUnchangedWithoutMemory(oText, [](TypeParam& oString) { oString.Replace(TXT("a"), TXT("longer")); });
    ExpectUnchangedWithoutMemory(oText, [](TypeParam& oString) { oString.AllocBuffer(3); });
    ExpectUnchangedWithoutMemory(oText, [](TypeParam& oString) { oString.ConcatCopy(1, TXT("a"), 1, TXT("b")); });
}

TYPED_TEST(CTOVStringAllocationTest, WithoutMemoryASharerStaysAsItWas)
{
    const TypeParam oSharer(this->m_oText);
    TypeParam& oText = this->m_oText;

    ExpectUnchangedWithoutMemory(oText, [](TypeParam& oString) { oString += TXT("more than its block has room for"); });
    EXPECT_TRUE(RunsOutOfMemory([&] { oText.Empty(); }));

    EXPECT_EQ(Holds("abcdef", 7), StateOf(oText));
    EXPECT_EQ(oSharer.GetString(), oText.GetString());
}

TYPED_TEST(CTOVStringAllocationTest, WithoutMemoryNoStringIsMade)
{
    const CAllocationCounter oCounter;
    {
        const CAllocationFailure oFailure;
        EXPECT_THROW(TypeParam(TXT("abc")), std::bad_alloc);
    }
    EXPECT_EQ(0, oCounter.Kept());
}
#endif
