// Rows of narrow text.

#include <Bench.h>
#include <Inputs.h>

#include <TOVPlatform/TOVString.h>
#include <TOVString/TOVStringA.h>

#include <cstring>
#include <utility>

using namespace Inputs;

namespace
{
int Length(const std::string& sText)
{
    return static_cast<int>(sText.size());
}

void Construct(benchmark::State& oState, const char* szText)
{
    szText = Hide(szText);
    for (auto _ : oState)
    {
        CTOVStringA oString(szText);
        Touch(oString);
    }
}

void Copy(benchmark::State& oState, const char* szText)
{
    CTOVStringA oSource(szText);
    for (auto _ : oState)
    {
        Touch(oSource);
        CTOVStringA oString(oSource);
        Touch(oString);
    }
}

void CompareNoCase(benchmark::State& oState, const std::string& sFirst, const std::string& sSecond)
{
    CTOVStringA oFirst(sFirst.c_str());
    const char* const szSecond = Hide(sSecond.c_str());
    for (auto _ : oState)
    {
        Touch(oFirst);
        Use(oFirst.CompareNoCase(szSecond));
    }
}
} // namespace

BENCH("string/construct3", KERNEL)
{
    Construct(oState, TEXT3);
}

BENCH("string/construct24", KERNEL)
{
    Construct(oState, TEXT24);
}

BENCH("string/construct200", KERNEL)
{
    Construct(oState, Text200().c_str());
}

BENCH("string/copy24", KERNEL)
{
    Copy(oState, TEXT24);
}

BENCH("string/copy200", KERNEL)
{
    Copy(oState, Text200().c_str());
}

BENCH("string/append1x1000", KERNEL)
{
    for (auto _ : oState)
    {
        CTOVStringA oString;
        for (int nCharacter = 0; nCharacter < 1000; ++nCharacter)
            oString += 'x';
        Touch(oString);
    }
    oState.SetItemsProcessed(oState.iterations() * 1000);
}

BENCH("string/append1x1000 (sized first)", KERNEL)
{
    for (auto _ : oState)
    {
        CTOVStringA oString;
        oString.GetBuffer(1000);
        oString.ReleaseBuffer(0);
        for (int nCharacter = 0; nCharacter < 1000; ++nCharacter)
            oString += 'x';
        Touch(oString);
    }
    oState.SetItemsProcessed(oState.iterations() * 1000);
}

BENCH("string/concat24+24", KERNEL)
{
    const CTOVStringA oFirst(TEXT24);
    const CTOVStringA oSecond(OTHER24);
    for (auto _ : oState)
    {
        CTOVStringA oString;
        oString.ConcatCopy(static_cast<int>(oFirst.GetLength()), ~oFirst, static_cast<int>(oSecond.GetLength()),
                           ~oSecond);
        Touch(oString);
    }
}

BENCH("string/concat24+24 (x=a, x+=b)", KERNEL)
{
    const CTOVStringA oFirst(TEXT24);
    const CTOVStringA oSecond(OTHER24);
    for (auto _ : oState)
    {
        CTOVStringA oString(oFirst);
        oString += oSecond;
        Touch(oString);
    }
}

BENCH("string/findsub1K", KERNEL)
{
    CTOVStringA oString(TextWithNeedle(1024).c_str());
    const char* const szNeedle = Hide(NEEDLE);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.Find(szNeedle));
    }
}

BENCH("string/findchar1K", KERNEL)
{
    CTOVStringA oString(TextWithCharacter(1024).c_str());
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.Find(NEEDLE_CHARACTER));
    }
}

BENCH("string/replace4Ksame", KERNEL)
{
    CTOVStringA oString(TextToReplace(4096).c_str());
    const char* szOld = OLD_WORD;
    const char* szNew = SAME_WORD;
    for (auto _ : oState)
    {
        Use(oString.Replace(szOld, szNew));
        std::swap(szOld, szNew);
    }
}

BENCH("string/replace4Kgrow", KERNEL)
{
    const std::string sText = TextToReplace(4096);
    for (auto _ : oState)
    {
        CTOVStringA oString;
        oString.Copy(sText.c_str(), Length(sText));
        Use(oString.Replace(OLD_WORD, LONG_WORD));
    }
}

BENCH("string/split1K", KERNEL)
{
    const CTOVStringA oString(TextToSplit(1024).c_str());
    for (auto _ : oState)
    {
        CTOVArray<CTOVStringA> oParts;
        Use(oString.Split(oParts, SEPARATOR));
    }
}

BENCH("string/tolower1K", KERNEL)
{
    const std::string sText = MixedText(1024);
    CTOVStringA oString(sText.c_str());
    for (auto _ : oState)
    {
        std::memcpy(oString.GetString(), sText.data(), sText.size());
        oString.MakeLower();
        benchmark::ClobberMemory();
    }
}

BENCH("string/icompare24", KERNEL)
{
    CompareNoCase(oState, TEXT24, UPPER24);
}

BENCH("string/icompare200", KERNEL)
{
    std::string sUpper = Text200();
    for (char& cCharacter : sUpper)
    {
        if ('a' <= cCharacter && cCharacter <= 'z')
            cCharacter = static_cast<char>(cCharacter - 'a' + 'A');
    }
    CompareNoCase(oState, Text200(), sUpper);
}

BENCH("string/intparse7", KERNEL)
{
    CTOVStringA oString(NUMBER7);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.AsInt());
    }
}

BENCH("string/doubleparse", KERNEL)
{
    CTOVStringA oString(NUMBER_DOUBLE);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.AsDouble());
    }
}

BENCH("string/format_sds", KERNEL)
{
    for (auto _ : oState)
    {
        CTOVStringA oString;
        oString.Format("%s has %d parts of %s", Hide("catalogue"), Hide(4711), Hide("the library"));
        Touch(oString);
    }
}

BENCH("string/format_sds (SNPrintf stack only)", KERNEL)
{
    for (auto _ : oState)
    {
        char szBuffer[100];
        TOVPlatform::TOVStringA::SNPrintf(szBuffer, sizeof(szBuffer), "%s has %d parts of %s", Hide("catalogue"),
                                          Hide(4711), Hide("the library"));
        Use(szBuffer);
    }
}

BENCH("string/format_f", KERNEL)
{
    for (auto _ : oState)
    {
        CTOVStringA oString;
        oString.Format("%f", Hide(NUMBER_FIXED));
        Touch(oString);
    }
}

BENCH("string/format_f (SNPrintf stack only)", KERNEL)
{
    for (auto _ : oState)
    {
        char szBuffer[100];
        TOVPlatform::TOVStringA::SNPrintf(szBuffer, sizeof(szBuffer), "%f", Hide(NUMBER_FIXED));
        Use(szBuffer);
    }
}

BENCH("string/begins+ends", KERNEL)
{
    CTOVStringA oString(TextWithEnds().c_str());
    const CTOVStringA oPrefix(PREFIX8);
    const CTOVStringA oSuffix(SUFFIX8);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.BeginsWith(oPrefix));
        Use(oString.EndsWith(oSuffix));
    }
}
