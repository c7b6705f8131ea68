// Declares CTOVTestSuiteFactory, which creates test suites by name.
#pragma once

#include <Test/TOVTestSuite.h>
#include <Test/TOVTestSuiteCreator.h>

#include <functional>
#include <map>

namespace TOVTest
{
// Settled: names are compared and ordered by their addresses, not by their texts.
typedef std::map<const char*, ITOVTestSuiteCreator*, std::less<const char*>> tCreatorMap;

// Knows all suites of the process. Every operation uses the main program's own map (GetCreatorMapDirect,
// Test/TOVTestHooks.h), or the library's if the program exports none. A name is found by the pointer that was
// registered, which GetFirst and GetNext return; a name with the same text at another address is unknown. Use the
// factory from one thread.
class TOV_EXPORT CTOVTestSuiteFactory
{
public:
    // An object of the factory has no state.
    CTOVTestSuiteFactory();
    CTOVTestSuiteFactory(const CTOVTestSuiteFactory& oOther);
    CTOVTestSuiteFactory& operator=(const CTOVTestSuiteFactory& oOther);

    // Registers a creator, which is not owned. A name that is already registered keeps its creator.
    static void Register(const char* szName, ITOVTestSuiteCreator* pCreator);
    // Removes a name. An unknown name is ignored.
    static void Unregister(const char* szName);

    // Returns a new suite, which the caller deletes, or null if the name is unknown or its creator is null.
    static CTOVTestSuite* New(const char* szName);

    // These iterate over the names in the order of their addresses. They return false at the end, with the result
    // unchanged.
    static bool GetFirst(const char*& szName);
    static bool GetNext(const char* szName, const char*& szNext);

    // These return the number of names in the map, and whether this one is among them: the pointer counts, not the
    // text.
    static long GetNumSuites();
    static bool HasClass(const char* szName);

private:
    static tCreatorMap& GetCreatorMap();
};
} // namespace TOVTest
