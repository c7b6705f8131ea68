// Names of runtime classes, and their registry, against a map.
#include "Fuzz.h"

#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>

#include <map>
#include <memory>

namespace
{
constexpr std::size_t MAX_CLASSES = 12;
constexpr int MAX_NAME = 24;

struct sClass
{
    std::string sName;
    unsigned long ulId;
    std::vector<std::size_t> aSupers; // indexes of classes
    std::unique_ptr<CTOVClass> pClass;
};

class CRegistryGame
{
public:
    explicit CRegistryGame(Fuzz::CInput& oInput)
        : m_oInput(oInput), m_lOthers(CTOVClassServer::Instance().GetNumClasses())
    {
    }

    // The last class goes first, so that none is there after its super classes.
    ~CRegistryGame()
    {
        while (!m_aClasses.empty())
            m_aClasses.pop_back();
    }

    void Step()
    {
        const int nOperation = m_oInput.Below(6);
        if (nOperation < 3 && m_aClasses.size() < MAX_CLASSES)
            Register();
        else if (nOperation < 4 && !m_aClasses.empty())
            Unregister();
        else
            LookUp();
        CheckNames();
    }

private:
    // No name is that of a class of the library, and all come before those in the order of names.
    std::string NextName() { return '\x01' + m_oInput.Text(MAX_NAME); }

    void Register()
    {
        sClass oNew = {NextName(), 0, {}, nullptr};
        const CTOVClass* aSupers[4] = {};
        for (int n = m_oInput.Below(5); n > 0 && !m_aClasses.empty(); --n)
        {
            const std::size_t nSuper = static_cast<std::size_t>(m_oInput.Byte()) % m_aClasses.size();
            aSupers[oNew.aSupers.size()] = m_aClasses[nSuper].pClass.get();
            oNew.aSupers.push_back(nSuper);
        }
        oNew.pClass.reset(new CTOVClass(oNew.sName.c_str(), aSupers[0], aSupers[1], aSupers[2], aSupers[3]));
        oNew.ulId = oNew.pClass->GetClassId();

        const auto pKnown = m_aNames.find(oNew.sName);
        if (pKnown != m_aNames.end())
            FUZZ_EXPECT_EQ(pKnown->second->GetClassId(), oNew.ulId);
        else
            m_aNames[oNew.sName] = oNew.pClass.get();
        // Ids are never used again.
        for (const sClass& oOther : m_aClasses)
            FUZZ_EXPECT(pKnown != m_aNames.end() || oOther.ulId != oNew.ulId);
        m_aClasses.push_back(std::move(oNew));
        CheckLast();
    }

    void CheckLast()
    {
        const sClass& oLast = m_aClasses.back();
        const CTOVClass& oClass = *oLast.pClass;
        FUZZ_EXPECT_EQ(oLast.sName, std::string(oClass.GetName()));
        FUZZ_EXPECT_EQ(static_cast<int>(oLast.aSupers.size()), oClass.GetNumSuperClasses());
        FUZZ_EXPECT_EQ(!oLast.aSupers.empty(), oClass.HasSuperClasses());
        for (std::size_t n = 0; n < oLast.aSupers.size(); ++n)
            FUZZ_EXPECT(&oClass.GetSuperClass(static_cast<int>(n)) == m_aClasses[oLast.aSupers[n]].pClass.get());
        const int nIndex = m_oInput.Number();
        if (nIndex < 0 || nIndex >= static_cast<int>(oLast.aSupers.size()))
            FUZZ_EXPECT(Fuzz::FailsCheck([&] { oClass.GetSuperClass(nIndex); }));
        for (const sClass& oOther : m_aClasses)
            FUZZ_EXPECT_EQ(IsKindOf(m_aClasses.size() - 1, oOther.ulId), oClass.IsKindOf(*oOther.pClass));
    }

    bool IsKindOf(std::size_t nClass, unsigned long ulId) const
    {
        if (m_aClasses[nClass].ulId == ulId)
            return true;
        for (const std::size_t nSuper : m_aClasses[nClass].aSupers)
            if (IsKindOf(nSuper, ulId))
                return true;
        return false;
    }

    // Settled: whatever is registered under the name goes.
    void Unregister()
    {
        m_aNames.erase(m_aClasses.back().sName);
        m_aClasses.pop_back();
    }

    void LookUp()
    {
        const std::string sName = NextName();
        const auto pKnown = m_aNames.find(sName);
        const CTOVClass& oExpected = pKnown != m_aNames.end() ? *pKnown->second : CTOVClass::Invalid();
        FUZZ_EXPECT(&oExpected == &TOVRuntimeClass(sName.c_str()));
        FUZZ_EXPECT(&oExpected == &TOVRuntimeClass(CTOVStringA(sName.c_str())));
        FUZZ_EXPECT_EQ(pKnown != m_aNames.end(), CTOVClassServer::Instance().HasClass(sName.c_str()));
    }

    // The names stand in the order of their bytes.
    void CheckNames() const
    {
        const CTOVClassServer& oServer = CTOVClassServer::Instance();
        FUZZ_EXPECT_EQ(m_lOthers + static_cast<long>(m_aNames.size()), oServer.GetNumClasses());
        CTOVStringA oName;
        bool bFound = oServer.GetFirstClass(oName);
        for (const auto& oEntry : m_aNames)
        {
            FUZZ_EXPECT(bFound);
            FUZZ_EXPECT_EQ(oEntry.first, std::string(~oName));
            const CTOVStringA oLast(~oName);
            bFound = oServer.GetNextClass(oLast, oName);
        }
    }

    Fuzz::CInput& m_oInput;
    const long m_lOthers;
    std::vector<sClass> m_aClasses;
    std::map<std::string, const CTOVClass*> m_aNames;
};
} // namespace

FUZZ_TARGET(Classes)
{
    CRegistryGame oGame(oInput);
    while (!oInput.IsAtEnd())
        oGame.Step();
}
