// The names of parametrised tests whose rows have a name.
#pragma once

#include <gtest/gtest.h>

#include <string>

// For INSTANTIATE_TEST_SUITE_P: the row's own szName.
struct sRowName
{
    template<class TRow> std::string operator()(const testing::TestParamInfo<TRow>& oInfo) const
    {
        return oInfo.param.szName;
    }
};
