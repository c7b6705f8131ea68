// Four events, for the tests of conditions over them.
#pragma once

#include "Support/TOVTestSupport.h"

#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVEventCondition.h>

#include <memory>

typedef CTOVEventCondition tCondition;

const tCondition::eConditionType ANY = tCondition::eConditionTypeAny;
const tCondition::eConditionType ALL = tCondition::eConditionTypeAll;

// Four events without a signal. Apart, since destructors that check cannot be those of a fixture's members.
class CConditionFixture : public testing::Test
{
private:
    struct sEvents
    {
        CTOVEvent m_aEvents[4];
    };
    const std::unique_ptr<sEvents> m_pEvents = std::make_unique<sEvents>();

protected:
    CTOVEvent (&m_aEvents)[4] = m_pEvents->m_aEvents;
};
