// The base of the tests of checks.
#pragma once

#include "Test/TOVControlledHost.h"
#include "Test/TOVTestInstruments.h"

#include <gtest/gtest.h>

#include <string>

// Checks speak to a recorder.
class CHeardChecks : public testing::Test
{
protected:
    CHeardChecks() { m_oHost.m_pListener = &m_oRecorder; }

    // What was heard since the last look.
    tTexts Heard()
    {
        tTexts aHeard;
        aHeard.swap(m_oRecorder.m_aEvents);
        return aHeard;
    }

    // The one event of a check in the given line.
    static tTexts EventIn(const char* szFile, const char* szEvent, int nLine, const std::string& sArguments)
    {
        return {std::string(szEvent) + "|" + szFile + "|" + std::to_string(nLine) + "|" + sArguments};
    }

    static tTexts NamesOf(const tTexts& aEvents)
    {
        tTexts aNames;
        for (const std::string& sEvent : aEvents)
            aNames.push_back(sEvent.substr(0, sEvent.find('|')));
        return aNames;
    }

    CControlledHost m_oHost;
    CEventRecorder m_oRecorder;
};
