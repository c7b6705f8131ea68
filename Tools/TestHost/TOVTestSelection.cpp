#include <TestHost/TOVTestSelection.h>

#include <TestHost/TOVTestEventListener.h>
#include <TestHost/TOVTestReport.h>
#include <TestHost/TOVTestSystem.h>

#include <Test/TOVTestHooks.h>
#include <Test/TOVTestSuite.h>

#include <algorithm>
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
    }
    long GetNumTestCases() const override { return static_cast<long>(m_aCases.size()); }
    TOVTest::CTOVTestCase& GetTestCase(long lIndex) const override
    {
        return m_pReal->GetTestCase(m_aCases.at(static_cast<std::size_t>(lIndex)));
    }
    const char* GetDescription() const override { return m_pReal->GetDescription(); }
    const char* GetFileName() const override { return m_pReal->GetFileName(); }
    unsigned long GetLine() const override { return m_pReal->GetLine(); }

    CChosenSuite(std::unique_ptr<TOVTest::CTOVTestSuite> pReal, const std::vector<long>& aCases,
                 ITOVTestEvents& oEvents)
        : m_pReal(std::move(pReal)), m_aCases(aCases), m_oEvents(oEvents)
    {
    }

private:
    const std::unique_ptr<TOVTest::CTOVTestSuite> m_pReal;
    const std::vector<long> m_aCases;
    ITOVTestEvents& m_oEvents;
};

class CChosenCreator final : public TOVTest::ITOVTestSuiteCreator
{
public:
    TOVTest::CTOVTestSuite* New() override
    {
        std::unique_ptr<TOVTest::CTOVTestSuite> pReal(m_oReal.New());
        return pReal != nullptr ? new CChosenSuite(std::move(pReal), m_aCases, m_oEvents) : nullptr;
    }

    CChosenCreator(TOVTest::ITOVTestSuiteCreator& oReal, const std::vector<long>& aCases, ITOVTestEvents& oEvents)
        : m_oReal(oReal), m_aCases(aCases), m_oEvents(oEvents)
    {
    }

private:
    TOVTest::ITOVTestSuiteCreator& m_oReal;
    const std::vector<long> m_aCases;
    ITOVTestEvents& m_oEvents;
};

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

CTOVTestSelection::CTOVTestSelection() : m_lGroups(0), m_bChosen(false)
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
    // The address of a text in the library identifies the library's module.
    const char* szOfLibrary = TOVTest::CTOVTestSuite::Null().TOVTest::CTOVTestSuite::GetDescription();
    std::vector<sSuite> aSuites;
    for (const auto& oName : m_aGroupOfName)
    {
        TOVTest::ITOVTestSuiteCreator* pCreator = GetCreatorMapDirect().at(oName.first);
        const std::unique_ptr<TOVTest::CTOVTestSuite> pSuite(pCreator->New());
        if (pSuite == nullptr)
            continue;
        sSuite oSuite = {
            oName.first, oName.second, StandInOneModule(oName.first, szOfLibrary), pCreator, {PlaceOf(*pSuite), {}}};
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
    for (const sSuite& oSuite : GetSuites(oChoice.bAll))
    {
        const std::string& sDescription = oSuite.oSuite.oPlace.sDescription;
        sPlannedSuite oChosen = {oSuite.oSuite.oPlace, {}};
        std::vector<long> aCases;
        for (std::size_t n = 0; n < oSuite.oSuite.aCases.size(); ++n)
        {
            const sTestPlace& oCase = oSuite.oSuite.aCases[n];
            const bool bWanted = oFilters.Match(sDescription, oCase.sDescription) || oChoice.aFilters.empty();
            if (oExcludes.Match(sDescription, oCase.sDescription) || !bWanted)
                continue;
            aCases.push_back(static_cast<long>(n));
            oChosen.aCases.push_back(oCase);
        }
        if (bPatterns && aCases.empty())
            continue;
        oPlan.aSuites.push_back(oChosen);
        aNames.push_back(oSuite.szName);
        m_aCreators.push_back(std::make_shared<CChosenCreator>(*oSuite.pCreator, aCases, oEvents));
    }
    oFilters.DemandThatAllMatched();
    oExcludes.DemandThatAllMatched();
    if (CountPlannedCases(oPlan) == 0)
        throw std::runtime_error("there is no case to run");

    // The factory sorts by the addresses of the names. As the names are in one block, they keep this order.
    std::vector<std::size_t> aStarts;
    for (const std::string& sName : aNames)
    {
        aStarts.push_back(m_sNames.size());
        m_sNames += sName + '\0';
    }
    for (std::size_t n = 0; n < aStarts.size(); ++n)
        m_aReal.emplace(m_sNames.c_str() + aStarts[n], m_aCreators[n].get());
    GetCreatorMapDirect().swap(m_aReal);
    m_bChosen = true;
    return oPlan;
}
} // namespace TOVTestHost
