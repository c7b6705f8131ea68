// A library that exports by plain names what the test framework looks for in the main program, and nothing of it works.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuiteFactory.h>

TOV_PLAIN_NAMES_BEGIN
TOV_PROGRAM_EXPORT TOVTest::CTOVTestListener& GetNull();
TOV_PROGRAM_EXPORT TOVTest::CTOVTestListener& GetListener();
TOV_PROGRAM_EXPORT void SetListener(TOVTest::CTOVTestListener* pListener);
TOV_PROGRAM_EXPORT TOVTest::tCreatorMap& GetCreatorMapDirect();

// How often one of them was called.
TOV_PROGRAM_EXPORT int GetForeignCalls();
TOV_PLAIN_NAMES_END
