#include <Test/TOVTestSuiteFactory.h>

#include <Test/TOVMainProgram.h>
#include <Test/TOVTestHooks.h>

namespace TOVTest
{
ITOVTestSuiteCreator::ITOVTestSuiteCreator(const ITOVTestSuiteCreator& oOther) = default;
ITOVTestSuiteCreator& ITOVTestSuiteCreator::operator=(const ITOVTestSuiteCreator& oOther) = default;

CTOVTestSuiteFactory::CTOVTestSuiteFactory() = default;
CTOVTestSuiteFactory::CTOVTestSuiteFactory(const CTOVTestSuiteFactory& oOther) = default;
CTOVTestSuiteFactory& CTOVTestSuiteFactory::operator=(const CTOVTestSuiteFactory& oOther) = default;

void CTOVTestSuiteFactory::Register(const char* szName, ITOVTestSuiteCreator* pCreator)
{
    GetCreatorMap().emplace(szName, pCreator);
}

void CTOVTestSuiteFactory::Unregister(const char* szName)
{
    GetCreatorMap().erase(szName);
}

CTOVTestSuite* CTOVTestSuiteFactory::New(const char* szName)
{
    tCreatorMap& aCreators = GetCreatorMap();
    const tCreatorMap::iterator pFound = aCreators.find(szName);
    return pFound != aCreators.end() && pFound->second != nullptr ? pFound->second->New() : nullptr;
}

bool CTOVTestSuiteFactory::GetFirst(const char*& szName)
{
    const tCreatorMap& aCreators = GetCreatorMap();
    if (aCreators.empty())
        return false;

    szName = aCreators.begin()->first;
    return true;
}

bool CTOVTestSuiteFactory::GetNext(const char* szName, const char*& szNext)
{
    const tCreatorMap& aCreators = GetCreatorMap();
    tCreatorMap::const_iterator pNext = aCreators.find(szName);
    if (pNext == aCreators.end() || ++pNext == aCreators.end())
        return false;

    szNext = pNext->first;
    return true;
}

long CTOVTestSuiteFactory::GetNumSuites()
{
    return static_cast<long>(GetCreatorMap().size());
}

bool CTOVTestSuiteFactory::HasClass(const char* szName)
{
    return GetCreatorMap().count(szName) > 0;
}

tCreatorMap& CTOVTestSuiteFactory::GetCreatorMap()
{
    // Every call follows the program's rule. What it exports never changes, so that one look is enough.
    static const auto pfOfProgram = FindProgramFunction<&GetCreatorMapDirect>("GetCreatorMapDirect");
    return pfOfProgram != nullptr ? pfOfProgram() : GetOwnCreatorMap();
}
} // namespace TOVTest
