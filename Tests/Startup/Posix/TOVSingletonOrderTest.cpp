// The order of the singletons, found by what the library takes from the heap with the program's operator new.
#include "Debug/TOVDebuggerLines.h"
#include "Startup/Posix/TOVHeapCount.h"
#include "Startup/StartupHost.h"
#include "Support/TOVTestSupport.h"

#include <Debug/TOVDebugServer.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVRtti/TOVClassServer.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>
#include <Test/TOVTestSuiteFactory.h>
#include <Timer/TOVTimer.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace
{
std::atomic<long> s_lBlocks = {0};

void Tell(const char* szWhat, std::size_t nSize)
{
    if (!IsTelling())
        return;
    char szLine[64];
    std::snprintf(szLine, sizeof(szLine), "%s %zu\n", szWhat, nSize);
    TellDebugger(szLine);
}
} // namespace

void* operator new(std::size_t nSize)
{
    Tell("new", nSize);
    if (void* const pBlock = std::malloc(nSize))
    {
        ++s_lBlocks;
        return pBlock;
    }
    throw std::bad_alloc();
}

// The sanitizers' own form would not call the one above.
void* operator new(std::size_t nSize, const std::nothrow_t&) noexcept
{
    try
    {
        return operator new(nSize);
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}

void operator delete(void* pBlock) noexcept
{
    if (pBlock != nullptr)
        --s_lBlocks;
    std::free(pBlock);
}

void operator delete(void* pBlock, std::size_t nSize) noexcept
{
    Tell("delete", nSize);
    operator delete(pBlock);
}

long GetHeapBlocks()
{
    return s_lBlocks;
}

namespace
{
// The sizes of the singletons, in the order in which they come to life. Of the empty texts the first two are as large
// as each other.
const std::array<std::size_t, 8> SIZES = {
    sizeof(CTOVClassServer),       sizeof(CTOVStringA),
    sizeof(CTOVStringW),           sizeof(CTOVPath),
    sizeof(CTOVVirtualFileSystem), sizeof(CTOVTimer),
    sizeof(TOVTest::tCreatorMap),  sizeof(TOVPlatform::TOVFile::CTOVHandleManager)};

bool IsSingletonSize(std::size_t nSize)
{
    return std::find(SIZES.begin(), SIZES.end(), nSize) != SIZES.end();
}

// The sizes told with the word that are those of a singleton.
std::vector<std::size_t> SizesOf(const tTexts& aTexts, const std::string& sWord)
{
    std::vector<std::size_t> aSizes;
    std::string sAll = Joined(aTexts);
    for (std::size_t nLine = 0; nLine < sAll.size(); nLine = sAll.find('\n', nLine) + 1)
    {
        if (sAll.compare(nLine, sWord.size() + 1, sWord + ' ') == 0)
        {
            const std::size_t nSize = std::stoul(sAll.substr(nLine + sWord.size() + 1));
            if (IsSingletonSize(nSize))
                aSizes.push_back(nSize);
        }
        if (sAll.find('\n', nLine) == std::string::npos)
            break;
    }
    return aSizes;
}

// Whether the sizes appear in this order, whatever else of the same sizes stands between.
bool HoldsInOrder(const std::vector<std::size_t>& aSizes, const std::vector<std::size_t>& aExpected)
{
    auto pSize = aSizes.begin();
    for (const std::size_t nExpected : aExpected)
    {
        pSize = std::find(pSize, aSizes.end(), nExpected);
        if (pSize == aSizes.end())
            return false;
        ++pSize;
    }
    return true;
}

class TOVSingletonOrderTest : public testing::Test
{
protected:
    // One run serves all cases.
    static const sDebuggerTexts& Texts()
    {
        static const sDebuggerTexts s_oTexts = ObserveTelling("OnlyMarks");
        return s_oTexts;
    }
};
} // namespace

TOV_CHILD(OnlyMarks)
{
    MarkBegin();
    TOVDebug::_Log("between", 1, 0x1, eSeverityTrace, "%s", "text");
    MarkEnd();
}

// The class server comes with the first class, and the others after it. The library's texts take blocks of the same
// sizes in between.
TEST_F(TOVSingletonOrderTest, ComeToLifeInTheirOrder)
{
    const std::vector<std::size_t> aSizes = SizesOf(Texts().aBefore, "new");

    const std::vector<std::size_t> aExpected(SIZES.begin(), SIZES.end());
    EXPECT_TRUE(HoldsInOrder(aSizes, aExpected)) << testing::PrintToString(aSizes);
    // Nothing else is as large as this one.
    EXPECT_EQ(1, std::count(aSizes.begin(), aSizes.end(), sizeof(CTOVTimer)));
}

TEST_F(TOVSingletonOrderTest, GoInTheMirrorImageOfIt)
{
    const std::vector<std::size_t> aExpected(SIZES.rbegin(), SIZES.rend());
    const std::vector<std::size_t> aSizes = SizesOf(Texts().aBehind, "delete");

    EXPECT_TRUE(HoldsInOrder(aSizes, aExpected)) << testing::PrintToString(aSizes);
}

// The debug server outlives everything.
TEST_F(TOVSingletonOrderTest, TheDebugServerIsNeverDestroyed)
{
    const std::string sServer = " " + std::to_string(sizeof(TOVDebug::CTOVDebugServer)) + "\n";

    EXPECT_NE(std::string::npos, Joined(Texts().aBefore).find("new" + sServer));
    EXPECT_EQ(std::string::npos, Joined(Texts().aBehind).find("delete" + sServer));
}
