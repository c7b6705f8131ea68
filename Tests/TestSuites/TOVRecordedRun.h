// A run of all suites, as a listener hears it.
#pragma once

#include <string>
#include <vector>

typedef std::vector<std::string> tTexts;

struct sRecordedRun
{
    int nResult;      // what Run returned
    tTexts aEvents;   // each event as a line, the events of a suite and of a case indented
    tTexts aWarnings; // the texts alone
    tTexts aFailures; // the events of failed checks, with the descriptions of suite and case in front
    tTexts aAsserted; // the suites in which preconditions of the library failed
};

sRecordedRun RecordRun();
