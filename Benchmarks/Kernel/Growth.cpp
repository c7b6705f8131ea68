// How the work grows with its size: texts, arrays, classes, listeners, components of a path, and open files.
//
// A name is "growth/what|size". A series of texts ends early when a step takes so long that the next one would take
// minutes.

#include <Bench.h>
#include <BenchFile.h>
#include <Inputs.h>
#include <LogSetup.h>

#include <Debug/TOVDebug.h>
#include <File/TOVFile.h>
#include <Path/TOVPath.h>
#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBitArray.h>
#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <chrono>
#include <cstdio>
#include <initializer_list>
#include <memory>

using namespace Inputs;

namespace
{
using tStep = void (*)(benchmark::State& oState, int nSize);
using tSizes = std::initializer_list<int>;

constexpr tSizes TEXT_LENGTHS = {10, 100, 1000, 10000, 100000, 1000000};

bool Register(const char* szWhat, tSizes aSizes, tStep pfStep)
{
    for (const int nSize : aSizes)
    {
        const std::string sName = std::string("growth/") + szWhat + "|" + std::to_string(nSize);
        benchmark::RegisterBenchmark(sName.c_str(),
                                     [pfStep, nSize](benchmark::State& oState) { pfStep(oState, nSize); });
    }
    return true;
}

void RegisterText(const char* szWhat, tSizes aSizes, tStep pfStep)
{
    constexpr double MAX_SECONDS = 0.5;

    const auto pEnded = std::make_shared<bool>(false);
    for (const int nSize : aSizes)
    {
        const std::string sName = std::string("growth/") + szWhat + "|" + std::to_string(nSize);
        benchmark::RegisterBenchmark(sName.c_str(), [pEnded, pfStep, nSize](benchmark::State& oState) {
            if (*pEnded)
            {
                oState.SkipWithError("too slow");
                return;
            }
            using tClock = std::chrono::steady_clock;
            const tClock::time_point oStart = tClock::now();
            pfStep(oState, nSize);
            const std::chrono::duration<double> oDuration = tClock::now() - oStart;
            *pEnded = oDuration.count() > MAX_SECONDS;
        });
    }
}
} // namespace

// Defines and registers a series. Its body measures with a loop over oState, for the size nSize.
#define SERIES(szWhat, aSizes)                                                                                         \
    SERIES_DEFINE(szWhat, aSizes, BENCH_JOIN(Step, __LINE__), BENCH_JOIN(s_bRegistered, __LINE__))
#define SERIES_DEFINE(szWhat, aSizes, function, registration)                                                          \
    static void function(benchmark::State& oState, int nSize);                                                         \
    [[maybe_unused]] static const bool registration = Register(szWhat, aSizes, function);                              \
    static void function(benchmark::State& oState, [[maybe_unused]] int nSize)

namespace
{
// The two widths of text, so that each series stands once for both.
struct sNarrow
{
    using tString = CTOVStringA;
    using tUnit = char;
};
struct sWide
{
    using tString = CTOVStringW;
    using tUnit = wchar_t;
};

template<class TWidth> typename TWidth::tString Make(const std::string& sText)
{
    return typename TWidth::tString(Units<typename TWidth::tUnit>(sText).data());
}

std::size_t Size(int nSize)
{
    return static_cast<std::size_t>(nSize);
}

// Every eighth character ends a hit.
std::string FullOfHits(int nSize)
{
    std::string sText;
    while (sText.size() < Size(nSize))
        sText += "needle, ";
    sText.resize(Size(nSize));
    return sText;
}

template<class TWidth> void FindLast(benchmark::State& oState, int nSize)
{
    auto oString = Make<TWidth>(nSize < 6 ? NEEDLE : Words(Size(nSize - 6)) + NEEDLE);
    const auto aNeedle = Units<typename TWidth::tUnit>(NEEDLE);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.Find(aNeedle.data()));
    }
}

template<class TWidth> void FindEach(benchmark::State& oState, int nSize)
{
    const auto oString = Make<TWidth>(FullOfHits(nSize));
    const auto aNeedle = Units<typename TWidth::tUnit>(NEEDLE);
    for (auto _ : oState)
    {
        int nHits = 0;
        for (int nFound = oString.Find(aNeedle.data()); nFound >= 0; nFound = oString.Find(aNeedle.data(), nFound + 1))
            ++nHits;
        Use(nHits);
    }
}

template<class TWidth> void Replace(benchmark::State& oState, int nSize, const char* szNew)
{
    const auto aText = Units<typename TWidth::tUnit>(FullOfHits(nSize));
    const auto aOld = Units<typename TWidth::tUnit>(NEEDLE);
    const auto aNew = Units<typename TWidth::tUnit>(szNew);
    for (auto _ : oState)
    {
        typename TWidth::tString oString;
        oString.Copy(aText.data(), nSize);
        Use(oString.Replace(aOld.data(), aNew.data()));
    }
}

template<class TWidth> void ReplaceSame(benchmark::State& oState, int nSize)
{
    Replace<TWidth>(oState, nSize, "thread");
}

template<class TWidth> void ReplaceGrowing(benchmark::State& oState, int nSize)
{
    Replace<TWidth>(oState, nSize, "haystack");
}

template<class TWidth> void ReplaceShrinking(benchmark::State& oState, int nSize)
{
    Replace<TWidth>(oState, nSize, "pin");
}

template<class TWidth> void Split(benchmark::State& oState, int nSize)
{
    const auto oString = Make<TWidth>(TextToSplit(Size(nSize)));
    for (auto _ : oState)
    {
        CTOVArray<typename TWidth::tString> oParts;
        Use(oString.Split(oParts, SEPARATOR));
    }
}

template<class TWidth> void Lower(benchmark::State& oState, int nSize)
{
    auto oString = Make<TWidth>(MixedText(Size(nSize)));
    for (auto _ : oState)
    {
        oString.MakeLower();
        benchmark::ClobberMemory();
    }
}

template<class TWidth> void CompareNoCase(benchmark::State& oState, int nSize)
{
    auto oFirst = Make<TWidth>(Text(Size(nSize)));
    auto oSecond = Make<TWidth>(Text(Size(nSize)));
    for (auto _ : oState)
    {
        Touch(oFirst);
        Use(oFirst.CompareNoCase(oSecond.GetString()));
    }
}

template<class TWidth> void EndsWith(benchmark::State& oState, int nSize)
{
    auto oString = Make<TWidth>(FullOfHits(nSize));
    const auto oNeedle = Make<TWidth>(NEEDLE);
    for (auto _ : oState)
    {
        Touch(oString);
        Use(oString.EndsWith(oNeedle));
    }
}

template<class TWidth> void Format(benchmark::State& oState, int nSize)
{
    const auto oText = Make<TWidth>(Words(Size(nSize)));
    const auto aFormat = Units<typename TWidth::tUnit>("%s");
    for (auto _ : oState)
    {
        typename TWidth::tString oString;
        oString.Format(aFormat.data(), oText.GetString());
        Touch(oString);
    }
}

template<class TWidth> void AppendInRoom(benchmark::State& oState, int nSize)
{
    for (auto _ : oState)
    {
        typename TWidth::tString oString;
        oString.GetBuffer(nSize);
        oString.ReleaseBuffer(0);
        for (int nCharacter = 0; nCharacter < nSize; ++nCharacter)
            oString += static_cast<typename TWidth::tUnit>('x');
        Touch(oString);
    }
}

template<class TWidth> bool RegisterTexts(const char* szWidth)
{
    const auto fnRegister = [szWidth](const char* szWhat, tStep pfStep) {
        RegisterText((std::string(szWidth) + " text: " + szWhat).c_str(), TEXT_LENGTHS, pfStep);
    };
    fnRegister("Find", FindLast<TWidth>);
    fnRegister("loop of Find", FindEach<TWidth>);
    fnRegister("Replace, same length", ReplaceSame<TWidth>);
    fnRegister("Replace, growing", ReplaceGrowing<TWidth>);
    fnRegister("Replace, shrinking", ReplaceShrinking<TWidth>);
    fnRegister("Split", Split<TWidth>);
    fnRegister("MakeLower", Lower<TWidth>);
    fnRegister("CompareNoCase", CompareNoCase<TWidth>);
    fnRegister("EndsWith, full of hits", EndsWith<TWidth>);
    fnRegister("Format %s", Format<TWidth>);
    fnRegister("+= in room", AppendInRoom<TWidth>);
    return true;
}

[[maybe_unused]] const bool s_bNarrow = RegisterTexts<sNarrow>("narrow");
[[maybe_unused]] const bool s_bWide = RegisterTexts<sWide>("wide");

constexpr tSizes ARRAY_SIZES = {10, 100, 1000, 10000, 100000, 1000000};

int CompareNumbers(const int& nFirst, const int& nSecond)
{
    return nFirst < nSecond ? -1 : (nFirst > nSecond ? 1 : 0);
}
} // namespace

SERIES("array: Add", ARRAY_SIZES)
{
    for (auto _ : oState)
    {
        CTOVArray<int> oArray;
        for (int nNumber = 0; nNumber < nSize; ++nNumber)
            oArray.Add(nNumber);
        Touch(oArray);
    }
}

SERIES("array: copy", ARRAY_SIZES)
{
    CTOVArray<int> oArray;
    oArray.Resize(nSize);
    for (auto _ : oState)
    {
        CTOVArray<int> oCopy(oArray);
        Touch(oCopy);
    }
}

SERIES("array: InsertAt 0", ARRAY_SIZES)
{
    CTOVArray<int> oArray;
    oArray.Resize(nSize);
    for (auto _ : oState)
    {
        oArray.InsertAt(0, 1);
        oArray.RemoveAt(nSize);
    }
}

SERIES("array: Sort", ARRAY_SIZES)
{
    CTOVArray<int> oSource;
    for (const int nNumber : RandomNumbers(nSize))
        oSource.Add(nNumber);
    CTOVArray<int> oArray;
    for (auto _ : oState)
    {
        oArray = oSource;
        oArray.Sort(&CompareNumbers);
        Touch(oArray);
    }
}

SERIES("bits: And", ARRAY_SIZES)
{
    CTOVBitArray oFirst(nSize);
    const CTOVBitArray oSecond(nSize);
    for (auto _ : oState)
    {
        oFirst.And(oSecond);
        Touch(oFirst);
    }
}

SERIES("classes: look-up", (tSizes{10, 100, 1000, 10000}))
{
    // The classes of one step stay for the next ones, and until the process ends.
    static const std::vector<std::string> s_aNames = ClassNames(10000);
    static std::size_t s_nClasses = 0;
    const CWithoutShippedListener oWithout; // each class tells of itself
    for (; s_nClasses < Size(nSize); ++s_nClasses)
        static_cast<void>(new CTOVClass(s_aNames[s_nClasses].c_str()));

    std::size_t nClass = 0;
    for (auto _ : oState)
    {
        Use(&TOVRuntimeClass(s_aNames[nClass].c_str()));
        nClass = (nClass + 7919) % s_nClasses;
    }
}

SERIES("listeners: log line", (tSizes{1, 2, 4, 8, 16, 32, 64, 128}))
{
    const CWithoutShippedListener oWithout;
    const std::vector<CWithListener<CSilentListener>> aListeners(Size(nSize));
    for (auto _ : oState)
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "the catalogue is complete");
}

namespace
{
constexpr tSizes COMPONENTS = {1, 10, 100, 1000, 10000};

std::string PathText(int nComponents)
{
    std::string sPath;
    for (int nComponent = 0; nComponent < nComponents; ++nComponent)
        sPath += "/component";
    return sPath;
}
} // namespace

SERIES("path: walk", COMPONENTS)
{
    const CTOVPath oPath(PathText(nSize).c_str());
    for (auto _ : oState)
    {
        CTOVStringA oComponent;
        long lPosition = 0;
        for (bool bFound = oPath.GetFirstComponent(oComponent, lPosition); bFound;
             bFound = oPath.GetNextComponent(oComponent, lPosition))
        {
            Touch(oComponent);
        }
    }
}

SERIES("path: Compare", COMPONENTS)
{
    const CTOVPath oFirst(PathText(nSize).c_str());
    const CTOVPath oSecond(PathText(nSize).c_str());
    for (auto _ : oState)
        Use(oFirst.Compare(oSecond));
}

SERIES("path: IsSame", COMPONENTS)
{
    const CTOVPath oFirst(PathText(nSize).c_str());
    const CTOVPath oSecond(PathText(nSize).c_str());
    for (auto _ : oState)
        Use(oFirst.IsSame(oSecond, 0, false, false));
}

SERIES("path: Strip", COMPONENTS)
{
    const CTOVPath oPath((PathText(nSize) + "/file").c_str());
    const CTOVPath oBase(PathText(nSize).c_str());
    for (auto _ : oState)
    {
        CTOVPath oRest(oPath.Strip(oBase));
        Touch(oRest);
    }
}

SERIES("path: Parent", COMPONENTS)
{
    const CTOVPath oPath((PathText(nSize) + "/file").c_str());
    for (auto _ : oState)
    {
        CTOVPath oParent(oPath.Parent());
        Touch(oParent);
    }
}

namespace
{
constexpr tSizes OPEN_FILES = {1, 10, 100, 900};

// Files that stay open while a step is measured.
class COpenFiles
{
public:
    explicit COpenFiles(int nFiles) : m_sName(BenchFile("growth.numbers"))
    {
        CTOVFile oFile;
        oFile.Open(GetName(), ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary);
        const std::vector<int> aNumbers = RandomNumbers(1000);
        oFile.Write(aNumbers.data(), aNumbers.size() * sizeof(int));
        oFile.Close();
        for (int nFile = 0; nFile < nFiles; ++nFile)
        {
            m_aFiles.push_back(std::make_unique<CTOVFile>());
            m_aFiles.back()->Open(GetName(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
        }
    }
    ~COpenFiles()
    {
        m_aFiles.clear();
        std::remove(GetName());
    }
    COpenFiles(const COpenFiles&) = delete;
    COpenFiles& operator=(const COpenFiles&) = delete;

    const char* GetName() const { return m_sName.c_str(); }
    CTOVFile& GetLast() { return *m_aFiles.back(); }

private:
    std::string m_sName;
    std::vector<std::unique_ptr<CTOVFile>> m_aFiles;
};
} // namespace

SERIES("open files: open+close another", OPEN_FILES)
{
    const COpenFiles oFiles(nSize);
    for (auto _ : oState)
    {
        CTOVFile oFile;
        oFile.Open(oFiles.GetName(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
        oFile.Close();
    }
}

SERIES("open files: Read of the last", OPEN_FILES)
{
    COpenFiles oFiles(nSize);
    CTOVFile& oFile = oFiles.GetLast();
    int nRead = 0;
    for (auto _ : oState)
    {
        if (++nRead % 1000 == 0)
            oFile.Seek(0, TOVPlatform::TOVFile::eSeekOriginStart);
        int nNumber = 0;
        oFile.Read(&nNumber, sizeof(nNumber));
        Use(nNumber);
    }
}
