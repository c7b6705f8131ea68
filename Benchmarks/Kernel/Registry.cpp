// Rows of runtime classes.

#include <Bench.h>
#include <Inputs.h>

#include <TOVDesignPatterns/TOVRefCount.h>
#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>

#include <memory>

namespace
{
// The classes of the registry while a row runs.
class CClasses
{
public:
    CClasses() : m_aNames(Inputs::ClassNames(Inputs::NUM_CLASSES))
    {
        for (const std::string& sName : m_aNames)
            m_aClasses.push_back(std::make_unique<CTOVClass>(sName.c_str()));
    }

    const std::vector<std::string>& GetNames() const { return m_aNames; }

private:
    std::vector<std::string> m_aNames;
    std::vector<std::unique_ptr<CTOVClass>> m_aClasses;
};
} // namespace

BENCH("registry/lookup200", KERNEL)
{
    const CClasses oClasses;
    std::size_t nClass = 0;
    for (auto _ : oState)
    {
        Use(&TOVRuntimeClass(oClasses.GetNames()[nClass].c_str()));
        nClass = (nClass + 1) % Inputs::NUM_CLASSES;
    }
}

BENCH("registry/lookup200 (from CTOVStringA)", KERNEL)
{
    const CClasses oClasses;
    std::vector<CTOVStringA> aNames;
    for (const std::string& sName : oClasses.GetNames())
        aNames.emplace_back(sName.c_str());
    std::size_t nClass = 0;
    for (auto _ : oState)
    {
        Use(&TOVRuntimeClass(aNames[nClass]));
        nClass = (nClass + 1) % Inputs::NUM_CLASSES;
    }
}

BENCH("registry/is kind of, 3 levels", KERNEL)
{
    const CTOVClass oBase("CBenchmarkedBase");
    const CTOVClass oMiddle("CBenchmarkedMiddle", &oBase);
    const CTOVClass oMost("CBenchmarkedMost", &oMiddle);
    const CTOVClass* pMost = &oMost;
    for (auto _ : oState)
    {
        Touch(pMost);
        Use(pMost->IsKindOf(oBase));
    }
}
