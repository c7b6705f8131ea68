// Life and access of both strings: construction, length, characters.
#include "Support/TOVLayout.h"
#include "TOVString/TOVStringKinds.h"

#include <type_traits>

namespace
{
constexpr char NO_SUCH_INDEX[] = "(0 <= lIndex) && (lIndex < GetLength())";

template<class TString> class CTOVStringCoreTest : public testing::Test
{
};
TYPED_TEST_SUITE(CTOVStringCoreTest, tStrings, sStringName);
} // namespace

TYPED_TEST(CTOVStringCoreTest, ANewStringHasNoBlock)
{
    const TypeParam oText;

    EXPECT_TRUE(oText.IsEmpty());
    EXPECT_EQ(0, oText.GetLength());
    EXPECT_EQ(nullptr, oText.GetString());
    EXPECT_EQ(nullptr, ~oText);
    EXPECT_EQ(nullptr, static_cast<const tUnitOf<TypeParam>*>(oText));
    EXPECT_FALSE(oText.GetData()->IsValid());
    EXPECT_EQ(0, CapacityOf(oText));
}

TYPED_TEST(CTOVStringCoreTest, HasOneVirtualOperationAndTwoMembers)
{
    static_assert(std::is_polymorphic_v<TypeParam> && std::has_virtual_destructor_v<TypeParam>);
    // So that it can be a member of classes derived from the standard's exceptions.
    static_assert(std::is_nothrow_destructible_v<TypeParam>);
    const TypeParam oText;

    EXPECT_EQ((SizeWithMembers<CTOVBuffer<tUnitOf<TypeParam>>, int>()), sizeof(TypeParam));
    EXPECT_EQ(static_cast<const void*>(oText.GetData()), reinterpret_cast<const char*>(&oText) + sizeof(void*));
}

TYPED_TEST(CTOVStringCoreTest, HoldsTheTextItIsMadeOf)
{
    const TypeParam oText(TXT("BCD"));

    EXPECT_EQ(Holds("BCD", 4), StateOf(oText));
    EXPECT_EQ(3, oText.GetLength());
    EXPECT_FALSE(oText.IsEmpty());
    EXPECT_TRUE(oText.GetData()->IsValid());
}

TYPED_TEST(CTOVStringCoreTest, MadeOfNoTextHasNoBlock)
{
    EXPECT_EQ(HoldsNothing(), StateOf(TypeParam(TXT(""))));
    EXPECT_EQ(HoldsNothing(), StateOf(TypeParam(static_cast<const tUnitOf<TypeParam>*>(nullptr))));
}

TYPED_TEST(CTOVStringCoreTest, ACopySharesTheBlockAndTheLength)
{
    const TypeParam oText(TXT("BCD"));

    const TypeParam oCopy(oText);

    EXPECT_EQ(oText.GetString(), oCopy.GetString());
    EXPECT_EQ(Holds("BCD", 4), StateOf(oCopy));
}

TYPED_TEST(CTOVStringCoreTest, ACopyOfAStringWithoutABlockHasNone)
{
    const TypeParam oText;
    TypeParam oCopy(oText);
    EXPECT_EQ(HoldsNothing(), StateOf(oCopy));

    oCopy = TXT("x");

    EXPECT_EQ(HoldsNothing(), StateOf(oText));
}

TYPED_TEST(CTOVStringCoreTest, ACopyOfAnEmptiedStringSharesItsBlock)
{
    TypeParam oText(TXT("BCD"));
    oText.Empty();

    const TypeParam oCopy(oText);

    EXPECT_EQ(oText.GetString(), oCopy.GetString());
    EXPECT_EQ(Holds("", 4), StateOf(oCopy));
}

TYPED_TEST(CTOVStringCoreTest, FilledWithNoCharactersHasNoBlock)
{
    EXPECT_EQ(HoldsNothing(), StateOf(TypeParam(CHR('x'), 0)));
    EXPECT_EQ(HoldsNothing(), StateOf(TypeParam(CHR('x'), -1)));
    EXPECT_EQ(HoldsNothing(), StateOf(TypeParam(CHR('x'), -2147483647 - 1)));
}

TYPED_TEST(CTOVStringCoreTest, AllFormsOfAccessGiveTheBlock)
{
    TypeParam oText(TXT("BCD"));
    const TypeParam& oSame = oText;

    EXPECT_EQ(oText.GetString(), oSame.GetString());
    EXPECT_EQ(oText.GetString(), ~oText);
    EXPECT_EQ(oText.GetString(), static_cast<const tUnitOf<TypeParam>*>(oSame));
    EXPECT_EQ(oText.GetString(), oText.GetData()->GetBuffer());
}

TYPED_TEST(CTOVStringCoreTest, GivesACharacterAsAnUnsignedNumber)
{
    const TypeParam oText(TXT("B\xE4\xFF"));

    EXPECT_EQ('B', oText.GetAt(0));
    EXPECT_EQ(0xE4, oText.GetAt(1));
    EXPECT_EQ(0xFF, oText[2]);
    EXPECT_EQ(0xFF, oText[2L]);
}

TYPED_TEST(CTOVStringCoreTest, StoresACharacterInPlace)
{
    TypeParam oText(TXT("BCD"));

    oText.SetAt(0, 'x');
    oText.SetAt(2, 0xE4);

    EXPECT_EQ(Holds("xC\xE4", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringCoreTest, AStoredZeroStaysInsideTheText)
{
    TypeParam oText(TXT("BCD"));

    oText.SetAt(1, 0);

    EXPECT_EQ(Holds("B\0D", 4), StateOf(oText));
    EXPECT_EQ(0, oText.GetAt(1));
    EXPECT_EQ("B", VisibleOf(oText));
}

TYPED_TEST(CTOVStringCoreTest, RefusesToReadOutsideTheText)
{
    const TypeParam oText(TXT("BCD"));

    for (const int nIndex : {3, 4, 6, -1, 2147483647, -2147483647 - 1})
    {
        EXPECT_HEADER_CHECK(NO_SUCH_INDEX, oText.GetAt(nIndex));
        EXPECT_HEADER_CHECK(NO_SUCH_INDEX, oText[nIndex]);
        EXPECT_HEADER_CHECK(NO_SUCH_INDEX, oText[static_cast<long>(nIndex)]);
    }
    EXPECT_HEADER_CHECK(NO_SUCH_INDEX, TypeParam().GetAt(0));
}

TYPED_TEST(CTOVStringCoreTest, RefusesToWriteOutsideTheText)
{
    TypeParam oText(TXT("BCD"));
    TypeParam oNew;

    for (const int nIndex : {3, 6, -1})
        EXPECT_HEADER_CHECK(NO_SUCH_INDEX, oText.SetAt(nIndex, 'w'));
    EXPECT_HEADER_CHECK(NO_SUCH_INDEX, oNew.SetAt(0, 'w'));

    EXPECT_EQ(Holds("BCD", 4), StateOf(oText));
}

TYPED_TEST(CTOVStringCoreTest, RefusesAnIndexInTheCapacityBehindTheText)
{
    TypeParam oText(TXT("BCDEF"));
    oText.ReleaseBuffer(2);

    EXPECT_EQ('C', oText.GetAt(1));
    EXPECT_HEADER_CHECK(NO_SUCH_INDEX, oText.GetAt(2));
    EXPECT_HEADER_CHECK(NO_SUCH_INDEX, oText.SetAt(3, 'w'));
}

TYPED_TEST(CTOVStringCoreTest, ThereIsOneSharedEmptyString)
{
    EXPECT_TRUE(TypeParam::Null().IsEmpty());
    EXPECT_EQ(&TypeParam::Null(), &TypeParam::Null());
    static_assert(std::is_same_v<TypeParam&, decltype(TypeParam::Null())>);
}

TYPED_TEST(CTOVStringCoreTest, AnotherHolderLeavesTheSharedEmptyStringAlone)
{
    TypeParam* const pNull = &TypeParam::Null();
    {
        const CTOVDynamicSingleton<TypeParam> oHolder;
        EXPECT_EQ(pNull, &TypeParam::Null());
    }
    EXPECT_EQ(pNull, &TypeParam::Null());
    EXPECT_EQ(0, pNull->GetLength());
}

TYPED_TEST(CTOVStringCoreTest, WhoWritesIntoTheSharedEmptyStringChangesItForAll)
{
    TypeParam::Null() = TXT("text");
    EXPECT_EQ(Holds("text", 5), StateOf(TypeParam::Null()));

    TypeParam::Null() = TypeParam();
    EXPECT_EQ(HoldsNothing(), StateOf(TypeParam::Null()));
}

TEST(CTOVStringNullTest, NarrowAndWideHaveTheirOwn)
{
    CTOVStringA::Null() = "text";

    EXPECT_TRUE(CTOVStringW::Null().IsEmpty());

    CTOVStringA::Null() = CTOVStringA();
}
