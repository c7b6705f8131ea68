// Rows of 16-bit text.

#include <Bench.h>
#include <Inputs.h>

#include <TOVString/TOVStringW.h>

#include <cstring>
#include <utility>

using namespace Inputs;

namespace
{
using tUnits = std::vector<wchar_t>;

tUnits Wide(const std::string& sText)
{
    return Units<wchar_t>(sText);
}

int Length(const tUnits& aUnits)
{
    return static_cast<int>(aUnits.size()) - 1;
}

void Copy(benchmark::State& oState, const std::string& sText)
{
    CTOVStringW oSource(Wide(sText).data());
    for (auto _ : oState)
    {
        Touch(oSource);
        CTOVStringW oString(oSource);
        Touch(oString);
    }
}

void CompareNoCase(benchmark::State& oState, const std::string& sText)
{
    std::string sUpper = sText;
    for (char& cCharacter : sUpper)
    {
        if ('a' <= cCharacter && cCharacter <= 'z')
            cCharacter = static_cast<char>(cCharacter - 'a' + 'A');
    }
    CTOVStringW oFirst(Wide(sText).data());
    const tUnits aSecond = Wide(sUpper);
    for (auto _ : oState)
    {
        Touch(oFirst);
        Use(oFirst.CompareNoCase(aSecond.data()));
    }
}
} // namespace

BENCH("string/construct24 16-bit", KERNEL)
{
    const tUnits aText = Wide(TEXT24);
    const wchar_t* const szText = Hide(aText.data());
    for (auto _ : oState)
    {
        CTOVStringW oString(szText);
        Touch(oString);
    }
}

BENCH("string/construct24 16-bit (Copy)", KERNEL)
{
    const tUnits aText = Wide(TEXT24);
    const wchar_t* const szText = Hide(aText.data());
    const int nLength = Hide(Length(aText));
    for (auto _ : oState)
    {
        CTOVStringW oString;
        oString.Copy(szText, nLength);
        Touch(oString);
    }
}

BENCH("string/copy24 16-bit", KERNEL)
{
    Copy(oState, TEXT24);
}

BENCH("string/copy200 wide", KERNEL)
{
    Copy(oState, Text200());
}

BENCH("string/append1x1000 wide", KERNEL)
{
    for (auto _ : oState)
    {
        CTOVStringW oString;
        for (int nCharacter = 0; nCharacter < 1000; ++nCharacter)
            oString += L'x';
        Touch(oString);
    }
    oState.SetItemsProcessed(oState.iterations() * 1000);
}

BENCH("string/concat24+24 16-bit", KERNEL)
{
    const CTOVStringW oFirst(Wide(TEXT24).data());
    const CTOVStringW oSecond(Wide(OTHER24).data());
    for (auto _ : oState)
    {
        CTOVStringW oString;
        oString.ConcatCopy(static_cast<int>(oFirst.GetLength()), ~oFirst, static_cast<int>(oSecond.GetLength()),
                           ~oSecond);
        Touch(oString);
    }
}

BENCH("string/findsub1K 16-bit", KERNEL)
{
    CTOVStringW oString(Wide(TextWithNeedle(1024)).data());
    const tUnits aNeedle = Wide(NEEDLE);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.Find(aNeedle.data()));
    }
}

BENCH("string/findchar1K wide", KERNEL)
{
    CTOVStringW oString(Wide(TextWithCharacter(1024)).data());
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.Find(static_cast<wchar_t>(NEEDLE_CHARACTER)));
    }
}

BENCH("string/replace4Ksame wide", KERNEL)
{
    CTOVStringW oString(Wide(TextToReplace(4096)).data());
    tUnits aOld = Wide(OLD_WORD);
    tUnits aNew = Wide(SAME_WORD);
    for (auto _ : oState)
    {
        Use(oString.Replace(aOld.data(), aNew.data()));
        aOld.swap(aNew);
    }
}

BENCH("string/replace4Kgrow wide", KERNEL)
{
    const tUnits aText = Wide(TextToReplace(4096));
    const tUnits aOld = Wide(OLD_WORD);
    const tUnits aNew = Wide(LONG_WORD);
    for (auto _ : oState)
    {
        CTOVStringW oString;
        oString.Copy(aText.data(), Length(aText));
        Use(oString.Replace(aOld.data(), aNew.data()));
    }
}

BENCH("string/split1K wide", KERNEL)
{
    const CTOVStringW oString(Wide(TextToSplit(1024)).data());
    for (auto _ : oState)
    {
        CTOVArray<CTOVStringW> oParts;
        Use(oString.Split(oParts, SEPARATOR));
    }
}

BENCH("string/tolower1K wide", KERNEL)
{
    const tUnits aText = Wide(MixedText(1024));
    CTOVStringW oString(aText.data());
    for (auto _ : oState)
    {
        std::memcpy(oString.GetString(), aText.data(), aText.size() * sizeof(wchar_t));
        oString.MakeLower();
        benchmark::ClobberMemory();
    }
}

BENCH("string/icompare24 wide", KERNEL)
{
    CompareNoCase(oState, TEXT24);
}

BENCH("string/icompare200 wide", KERNEL)
{
    CompareNoCase(oState, Text200());
}

BENCH("string/intparse7 wide", KERNEL)
{
    CTOVStringW oString(Wide(NUMBER7).data());
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.AsInt());
    }
}

BENCH("string/doubleparse 16-bit", KERNEL)
{
    CTOVStringW oString(Wide(NUMBER_DOUBLE).data());
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.AsDouble());
    }
}

BENCH("string/format_sds wide", KERNEL)
{
    for (auto _ : oState)
    {
        CTOVStringW oString;
        oString.Format(L"%s has %d parts of %s", Hide(L"catalogue"), Hide(4711), Hide(L"the library"));
        Touch(oString);
    }
}

BENCH("string/begins+ends wide", KERNEL)
{
    CTOVStringW oString(Wide(TextWithEnds()).data());
    const CTOVStringW oPrefix(Wide(PREFIX8).data());
    const CTOVStringW oSuffix(Wide(SUFFIX8).data());
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.BeginsWith(oPrefix));
        Use(oString.EndsWith(oSuffix));
    }
}
