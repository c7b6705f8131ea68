// Each fuzz target, on the inputs of its corpus.
#include "Support/TOVTestSupport.h"

#include <Fuzz.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

void Fuzz::Fail(const char* szFile, int nLine, const std::string& sText)
{
    throw std::runtime_error(std::string(szFile) + ":" + std::to_string(nLine) + ": " + sText);
}

namespace
{
std::string BytesOf(const std::filesystem::path& oPath)
{
    std::ifstream oFile(oPath, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(oFile), std::istreambuf_iterator<char>());
}

class FuzzReplayTest : public testing::TestWithParam<const Fuzz::CTarget*>
{
};

std::string NameOf(const testing::TestParamInfo<const Fuzz::CTarget*>& oInfo)
{
    return oInfo.param->GetName();
}
} // namespace

TEST_P(FuzzReplayTest, FindsNothingInTheCorpus)
{
    const Fuzz::CTarget& oTarget = *GetParam();
    int nInputs = 0;
    for (const auto& oEntry :
         std::filesystem::directory_iterator(std::filesystem::path(TOV_CORPUS) / oTarget.GetName()))
    {
        const std::string sInput = BytesOf(oEntry.path());
        EXPECT_NO_THROW(oTarget.Run(reinterpret_cast<const std::uint8_t*>(sInput.data()), sInput.size()))
            << oEntry.path();
        ++nInputs;
    }
    EXPECT_LT(0, nInputs);
}

// At the end of an input, a target reads zeros.
TEST_P(FuzzReplayTest, FindsNothingInAnEmptyInput)
{
    EXPECT_NO_THROW(GetParam()->Run(nullptr, 0));
}

INSTANTIATE_TEST_SUITE_P(AllTargets, FuzzReplayTest, testing::ValuesIn(Fuzz::CTarget::GetAll()), NameOf);
