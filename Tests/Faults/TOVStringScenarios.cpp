// Strings of both widths, whose failed operations leave the text as it was.
#include "Faults/TOVAllocationScenarios.h"
#include "TOVString/TOVStringKinds.h"

#include <TOVString/TOVResourceLoader.h>

#define NAMED(szName) (sStringTraits<TypeParam>::IS_NARROW ? "Narrow" szName : "Wide" szName)

#define SHORT TXT("short text")
#define LONG TXT("a text that is so long that no block of the lists serves it, one more, and yet one more")
#define SHORT_AND_LONG                                                                                                 \
    TXT("short texta text that is so long that no block of the lists serves it, one more, and yet one more")

namespace
{
// The string is whole: its length is that of its text, and its terminator is where it belongs.
template<class TString> bool IsWhole(const TString& oString)
{
    const long lLength = oString.GetLength();
    return oString.GetString() == nullptr ? lLength == 0
                                          : lLength < CapacityOf(oString) && oString.GetString()[lLength] == 0;
}

template<class TString, class TUnit> bool Holds(const TString& oString, const TUnit* szText)
{
    return IsWhole(oString) && oString == szText;
}

// What makes strings and shares their blocks.
template<class TypeParam> tFaultScenarios Makers()
{
    return {
        {NAMED("StringFromText"),
         [] {
             const TypeParam oText(LONG);
             FAULT_EXPECT(Holds(oText, LONG));
         }},
        {NAMED("StringFromCharacter"),
         [] {
             const TypeParam oText(CHR('x'), 5);
             FAULT_EXPECT(IsWhole(oText) && oText.GetLength() == 5 && (oText.GetAt(0) & 0xFF) == 'x');
         }},
        {NAMED("StringWithoutText"),
         [] {
             const TypeParam oText;
             const TypeParam oCopy(oText);
             FAULT_EXPECT(IsWhole(oCopy) && oCopy.IsEmpty());
         }},
        {NAMED("StringIsCopied"),
         [] {
             TypeParam oText(SHORT);
             const TypeParam oCopy(oText);
             FAULT_EXPECT(oCopy.GetString() == oText.GetString());
             TypeParam oOther(LONG);
             oOther = oCopy;
             FAULT_EXPECT(Holds(oOther, SHORT) && Holds(oText, SHORT));
         }},
        {NAMED("StringTakesText"),
         [] {
             TypeParam oText(SHORT);
             const TypeParam oSharing(oText);
             const bool bDone = Completes([&] { oText = LONG; });
             FAULT_EXPECT(Holds(oText, bDone ? LONG : SHORT));
             FAULT_EXPECT(Holds(oSharing, SHORT));
         }},
        {NAMED("StringTakesCharacter"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] { oText = CHR('x'); });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("x") : SHORT));
         }},
        {NAMED("StringCopiesUnits"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] { oText.Copy(LONG, 6); });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("a text") : SHORT));
         }},
        {NAMED("StringAssignsCopy"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] { oText.AssignCopy(6, LONG); });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("a text") : SHORT));
         }},
        {NAMED("StringAllocatesBuffer"),
         [] {
             TypeParam oText(SHORT);
             const TypeParam oSharing(oText);
             const bool bDone = Completes([&] { oText.AllocBuffer(200); });
             FAULT_EXPECT(IsWhole(oText) && oText.GetLength() == (bDone ? 200 : 10));
             FAULT_EXPECT(bDone || oText == SHORT);
             FAULT_EXPECT(Holds(oSharing, SHORT));
         }},
        {NAMED("StringIsEmptied"),
         [] {
             TypeParam oText(SHORT);
             const TypeParam oSharing(oText);
             const bool bDone = Completes([&] { oText.Empty(); });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("") : SHORT));
             FAULT_EXPECT(Holds(oSharing, SHORT));
         }},
        {NAMED("StringOfTheProcess"), [] { FAULT_EXPECT(TypeParam::Null().IsEmpty()); }},
    };
}

// What makes a text longer or another one.
template<class TypeParam> tFaultScenarios Changers()
{
    return {
        {NAMED("StringAppendsText"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] { oText += LONG; });
             FAULT_EXPECT(Holds(oText, bDone ? SHORT_AND_LONG : SHORT));
         }},
        {NAMED("StringAppendsString"),
         [] {
             TypeParam oText(SHORT);
             const TypeParam oMore(LONG);
             const bool bDone = Completes([&] { oText += oMore; });
             FAULT_EXPECT(Holds(oText, bDone ? SHORT_AND_LONG : SHORT));
             FAULT_EXPECT(Holds(oMore, LONG));
         }},
        {NAMED("StringAppendsToShared"),
         [] {
             TypeParam oText(SHORT);
             const TypeParam oSharing(oText);
             const bool bDone = Completes([&] { oText.ConcatInPlace(1, TXT("x")); });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("short textx") : SHORT));
             FAULT_EXPECT(Holds(oSharing, SHORT));
         }},
        {NAMED("StringAppendsItself"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] { oText += oText; });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("short textshort text") : SHORT));
         }},
        {NAMED("StringAppendsCharacters"),
         [] {
             TypeParam oText;
             long lLength = 0;
             for (int nCharacter = 0; nCharacter < 300; ++nCharacter)
                 lLength += Completes([&] { oText += CHR('x'); }) ? 1 : 0;
             FAULT_EXPECT(IsWhole(oText) && oText.GetLength() == lLength);
             FAULT_EXPECT(lLength == 0 || oText.GetAt(lLength - 1) == 'x');
         }},
        {NAMED("StringConcatenatesCopies"),
         [] {
             TypeParam oText(TXT("former"));
             const bool bDone = Completes([&] { oText.ConcatCopy(5, SHORT, 6, LONG); });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("shorta text") : TXT("former")));
         }},
        {NAMED("StringGivesBuffer"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] {
                 oText.GetBuffer(100)[0] = 0;
                 oText.ReleaseBuffer(0);
             });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("") : SHORT));
         }},
        {NAMED("StringReplacesText"),
         [] {
             TypeParam oText(TXT("a short text"));
             const bool bDone = Completes([&] { oText.Replace(TXT("t"), TXT("[letter]")); });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("a shor[letter] [letter]ex[letter]") : TXT("a short text")));
         }},
        {NAMED("StringReplacesByLess"),
         [] {
             TypeParam oText(TXT("a short text"));
             const TypeParam oSharing(oText);
             const bool bDone = Completes([&] { oText.Replace(TXT("short "), nullptr); });
             FAULT_EXPECT(oText.GetLength() == (bDone ? 6 : 12));
             FAULT_EXPECT(bDone || Holds(oText, TXT("a short text")));
         }},
        {NAMED("StringFormats"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] { oText.Format(TXT("%s and %d"), LONG, 12); });
             FAULT_EXPECT(IsWhole(oText) && oText.GetLength() == (bDone ? TypeParam(LONG).GetLength() + 7 : 10));
             FAULT_EXPECT(bDone || oText == SHORT);
         }},
        {NAMED("StringFormatsItself"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] { oText.Format(TXT("<%s>"), oText.GetString()); });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("<short text>") : SHORT));
         }},
        {NAMED("StringFormatsTheOtherWidth"),
         [] {
             TypeParam oText(SHORT);
             const bool bDone = Completes([&] {
                 if constexpr (sStringTraits<TypeParam>::IS_NARROW)
                     oText.Format("<%S>", L"wide");
                 else
                     oText.Format(L"<%S>", "wide");
             });
             FAULT_EXPECT(Holds(oText, bDone ? TXT("<wide>") : SHORT));
         }},
    };
}

// What reads a text and makes others from it.
template<class TypeParam> tFaultScenarios Readers()
{
    return {
        {NAMED("StringGivesParts"),
         [] {
             const TypeParam oText(SHORT);
             const bool bDone = Completes([&] {
                 FAULT_EXPECT(Holds(oText.Left(5), TXT("short")));
                 FAULT_EXPECT(oText.Right(5) == TXT("text"));
                 FAULT_EXPECT(Holds(oText.Mid(2, 3), TXT("ort")));
                 FAULT_EXPECT(oText.Mid(6) == TXT("text"));
                 FAULT_EXPECT(oText.Left(100).GetString() == oText.GetString());
             });
             FAULT_EXPECT(Holds(oText, SHORT) || bDone);
         }},
        {NAMED("StringComparesBegin"),
         [] {
             const TypeParam oText(SHORT);
             const TypeParam oBegin(TXT("SHORT"));
             Completes([&] { FAULT_EXPECT(oText.BeginsWithNoCase(oBegin)); });
             Completes([&] { FAULT_EXPECT(!oText.BeginsWith(oBegin)); });
             FAULT_EXPECT(Holds(oText, SHORT) && Holds(oBegin, TXT("SHORT")));
         }},
        {NAMED("StringComparesEnd"),
         [] {
             const TypeParam oText(LONG);
             const TypeParam oEnd(TXT("ONE MORE"));
             Completes([&] { FAULT_EXPECT(oText.EndsWithNoCase(oEnd)); });
             Completes([&] { FAULT_EXPECT(!oText.EndsWith(oEnd)); });
             FAULT_EXPECT(Holds(oText, LONG) && Holds(oEnd, TXT("ONE MORE")));
         }},
        {NAMED("StringComparesOrder"),
         [] {
             const TypeParam oText(SHORT);
             Completes([&] { FAULT_EXPECT(oText.CompareNoCase(TXT("SHORT TEXT")) == 0); });
             Completes([&] { FAULT_EXPECT(oText.Collate(LONG) > 0); });
             Completes([&] { FAULT_EXPECT(oText.CollateNoCase(TXT("Short text")) == 0); });
             FAULT_EXPECT(Holds(oText, SHORT));
         }},
        {NAMED("StringIsSplit"),
         [] {
             const TypeParam oText(TXT("one,two,,four and more of it,five"));
             CTOVArray<TypeParam> aParts;
             aParts.Add(oText);
             const bool bDone = Completes([&] { FAULT_EXPECT(oText.Split(aParts, ',') == 5); });
             FAULT_EXPECT(!bDone || (aParts.GetSize() == 5 && aParts[3] == TXT("four and more of it")));
             for (long lPart = 0; lPart < aParts.GetSize(); ++lPart)
                 FAULT_EXPECT(IsWhole(aParts[lPart]));
             FAULT_EXPECT(Holds(oText, TXT("one,two,,four and more of it,five")));
         }},
        {NAMED("StringFromTheOtherWidth"),
         [] {
             if constexpr (sStringTraits<TypeParam>::IS_NARROW)
             {
                 const CTOVStringW oWide(L"wide");
                 FAULT_EXPECT(Holds(TypeParam(oWide), "wide"));
             }
             else
             {
                 const CTOVStringA oNarrow("narrow");
                 FAULT_EXPECT(Holds(TypeParam(oNarrow), L"narrow"));
             }
         }},
        {NAMED("StringReadsNumbers"),
         [] {
             const TypeParam oText(TXT("12.5 and more"));
             Completes([&] { FAULT_EXPECT(oText.AsInt() == 12); });
             Completes([&] { FAULT_EXPECT(oText.AsDouble() == 12.5); });
             Completes([&] { FAULT_EXPECT(!oText.AsBool()); });
             FAULT_EXPECT(Holds(oText, TXT("12.5 and more")));
         }},
        {NAMED("StringChangesCase"),
         [] {
             TypeParam oText(TXT("Text"));
             if (Completes([&] { oText.MakeUpper(); }))
                 FAULT_EXPECT(Holds(oText, TXT("TEXT")));
             if (Completes([&] { oText.MakeLower(); }))
                 FAULT_EXPECT(Holds(oText, TXT("text")));
             if (Completes([&] { oText.Reverse(); }))
                 FAULT_EXPECT(Holds(oText, TXT("txet")));
             FAULT_EXPECT(IsWhole(oText));
         }},
    };
}

template<class TString> tFaultScenarios AllOf()
{
    tFaultScenarios aAll = Makers<TString>();
    for (const tFaultScenarios& aMore : {Changers<TString>(), Readers<TString>()})
        aAll.insert(aAll.end(), aMore.begin(), aMore.end());
    return aAll;
}

class CLongLoader : public ITOVResourceLoader
{
public:
    CLongLoader() { SetInstance(this); }
    ~CLongLoader() { SetInstance(nullptr); }
    CLongLoader(const CLongLoader&) = delete;
    CLongLoader& operator=(const CLongLoader&) = delete;

    bool LoadString(long, CTOVStringA& oString) override
    {
        oString.Copy("a text that was loaded", 22);
        return true;
    }
};
} // namespace

tFaultScenarios NarrowStringScenarios()
{
    tFaultScenarios aAll = AllOf<CTOVStringA>();
    aAll.push_back({"NarrowStringIsLoaded", [] {
                        CLongLoader oLoader;
                        CTOVStringA oText("former");
                        const bool bDone = Completes([&] { oText.LoadStringResource(3); });
                        FAULT_EXPECT(Holds(oText, bDone ? "a text that was loaded" : "former"));
                        if (Completes([&] { oText = reinterpret_cast<const char*>(std::uintptr_t(5)); }))
                            FAULT_EXPECT(Holds(oText, "a text that was loaded"));
                        FAULT_EXPECT(IsWhole(oText));
                    }});
    return aAll;
}

tFaultScenarios WideStringScenarios()
{
    return AllOf<CTOVStringW>();
}
