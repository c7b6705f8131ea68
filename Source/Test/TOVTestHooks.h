// Declares the functions with plain names by which the framework's listener and creator map are shared. The
// library exports them, and a main program may export its own (Test/TOVTestHost.h), which the framework then uses.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuiteFactory.h>

TOV_PLAIN_NAMES_BEGIN
// These return the listener in force, and the null listener, which does nothing.
TOV_EXPORT_HOOK TOVTest::CTOVTestListener& GetListener();
TOV_EXPORT_HOOK TOVTest::CTOVTestListener& GetNull();

// Sets the listener in force, which is not owned. Null sets the null listener.
TOV_EXPORT_HOOK void SetListener(TOVTest::CTOVTestListener* pListener);

// Returns the map of all creators. Creates it if it does not exist.
TOV_EXPORT_HOOK TOVTest::tCreatorMap& GetCreatorMapDirect();
TOV_PLAIN_NAMES_END
