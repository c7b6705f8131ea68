// What much of something costs, counted in comparisons of texts. The program's memcmp goes before that of the C
// library.
#include "Catalog/CatalogInstruments.h"
#include "Support/TOVAllocationCounter.h"

#include <Moves.h>
#include <TreeWalker.h>

#include <functional>

// The sanitizers have a memcmp of their own.
#if TOV_CAN_FAIL_ALLOCATIONS
static thread_local unsigned long s_ulComparisons = 0;

extern "C" __attribute__((visibility("default"))) int memcmp(const void* pFirst, const void* pSecond,
                                                             std::size_t nSize) noexcept
{
    ++s_ulComparisons;
    const unsigned char* pcFirst = static_cast<const unsigned char*>(pFirst);
    const unsigned char* pcSecond = static_cast<const unsigned char*>(pSecond);
    for (std::size_t n = 0; n < nSize; ++n)
    {
        if (pcFirst[n] != pcSecond[n])
            return pcFirst[n] < pcSecond[n] ? -1 : 1;
    }
    return 0;
}

namespace
{
class CatalogPosixCostTest : public CatalogTest
{
protected:
    // The comparisons that a work takes in this thread.
    static unsigned long Cost(const std::function<void()>& fnWork)
    {
        const unsigned long ulBefore = s_ulComparisons;
        fnWork();
        return s_ulComparisons - ulBefore;
    }

    // What it costs to walk through so many files that all match each of the patterns.
    unsigned long CostOfMatches(const std::string& sFolder, int nFiles)
    {
        for (int n = 0; n < nFiles; ++n)
            Write(sFolder + "/file " + std::to_string(10000 + n), "");
        CNameList aPatterns;
        aPatterns.Add("file*");
        aPatterns.Add("*");
        CTOVArray<sFileRecord> aFiles;
        CTextStore oPaths;
        tUnreadable aUnreadable;
        CTreeWalker oWalker(aPatterns, aFiles, oPaths, aUnreadable, m_bStop);

        const unsigned long ulCost = Cost([&] { oWalker.Walk(0, Path(sFolder).c_str()); });

        EXPECT_EQ(nFiles, aFiles.GetSize());
        return ulCost;
    }

    // What it costs to recognise so many files of equal contents after all of them were renamed.
    unsigned long CostOfRenamed(int nFiles)
    {
        std::vector<std::string> aPaths;
        for (int n = 0; n < 2 * nFiles; ++n)
            aPaths.push_back("tree/file " + std::to_string(10000 + n));
        std::vector<sFileRecord> aRecords(aPaths.size());
        for (std::size_t n = 0; n < aPaths.size(); ++n)
        {
            aRecords[n].ullSize = 1;
            aRecords[n].szPath = aPaths[n].c_str();
        }
        sChecksum oRead;
        oRead.ullSize = 1;
        oRead.bRead = true;
        std::vector<sNewFile> aNew;
        for (int n = 0; n < nFiles; ++n)
            aNew.push_back({&aRecords[static_cast<std::size_t>(nFiles + n)], &oRead});
        const std::vector<sFileRecord> aMissing(aRecords.begin(), aRecords.begin() + nFiles);

        m_alOrigins.clear();
        return Cost([&] { m_alOrigins = FindMoved(aMissing, aNew, m_bStop); });
    }

    std::vector<long> m_alOrigins;
    std::atomic<bool> m_bStop{false};
};
} // namespace

TEST_F(CatalogPosixCostTest, OfMatchingFilesGrowsWithTheirNumber)
{
    const unsigned long ulCost = CostOfMatches("few", 400);

    EXPECT_LT(400u, ulCost);
    EXPECT_GT(3 * ulCost, CostOfMatches("more", 800));
}

TEST_F(CatalogPosixCostTest, OfRenamedFilesWithEqualContentsGrowsWithTheirNumber)
{
    const unsigned long ulCost = CostOfRenamed(1000);

    EXPECT_LT(1000u, ulCost);
    EXPECT_GT(3 * ulCost, CostOfRenamed(2000));
    for (std::size_t n = 0; n < m_alOrigins.size(); ++n)
        ASSERT_EQ(static_cast<long>(n), m_alOrigins[n]) << "the first one left";
}

TEST_F(CatalogPosixCostTest, OfRenamedFilesEndsWithAnInterrupt)
{
    m_bStop = true;
    const unsigned long ulBefore = s_ulComparisons;

    EXPECT_THROW(CostOfRenamed(1000), CCatalogError);
    EXPECT_EQ(ulBefore, s_ulComparisons);
}
#endif
