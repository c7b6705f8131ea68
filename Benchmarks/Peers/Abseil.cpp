// Rows of Abseil.

#include <Bench.h>
#include <Inputs.h>

#include <absl/container/flat_hash_map.h>
#include <absl/strings/ascii.h>
#include <absl/strings/cord.h>
#include <absl/strings/match.h>
#include <absl/strings/numbers.h>
#include <absl/strings/str_cat.h>
#include <absl/strings/str_format.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>

#include <cstring>
#include <utility>

using namespace Inputs;

namespace
{
void Copy(benchmark::State& oState, const std::string& sText)
{
    absl::Cord oSource(sText);
    for (auto _ : oState)
    {
        Touch(oSource);
        absl::Cord oString(oSource);
        Touch(oString);
    }
}
} // namespace

BENCH("string/copy24", "absl::Cord")
{
    Copy(oState, TEXT24);
}

BENCH("string/copy200", "absl::Cord")
{
    Copy(oState, Text200());
}

BENCH("string/concat24+24", "absl::StrCat")
{
    const std::string sFirst(TEXT24);
    const std::string sSecond(OTHER24);
    for (auto _ : oState)
    {
        std::string sString = absl::StrCat(sFirst, sSecond);
        Touch(sString);
    }
}

BENCH("string/replace4Ksame", "absl::StrReplaceAll")
{
    std::string sString = TextToReplace(4096);
    const char* szOld = OLD_WORD;
    const char* szNew = SAME_WORD;
    for (auto _ : oState)
    {
        absl::StrReplaceAll({{szOld, szNew}}, &sString);
        Touch(sString);
        std::swap(szOld, szNew);
    }
}

BENCH("string/replace4Kgrow", "absl::StrReplaceAll")
{
    std::string sText = TextToReplace(4096);
    for (auto _ : oState)
    {
        Touch(sText);
        std::string sString = absl::StrReplaceAll(sText, {{OLD_WORD, LONG_WORD}});
        Touch(sString);
    }
}

BENCH("string/split1K", "absl::StrSplit")
{
    std::string sText = TextToSplit(1024);
    for (auto _ : oState)
    {
        Touch(sText);
        std::vector<std::string> aParts = absl::StrSplit(sText, SEPARATOR);
        Touch(aParts);
    }
}

BENCH("string/tolower1K", "absl::AsciiStrToLower")
{
    const std::string sText = MixedText(1024);
    std::string sString = sText;
    for (auto _ : oState)
    {
        std::memcpy(sString.data(), sText.data(), sText.size());
        absl::AsciiStrToLower(&sString);
        Touch(sString);
    }
}

BENCH("string/icompare24", "absl::EqualsIgnoreCase")
{
    std::string sFirst(TEXT24);
    std::string sSecond(UPPER24);
    for (auto _ : oState)
    {
        Touch(sFirst);
        Use(absl::EqualsIgnoreCase(sFirst, sSecond));
    }
}

BENCH("string/intparse7", "absl::SimpleAtoi")
{
    std::string sNumber(NUMBER7);
    for (auto _ : oState)
    {
        Touch(sNumber);
        int nNumber = 0;
        Use(absl::SimpleAtoi(sNumber, &nNumber));
        Use(nNumber);
    }
}

BENCH("string/doubleparse", "absl::SimpleAtod")
{
    std::string sNumber(NUMBER_DOUBLE);
    for (auto _ : oState)
    {
        Touch(sNumber);
        double dNumber = 0;
        Use(absl::SimpleAtod(sNumber, &dNumber));
        Use(dNumber);
    }
}

BENCH("string/format_sds", "absl::StrCat")
{
    for (auto _ : oState)
    {
        std::string sString = absl::StrCat(Hide("catalogue"), " has ", Hide(4711), " parts of ", Hide("the library"));
        Touch(sString);
    }
}

BENCH("string/format_sds", "absl::StrFormat")
{
    for (auto _ : oState)
    {
        std::string sString =
            absl::StrFormat("%s has %d parts of %s", Hide("catalogue"), Hide(4711), Hide("the library"));
        Touch(sString);
    }
}

BENCH("string/format_f", "absl::StrFormat")
{
    for (auto _ : oState)
    {
        std::string sString = absl::StrFormat("%f", Hide(NUMBER_FIXED));
        Touch(sString);
    }
}

BENCH("string/begins+ends", "absl")
{
    std::string sString = TextWithEnds();
    const std::string sPrefix(PREFIX8);
    const std::string sSuffix(SUFFIX8);
    for (auto _ : oState)
    {
        Touch(sString);
        Use(absl::StartsWith(sString, sPrefix));
        Use(absl::EndsWith(sString, sSuffix));
    }
}

BENCH("registry/lookup200", "absl::flat_hash_map")
{
    const std::vector<std::string> aNames = ClassNames(NUM_CLASSES);
    absl::flat_hash_map<std::string, const std::string*> oMap;
    for (const std::string& sName : aNames)
        oMap.emplace(sName, &sName);
    std::size_t nName = 0;
    for (auto _ : oState)
    {
        Use(oMap.find(absl::string_view(aNames[nName].c_str()))->second);
        nName = (nName + 1) % NUM_CLASSES;
    }
}
