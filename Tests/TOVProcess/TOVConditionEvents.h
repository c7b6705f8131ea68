// Four events, for the tests of conditions over them.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVEventCondition.h>

typedef CTOVEventCondition tCondition;

const tCondition::eConditionType ANY = tCondition::eConditionTypeAny;
const tCondition::eConditionType ALL = tCondition::eConditionTypeAll;

// Four events without a signal.
class CConditionFixture : public testing::Test
{
protected:
    CTOVEvent m_aEvents[4];
};
