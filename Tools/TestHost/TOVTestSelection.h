// Which cases run: MatchesPattern, CTOVTestSelection.
#pragma once

#include <Test/TOVTestSuiteFactory.h>
#include <TestHost/TOVTestEvents.h>

#include <memory>

namespace TOVTestHost
{
// The whole text, case by case: * stands for any characters, ? for one. There is no way to mean these two themselves,
// and none is needed: ? fits both.
bool MatchesPattern(const std::string& sText, const std::string& sPattern);

struct sTestChoice
{
    // Against "Suite description.Case description", and against the suite's description alone.
    std::vector<std::string> aFilters;  // none: everything
    std::vector<std::string> aExcludes; // these win
    bool bAll;                          // the library's own suites also where there are others
    long lRuns;
};

// Has the runner, which runs everything, run chosen cases: while it lives, the factory's map holds creators of its own,
// whose suites offer the chosen cases of the real ones. The suites stand there by the order of their groups, and in a
// group by file and line. The main program exports the map (Test/TOVTestHost.h).
class CTOVTestSelection
{
public:
    // The suites that are registered by now are the first group.
    CTOVTestSelection();
    // Puts the map back.
    ~CTOVTestSelection();
    CTOVTestSelection(const CTOVTestSelection&) = delete;
    CTOVTestSelection& operator=(const CTOVTestSelection&) = delete;

    // Makes a group of the suites that have come since the last one. The number of them.
    long AddGroup();

    // The library's own suites are left out where there are others, unless all are wanted; suites without a chosen case
    // are left out where there are patterns. Throws std::runtime_error for a pattern that matches no case, and when no
    // case is left. The events hear when a case is closed; not owned.
    sTestPlan Choose(const sTestChoice& oChoice, ITOVTestEvents& oEvents);

private:
    struct sSuite;

    std::vector<sSuite> GetSuites(bool bAll) const;

    long m_lGroups;
    std::vector<std::pair<const char*, long>> m_aGroupOfName;
    TOVTest::tCreatorMap m_aReal;
    bool m_bChosen;
    std::vector<std::shared_ptr<TOVTest::ITOVTestSuiteCreator>> m_aCreators; // shared: these have no virtual destructor
    std::string m_sNames;
};
} // namespace TOVTestHost
