// Declares MatchesPattern and CTOVTestSelection, which select the cases that run.
#pragma once

#include <Test/TOVTestSuiteFactory.h>
#include <TestHost/TOVTestEvents.h>

#include <memory>

namespace TOVTestHost
{
// Returns whether the pattern matches the whole text, case-sensitively: * matches any number of characters, and ? one.
// There is no escape for these two characters, and none is needed, as ? matches both.
bool MatchesPattern(const std::string& sText, const std::string& sPattern);

struct sTestChoice
{
    // The patterns are matched against "Suite description.Case description", and against the suite's description alone.
    std::vector<std::string> aFilters;  // empty: all cases are selected
    std::vector<std::string> aExcludes; // these override the filters
    bool bAll;                          // true: the library's own suites run even if there are others
    long lRuns;
    bool bShuffle = false; // the suites, and the cases of each suite, run in an order that the seed determines
    unsigned long ulSeed = 0;
    bool bFailFast = false; // nothing runs after the first case that fails
};

// Makes the runner, which runs everything, run the chosen cases only. While this object exists, the factory's map
// contains creators of this object, whose suites have the chosen cases of the real suites. The suites are sorted by
// their groups, and in a group by file and line. The main program must export the map (Test/TOVTestHost.h).
class CTOVTestSelection
{
public:
    // Makes the first group, of the suites that are already registered.
    CTOVTestSelection();
    // Restores the map.
    ~CTOVTestSelection();
    CTOVTestSelection(const CTOVTestSelection&) = delete;
    CTOVTestSelection& operator=(const CTOVTestSelection&) = delete;

    // Makes a group of the suites that were registered after the last group was made. Returns the number of these
    // suites.
    long AddGroup();

    // Puts the chosen cases into the map and returns the plan. The library's own suites are omitted if there are
    // others, unless oChoice.bAll; suites without a chosen case are omitted if there are patterns. Throws
    // std::runtime_error if a pattern matches no case, and if no case remains. oEvents, which is not owned, receives
    // OnCloseCase.
    sTestPlan Choose(const sTestChoice& oChoice, ITOVTestEvents& oEvents);

    // Makes the next run begin at this suite and case of the plan. A suite can begin after its last case: then none of
    // its cases run.
    void StartAt(std::size_t nSuite, std::size_t nCase);

    // Returns whether a case has failed and nothing else will run.
    bool IsStopped() const;

private:
    struct sSuite;
    class CChosenCreator;

    std::vector<sSuite> GetSuites(bool bAll) const;

    long m_lGroups;
    std::vector<std::pair<const char*, long>> m_aGroupOfName;
    TOVTest::tCreatorMap m_aReal;
    bool m_bChosen;
    std::vector<std::shared_ptr<CChosenCreator>> m_aCreators;
    std::string m_sNames;
    std::vector<std::size_t> m_aStartsOfNames;
    bool m_bStopped;
};
} // namespace TOVTestHost
