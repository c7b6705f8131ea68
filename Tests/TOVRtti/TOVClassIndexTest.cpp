// The process's server finds classes through an index beside its ordered map: both must hold the same at any time.
#include "Support/TOVAllocationCounter.h"
#include "TOVRtti/TOVClassInstruments.h"

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{
// The slow way to a class: the walk in map order, which does not use the index.
bool IsInMap(const std::string& sName)
{
    const CTOVClassServer& oServer = CTOVClassServer::Instance();
    CTOVStringA oName;
    for (bool bMore = oServer.GetFirstClass(oName); bMore; bMore = oServer.GetNextClass(oName, oName))
    {
        if (sName == (oName.GetString() != nullptr ? oName.GetString() : ""))
            return true;
    }
    return false;
}

void ExpectFound(const CTOVClass* pClass, const std::string& sName)
{
    const CTOVClass* const pExpected = pClass != nullptr ? pClass : &CTOVClass::Invalid();
    ASSERT_EQ(pClass != nullptr, IsInMap(sName)) << sName;
    ASSERT_EQ(pExpected, &TOVRuntimeClass(sName.c_str())) << sName;
    ASSERT_EQ(pExpected, &TOVRuntimeClass(CTOVStringA(sName.c_str()))) << sName;
    ASSERT_EQ(pClass != nullptr, IsHeld(sName.c_str())) << sName;
}

// Names of all lengths around a word, which differ in one place.
std::vector<std::string> Names()
{
    std::vector<std::string> aNames;
    for (std::size_t nLength = 1; nLength <= 40; ++nLength)
    {
        const std::string sName = "I" + std::string(nLength, 'x');
        aNames.push_back(sName);
        for (std::size_t nPos = 1; nPos < sName.size(); nPos += 3)
            aNames.push_back(std::string(sName).replace(nPos, 1, "y"));
    }
    return aNames;
}
} // namespace

TEST(CTOVClassIndexTest, FindsWhatTheMapHoldsThroughRandomChanges)
{
    std::mt19937 oRandom(1);
    const std::vector<std::string> aNames = Names();
    std::vector<std::unique_ptr<CTOVClass>> aClasses(aNames.size());
    for (int nTime = 0; nTime < 3000; ++nTime)
    {
        const std::size_t nClass = oRandom() % aNames.size();
        if (aClasses[nClass] == nullptr)
            aClasses[nClass] = std::make_unique<CTOVClass>(aNames[nClass].c_str());
        else
            aClasses[nClass].reset();
        for (int nLook = 0; nLook < 3; ++nLook)
        {
            const std::size_t nLooked = oRandom() % aNames.size();
            ExpectFound(aClasses[nLooked].get(), aNames[nLooked]);
        }
    }
    for (std::size_t nClass = 0; nClass < aNames.size(); ++nClass)
        ExpectFound(aClasses[nClass].get(), aNames[nClass]);
}

TEST(CTOVClassIndexTest, GivesUpItsMemoryWithTheLastOfManyClasses)
{
    const long lHeld = GetNumHeld();
    std::vector<std::unique_ptr<CTOVClass>> aClasses;
    for (int nClass = 0; nClass < 5000; ++nClass)
        aClasses.push_back(std::make_unique<CTOVClass>(("CMany" + std::to_string(nClass)).c_str()));
    EXPECT_EQ(lHeld + 5000, GetNumHeld());
    EXPECT_EQ(aClasses[4321].get(), &TOVRuntimeClass("CMany4321"));

    std::shuffle(aClasses.begin(), aClasses.end(), std::mt19937(2));
    while (aClasses.size() > 10)
        aClasses.pop_back();
    for (const auto& pClass : aClasses)
        EXPECT_EQ(pClass.get(), &TOVRuntimeClass(pClass->GetName()));
    aClasses.clear();
    EXPECT_EQ(lHeld, GetNumHeld());
}

TEST(CTOVClassIndexTest, TakesNoMoreMemoryForClassesThatComeAndGo)
{
    const CTOVClass oStaying("CStaying");
    const auto fnBytesOf = [](int nTimes) {
        const CAllocationCounter oCounter;
        for (int nTime = 0; nTime < nTimes; ++nTime)
            const CTOVClass oPassing("CPassing");
        return oCounter.BytesTaken();
    };
    const std::size_t nBytes = fnBytesOf(1);

    EXPECT_EQ(10000 * nBytes, fnBytesOf(10000));
}

TEST(CTOVClassIndexTest, ADescriptorUnderTwoNamesLeavesBoth)
{
    CTOVClassServer& oServer = CTOVClassServer::Instance();
    auto pClass = std::make_unique<CTOVClass>("CFirstName");
    oServer.AddClass("CSecondName", pClass.get());
    ExpectFound(pClass.get(), "CSecondName");

    pClass.reset();

    ExpectFound(nullptr, "CFirstName");
    ExpectFound(nullptr, "CSecondName");
}

TEST(CTOVClassIndexTest, ARemovedNameIsFoundNoMoreAndCanComeBack)
{
    COpenClass oClass("CGoing");
    oClass.Unregister();
    ExpectFound(nullptr, "CGoing");

    oClass.Register();
    ExpectFound(&oClass, "CGoing");
}

// The key of the map shares the block of the string: whoever writes into it in place changes the key as well.
TEST(CTOVClassIndexTest, ANameThatIsChangedInPlaceLeavesNothingBehind)
{
    CTOVClassServer& oServer = CTOVClassServer::Instance();
    const auto pClass = std::make_unique<CTOVClass>("CUnchanged");
    CTOVStringA oName("CZzzz");
    oServer.AddClass(oName, pClass.get());
    oName.SetAt(4, 'y');
    oServer.RemoveClass(oName);

    EXPECT_FALSE(IsHeld("CZzzz"));
    EXPECT_FALSE(IsHeld("CZzzy"));
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass("CZzzz"));
    oName.SetAt(4, 'z');
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass("CZzzz"));
    ExpectFound(pClass.get(), "CUnchanged");
}

TEST(CTOVClassIndexTest, AnotherServersNamesAreNotTheProcessesOwn)
{
    CTOVClass oClass("CProcess");
    {
        CTOVClassServer oServer;
        oServer.AddClass("COnlyThere", &oClass);
        EXPECT_TRUE(oServer.HasClass("COnlyThere"));
        EXPECT_FALSE(oServer.HasClass("CProcess"));
        ExpectFound(nullptr, "COnlyThere");
        oServer.RemoveClass("CProcess");
    }
    ExpectFound(&oClass, "CProcess");
}

TEST(CTOVClassIndexTest, ANameBeginsAndEndsWithItsText)
{
    const CTOVClass oClass("CWhole");
    char szName[] = "CWhole\0rest";

    EXPECT_EQ(&oClass, &TOVRuntimeClass(szName));
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass("CWhol"));
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass("CWhole "));
}

TEST(CTOVClassIndexTest, AMissingTextIsTheEmptyName)
{
    const char* szName = nullptr;
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass(szName));

    const CTOVClass oClass("");
    EXPECT_EQ(&oClass, &TOVRuntimeClass(szName));
    EXPECT_EQ(&oClass, &TOVRuntimeClass(""));
    EXPECT_EQ(&oClass, &TOVRuntimeClass(CTOVStringA()));
}

TEST(CTOVClassIndexTest, AStringIdAsksTheResourceLoader)
{
    EXPECT_CHECK("m_pInstance != NULL", TOVRuntimeClass(reinterpret_cast<const char*>(std::uintptr_t(7))));
}

// A descriptor converts to a string and to characters.
TEST(CTOVClassIndexTest, ADescriptorIsFoundByItself)
{
    const CTOVClass oClass("CItself");

    EXPECT_EQ(&oClass, &TOVRuntimeClass(oClass));
}
