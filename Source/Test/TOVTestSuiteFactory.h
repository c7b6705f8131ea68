// Makes test suites by name: CTOVTestSuiteFactory.
#pragma once

#include <Test/TOVTestSuite.h>
#include <Test/TOVTestSuiteCreator.h>

#include <functional>
#include <map>

namespace TOVTest
{
// Settled: names are told apart, and ordered, by their addresses and not by their texts.
typedef std::map<const char*, ITOVTestSuiteCreator*, std::less<const char*>> tCreatorMap;

// All suites of the process. Every operation first asks the main program for its own map (GetCreatorMapDirect,
// Test/TOVTestHooks.h), and takes the library's if there is none. Names are found by the pointer that was registered,
// as GetFirst and GetNext give it; a name of the same text at another address is unknown. One thread.
class TOV_EXPORT CTOVTestSuiteFactory
{
public:
    // An object of the factory holds nothing.
    CTOVTestSuiteFactory();
    CTOVTestSuiteFactory(const CTOVTestSuiteFactory& oOther);
    CTOVTestSuiteFactory& operator=(const CTOVTestSuiteFactory& oOther);

    // Enters a creator, which is not owned. A name that is already known keeps its creator.
    static void Register(const char* szName, ITOVTestSuiteCreator* pCreator);
    // An unknown name is ignored.
    static void Unregister(const char* szName);

    // A new suite, which the caller deletes; NULL for an unknown name, or one whose creator is NULL.
    static CTOVTestSuite* New(const char* szName);

    // Walks the names in the order of their addresses. False at the end, with the second argument unchanged.
    static bool GetFirst(const char*& szName);
    static bool GetNext(const char* szName, const char*& szNext);

    static long GetNumSuites();
    static bool HasClass(const char* szName);

private:
    static tCreatorMap& GetCreatorMap();
};
} // namespace TOVTest
