// The plain functions through which the framework's listener and creator map are shared: the library exports them, and
// a main program may export its own (Test/TOVTestHost.h), which the framework then uses.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuiteFactory.h>

TOV_PLAIN_NAMES_BEGIN
// The listener in force, and the one that hears nothing.
TOV_EXPORT_HOOK TOVTest::CTOVTestListener& GetListener();
TOV_EXPORT_HOOK TOVTest::CTOVTestListener& GetNull();

// Puts a listener in force, which is not owned. NULL puts the null listener there.
TOV_EXPORT_HOOK void SetListener(TOVTest::CTOVTestListener* pListener);

// The map of all creators; made when there is none.
TOV_EXPORT_HOOK TOVTest::tCreatorMap& GetCreatorMapDirect();
TOV_PLAIN_NAMES_END
