#include <TestHost/TOVTestSelection.h>

#include <TestHost/TOVTestEventListener.h>
#include <TestHost/TOVTestReport.h>
#include <TestHost/TOVTestSystem.h>

#include <Test/TOVTestHooks.h>
#include <Test/TOVTestSuite.h>
#include <Test/TOVTestTracker.h>
#include <TestSuites/TOVTestSuiteNames.h>

#include <algorithm>
#include <functional>
#include <random>
#include <stdexcept>
#include <tuple>

namespace TOVTestHost
{
namespace
{
// The suite that the runner runs in place of the real one.
class CChosenSuite : public TOVTest::CTOVTestSuite
{
public:
    void Startup() override { m_pReal->Startup(); }
    void Closedown() override
    {
        m_pReal->Closedown();
        m_oEvents.OnCloseCase();
        if (m_bFailFast && TOVTest::CTOVTestTracker::Instance().GetNumTotalFailedTests() > 0)
            m_bStopped = true;
    }
    long GetNumTestCases() const override { return m_bStopped ? 0 : static_cast<long>(m_aCases.size()); }
    TOVTest::CTOVTestCase& GetTestCase(long lIndex) const override
    {
        return m_pReal->GetTestCase(m_aCases.at(static_cast<std::size_t>(lIndex)));
    }
    const char* GetDescription() const override { return m_pReal->GetDescription(); }
    const char* GetFileName() const override { return m_pReal->GetFileName(); }
    unsigned long GetLine() const override { return m_pReal->GetLine(); }

    CChosenSuite(std::unique_ptr<TOVTest::CTOVTestSuite> pReal, std::vector<long> aCases, ITOVTestEvents& oEvents,
                 bool bFailFast, bool& bStopped)
        : m_pReal(std::move(pReal)), m_aCases(std::move(aCases)), m_oEvents(oEvents), m_bFailFast(bFailFast),
          m_bStopped(bStopped)
    {
    }

private:
    const std::unique_ptr<TOVTest::CTOVTestSuite> m_pReal;
    const std::vector<long> m_aCases;
    ITOVTestEvents& m_oEvents;
    const bool m_bFailFast;
    bool& m_bStopped;
};

// Shuffles in the same way on every system, which the standard library does not promise.
template<class T> void Shuffle(std::vector<T>& aElements, std::mt19937& oRandom)
{
    for (std::size_t nLeft = aElements.size(); nLeft > 1; --nLeft)
        std::swap(aElements[nLeft - 1], aElements[oRandom() % nLeft]);
}

// Holds patterns, and whether each has matched a case.
class CPatterns
{
public:
    explicit CPatterns(const std::vector<std::string>& aPatterns)
        : m_aPatterns(aPatterns), m_aUsed(aPatterns.size(), false)
    {
    }

    bool Match(const std::string& sSuite, const std::string& sCase)
    {
        bool bMatched = false;
        const std::string sName = sSuite + "." + sCase;
        for (std::size_t n = 0; n < m_aPatterns.size(); ++n)
            if (MatchesPattern(sSuite, m_aPatterns[n]) || MatchesPattern(sName, m_aPatterns[n]))
                bMatched = m_aUsed[n] = true;
        return bMatched;
    }

    void DemandThatAllMatched() const
    {
        for (std::size_t n = 0; n < m_aPatterns.size(); ++n)
            if (!m_aUsed[n])
                throw std::runtime_error("no case matches " + m_aPatterns[n]);
    }

private:
    const std::vector<std::string>& m_aPatterns;
    std::vector<bool> m_aUsed;
};
} // namespace

// A registered suite with all its cases.
struct CTOVTestSelection::sSuite
{
    const char* szName;
    long lGroup;
    bool bOfLibrary;
    TOVTest::ITOVTestSuiteCreator* pCreator;
    sPlannedSuite oSuite;
};

// Creates the suite that runs in place of the real one. Once the run is stopped, it creates none.
class CTOVTestSelection::CChosenCreator final : public TOVTest::ITOVTestSuiteCreator
{
public:
    TOVTest::CTOVTestSuite* New() override
    {
        if (m_bStopped)
            return nullptr;
        std::unique_ptr<TOVTest::CTOVTestSuite> pReal(m_oReal.New());
        if (pReal == nullptr)
            return nullptr;
        const std::vector<long> aCases(m_aCases.begin() + static_cast<std::ptrdiff_t>(m_nStart), m_aCases.end());
        return new CChosenSuite(std::move(pReal), aCases, m_oEvents, m_bFailFast, m_bStopped);
    }

    CChosenCreator(TOVTest::ITOVTestSuiteCreator& oReal, const std::vector<long>& aCases, ITOVTestEvents& oEvents,
                   bool bFailFast, bool& bStopped)
        : m_oReal(oReal), m_aCases(aCases), m_nStart(0), m_oEvents(oEvents), m_bFailFast(bFailFast),
          m_bStopped(bStopped)
    {
    }

    void StartAt(std::size_t nCase) { m_nStart = std::min(nCase, m_aCases.size()); }

private:
    TOVTest::ITOVTestSuiteCreator& m_oReal;
    const std::vector<long> m_aCases;
    std::size_t m_nStart;
    ITOVTestEvents& m_oEvents;
    const bool m_bFailFast;
    bool& m_bStopped;
};

bool MatchesPattern(const std::string& sText, const std::string& sPattern)
{
    constexpr std::size_t NONE = std::string::npos;
    std::size_t nText = 0;
    std::size_t nPattern = 0;
    std::size_t nStar = NONE; // the place after the last * seen; nStarText is the place in the text at that time
    std::size_t nStarText = 0;
    while (nText < sText.size())
    {
        if (nPattern < sPattern.size() && sPattern[nPattern] == '*')
        {
            nStar = ++nPattern;
            nStarText = nText;
        }
        else if (nPattern < sPattern.size() && (sPattern[nPattern] == '?' || sPattern[nPattern] == sText[nText]))
        {
            ++nPattern;
            ++nText;
        }
        else if (nStar != NONE)
        {
            nPattern = nStar;
            nText = ++nStarText;
        }
        else
        {
            return false;
        }
    }
    return sPattern.find_first_not_of('*', nPattern) == NONE;
}

// Returns whether a suite with this key is one of the library's own.
static bool IsNameOfLibrary(const char* szName)
{
    if constexpr (TOV_IS_STATIC)
    {
        // The program is a single module, in which the library's keys stand together.
        const char* const szFirst = s_oTestSuiteNames.szContainers;
        return !std::less<>()(szName, szFirst) && std::less<>()(szName, szFirst + sizeof(s_oTestSuiteNames));
    }
    else
    {
        // The address of a text in the library identifies the library's module.
        return StandInOneModule(szName, TOVTest::CTOVTestSuite::Null().TOVTest::CTOVTestSuite::GetDescription());
    }
}

CTOVTestSelection::CTOVTestSelection() : m_lGroups(0), m_bChosen(false), m_bStopped(false)
{
    AddGroup();
}

CTOVTestSelection::~CTOVTestSelection()
{
    if (m_bChosen)
        GetCreatorMapDirect().swap(m_aReal);
}

long CTOVTestSelection::AddGroup()
{
    long lAdded = 0;
    for (const auto& oEntry : GetCreatorMapDirect())
    {
        const char* szName = oEntry.first;
        const bool bKnown = std::any_of(m_aGroupOfName.begin(), m_aGroupOfName.end(),
                                        [&](const auto& oKnown) { return oKnown.first == szName; });
        if (!bKnown)
        {
            m_aGroupOfName.emplace_back(szName, m_lGroups);
            ++lAdded;
        }
    }
    ++m_lGroups;
    return lAdded;
}

std::vector<CTOVTestSelection::sSuite> CTOVTestSelection::GetSuites(bool bAll) const
{
    std::vector<sSuite> aSuites;
    for (const auto& oName : m_aGroupOfName)
    {
        TOVTest::ITOVTestSuiteCreator* pCreator = GetCreatorMapDirect().at(oName.first);
        const std::unique_ptr<TOVTest::CTOVTestSuite> pSuite(pCreator->New());
        if (pSuite == nullptr)
            continue;
        sSuite oSuite = {oName.first, oName.second, IsNameOfLibrary(oName.first), pCreator, {PlaceOf(*pSuite), {}}};
        for (long lCase = 0; lCase < pSuite->GetNumTestCases(); ++lCase)
            oSuite.oSuite.aCases.push_back(PlaceOf(pSuite->GetTestCase(lCase)));
        aSuites.push_back(oSuite);
    }

    const auto IsOfLibrary = [](const sSuite& oSuite) { return oSuite.bOfLibrary; };
    if (!bAll && !std::all_of(aSuites.begin(), aSuites.end(), IsOfLibrary))
        aSuites.erase(std::remove_if(aSuites.begin(), aSuites.end(), IsOfLibrary), aSuites.end());
    const auto Order = [](const sSuite& oSuite) {
        const sTestPlace& oPlace = oSuite.oSuite.oPlace;
        return std::tie(oSuite.lGroup, oPlace.sFile, oPlace.ulLine, oPlace.sDescription);
    };
    std::stable_sort(aSuites.begin(), aSuites.end(),
                     [&](const sSuite& oOne, const sSuite& oOther) { return Order(oOne) < Order(oOther); });
    return aSuites;
}

sTestPlan CTOVTestSelection::Choose(const sTestChoice& oChoice, ITOVTestEvents& oEvents)
{
    CPatterns oFilters(oChoice.aFilters);
    CPatterns oExcludes(oChoice.aExcludes);
    const bool bPatterns = !oChoice.aFilters.empty() || !oChoice.aExcludes.empty();
    sTestPlan oPlan = {{}, oChoice.lRuns};
    std::vector<std::string> aNames;
    std::vector<sSuite> aSuites = GetSuites(oChoice.bAll);
    std::mt19937 oRandom(static_cast<std::mt19937::result_type>(oChoice.ulSeed));
    if (oChoice.bShuffle)
    {
        oPlan.llSeed = static_cast<long long>(oChoice.ulSeed);
        Shuffle(aSuites, oRandom);
    }
    for (const sSuite& oSuite : aSuites)
    {
        const std::string& sDescription = oSuite.oSuite.oPlace.sDescription;
        std::vector<long> aCases;
        for (std::size_t n = 0; n < oSuite.oSuite.aCases.size(); ++n)
        {
            const sTestPlace& oCase = oSuite.oSuite.aCases[n];
            const bool bWanted = oFilters.Match(sDescription, oCase.sDescription) || oChoice.aFilters.empty();
            if (!oExcludes.Match(sDescription, oCase.sDescription) && bWanted)
                aCases.push_back(static_cast<long>(n));
        }
        if (bPatterns && aCases.empty())
            continue;
        if (oChoice.bShuffle)
            Shuffle(aCases, oRandom);
        sPlannedSuite oChosen = {oSuite.oSuite.oPlace, {}};
        for (const long lCase : aCases)
            oChosen.aCases.push_back(oSuite.oSuite.aCases[static_cast<std::size_t>(lCase)]);
        oPlan.aSuites.push_back(oChosen);
        aNames.push_back(oSuite.szName);
        m_aCreators.push_back(
            std::make_shared<CChosenCreator>(*oSuite.pCreator, aCases, oEvents, oChoice.bFailFast, m_bStopped));
    }
    oFilters.DemandThatAllMatched();
    oExcludes.DemandThatAllMatched();
    if (CountPlannedCases(oPlan) == 0)
        throw std::runtime_error("there is no case to run");

    // The factory sorts by the addresses of the names. As the names are in one block, they keep this order.
    for (const std::string& sName : aNames)
    {
        m_aStartsOfNames.push_back(m_sNames.size());
        m_sNames += sName + '\0';
    }
    GetCreatorMapDirect().swap(m_aReal);
    m_bChosen = true;
    StartAt(0, 0);
    return oPlan;
}

void CTOVTestSelection::StartAt(std::size_t nSuite, std::size_t nCase)
{
    TOVTest::tCreatorMap& aCreators = GetCreatorMapDirect();
    aCreators.clear();
    for (std::size_t n = nSuite; n < m_aCreators.size(); ++n)
    {
        m_aCreators[n]->StartAt(n == nSuite ? nCase : 0);
        aCreators.emplace(m_sNames.c_str() + m_aStartsOfNames[n], m_aCreators[n].get());
    }
}

bool CTOVTestSelection::IsStopped() const
{
    return m_bStopped;
}
} // namespace TOVTestHost
