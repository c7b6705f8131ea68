// Rows of text in the standard library.

#include <Bench.h>
#include <Inputs.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <utility>

using namespace Inputs;

namespace
{
void Construct(benchmark::State& oState, const char* szText)
{
    szText = Hide(szText);
    for (auto _ : oState)
    {
        std::string sString(szText);
        Touch(sString);
    }
}

template<class TString> void Copy(benchmark::State& oState, TString sSource)
{
    for (auto _ : oState)
    {
        Touch(sSource);
        TString sString(sSource);
        Touch(sString);
    }
}

template<class TString> void Append(benchmark::State& oState)
{
    for (auto _ : oState)
    {
        TString sString;
        for (int nCharacter = 0; nCharacter < 1000; ++nCharacter)
            sString += 'x';
        Touch(sString);
    }
    oState.SetItemsProcessed(oState.iterations() * 1000);
}

template<class TString> void Concat(benchmark::State& oState, const TString& sFirst, const TString& sSecond)
{
    for (auto _ : oState)
    {
        TString sString;
        sString.reserve(sFirst.size() + sSecond.size());
        sString += sFirst;
        sString += sSecond;
        Touch(sString);
    }
}

template<class TString, class TSearched> void Find(benchmark::State& oState, TString sString, TSearched sSearched)
{
    for (auto _ : oState)
    {
        Touch(sString);
        Use(sString.find(sSearched));
    }
}

template<class TString> void ReplaceInPlace(benchmark::State& oState, TString sString, TString sOld, TString sNew)
{
    for (auto _ : oState)
    {
        for (std::size_t nFound = sString.find(sOld); nFound != TString::npos;
             nFound = sString.find(sOld, nFound + sNew.size()))
        {
            sString.replace(nFound, sOld.size(), sNew);
        }
        Touch(sString);
        std::swap(sOld, sNew);
    }
}

template<class TString> void ReplaceGrowing(benchmark::State& oState, TString sText, TString sOld, TString sNew)
{
    for (auto _ : oState)
    {
        Touch(sText);
        TString sString;
        std::size_t nStart = 0;
        for (std::size_t nFound = sText.find(sOld); nFound != TString::npos; nFound = sText.find(sOld, nStart))
        {
            sString.append(sText, nStart, nFound - nStart).append(sNew);
            nStart = nFound + sOld.size();
        }
        sString.append(sText, nStart, TString::npos);
        Touch(sString);
    }
}

template<class TString>
void Split(benchmark::State& oState, const TString& sText, typename TString::value_type cSeparator)
{
    for (auto _ : oState)
    {
        std::vector<TString> aParts;
        std::size_t nStart = 0;
        for (std::size_t nFound = sText.find(cSeparator); nFound != TString::npos;
             nFound = sText.find(cSeparator, nStart))
        {
            aParts.push_back(sText.substr(nStart, nFound - nStart));
            nStart = nFound + 1;
        }
        aParts.push_back(sText.substr(nStart));
        Touch(aParts);
    }
}

std::u16string Wide(const std::string& sText)
{
    return std::u16string(sText.begin(), sText.end());
}
} // namespace

BENCH("string/construct3", "std::string")
{
    Construct(oState, TEXT3);
}

BENCH("string/construct24", "std::string")
{
    Construct(oState, TEXT24);
}

BENCH("string/construct200", "std::string")
{
    Construct(oState, Text200().c_str());
}

BENCH("string/construct24 16-bit", "std::u16string")
{
    const std::u16string sText = Wide(TEXT24);
    const char16_t* const szText = Hide(sText.c_str());
    for (auto _ : oState)
    {
        std::u16string sString(szText);
        Touch(sString);
    }
}

BENCH("string/copy24", "std::string")
{
    Copy(oState, std::string(TEXT24));
}

BENCH("string/copy200", "std::string")
{
    Copy(oState, Text200());
}

BENCH("string/copy24 16-bit", "std::u16string")
{
    Copy(oState, Wide(TEXT24));
}

BENCH("string/copy200 wide", "std::u16string")
{
    Copy(oState, Wide(Text200()));
}

BENCH("string/append1x1000", "std::string")
{
    Append<std::string>(oState);
}

BENCH("string/append1x1000 wide", "std::u16string")
{
    Append<std::u16string>(oState);
}

BENCH("string/concat24+24", "std::string reserve")
{
    Concat(oState, std::string(TEXT24), std::string(OTHER24));
}

BENCH("string/concat24+24", "std::string +")
{
    const std::string sFirst(TEXT24);
    const std::string sSecond(OTHER24);
    for (auto _ : oState)
    {
        std::string sString = sFirst + sSecond;
        Touch(sString);
    }
}

BENCH("string/concat24+24 16-bit", "std::u16string reserve")
{
    Concat(oState, Wide(TEXT24), Wide(OTHER24));
}

BENCH("string/findsub1K", "std::string::find")
{
    Find(oState, TextWithNeedle(1024), std::string(NEEDLE));
}

BENCH("string/findsub1K 16-bit", "std::u16string::find")
{
    Find(oState, Wide(TextWithNeedle(1024)), Wide(NEEDLE));
}

BENCH("string/findchar1K", "std::string::find")
{
    Find(oState, TextWithCharacter(1024), NEEDLE_CHARACTER);
}

BENCH("string/findchar1K wide", "std::u16string::find")
{
    Find(oState, Wide(TextWithCharacter(1024)), static_cast<char16_t>(NEEDLE_CHARACTER));
}

BENCH("string/replace4Ksame", "std find+replace in place")
{
    ReplaceInPlace<std::string>(oState, TextToReplace(4096), OLD_WORD, SAME_WORD);
}

BENCH("string/replace4Ksame wide", "std find+replace in place")
{
    ReplaceInPlace<std::u16string>(oState, Wide(TextToReplace(4096)), Wide(OLD_WORD), Wide(SAME_WORD));
}

BENCH("string/replace4Kgrow", "std find+append")
{
    ReplaceGrowing<std::string>(oState, TextToReplace(4096), OLD_WORD, LONG_WORD);
}

BENCH("string/replace4Kgrow wide", "std find+append")
{
    ReplaceGrowing<std::u16string>(oState, Wide(TextToReplace(4096)), Wide(OLD_WORD), Wide(LONG_WORD));
}

BENCH("string/split1K", "std find+substr")
{
    Split(oState, TextToSplit(1024), SEPARATOR);
}

BENCH("string/split1K wide", "std find+substr")
{
    Split(oState, Wide(TextToSplit(1024)), static_cast<char16_t>(SEPARATOR));
}

BENCH("string/tolower1K", "std::tolower")
{
    const std::string sText = MixedText(1024);
    std::string sString = sText;
    for (auto _ : oState)
    {
        std::memcpy(sString.data(), sText.data(), sText.size());
        for (char& cCharacter : sString)
            cCharacter = static_cast<char>(std::tolower(static_cast<unsigned char>(cCharacter)));
        Touch(sString);
    }
}

BENCH("string/intparse7", "std::from_chars")
{
    std::string sString(NUMBER7);
    for (auto _ : oState)
    {
        Touch(sString);
        int nNumber = 0;
        std::from_chars(sString.data(), sString.data() + sString.size(), nNumber);
        Use(nNumber);
    }
}

BENCH("string/intparse7", "std::stoi")
{
    std::string sString(NUMBER7);
    for (auto _ : oState)
    {
        Touch(sString);
        Use(std::stoi(sString));
    }
}

BENCH("string/doubleparse", "std::from_chars")
{
    std::string sString(NUMBER_DOUBLE);
    for (auto _ : oState)
    {
        Touch(sString);
        double dNumber = 0;
        std::from_chars(sString.data(), sString.data() + sString.size(), dNumber);
        Use(dNumber);
    }
}

BENCH("string/format_f", "std::to_chars")
{
    for (auto _ : oState)
    {
        char szBuffer[100];
        const std::to_chars_result oResult =
            std::to_chars(szBuffer, szBuffer + sizeof(szBuffer), Hide(NUMBER_FIXED), std::chars_format::fixed, 6);
        std::string sString(szBuffer, oResult.ptr);
        Touch(sString);
    }
}

BENCH("string/begins+ends", "std::string::compare")
{
    std::string sString = TextWithEnds();
    const std::string sPrefix(PREFIX8);
    const std::string sSuffix(SUFFIX8);
    for (auto _ : oState)
    {
        Touch(sString);
        Use(sString.compare(0, sPrefix.size(), sPrefix) == 0);
        Use(sString.compare(sString.size() - sSuffix.size(), sSuffix.size(), sSuffix) == 0);
    }
}
