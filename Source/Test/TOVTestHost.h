// What the main program of a test run exports.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuiteFactory.h>

// Stands once, outside of all namespaces, in a source of the program. SetListener is a must: without it in the main
// program the first run ends the process. The other three go with it, so that every copy of the framework in the
// process uses this one listener and this one map. The library asks for the map before the program's own statics are
// made, and after they are gone, so that it lives for ever.
#define TOV_TEST_HOST                                                                                                  \
    TOV_PLAIN_NAMES_BEGIN                                                                                              \
    TOV_PROGRAM_EXPORT TOVTest::CTOVTestListener& GetNull();                                                           \
    TOV_PROGRAM_EXPORT TOVTest::CTOVTestListener& GetListener();                                                       \
    TOV_PROGRAM_EXPORT void SetListener(TOVTest::CTOVTestListener* pListener);                                         \
    TOV_PROGRAM_EXPORT TOVTest::tCreatorMap& GetCreatorMapDirect();                                                    \
    TOV_PLAIN_NAMES_END                                                                                                \
    static TOVTest::CTOVTestListener*& GetHostListener()                                                               \
    {                                                                                                                  \
        static TOVTest::CTOVTestListener* s_pListener = &GetNull();                                                    \
        return s_pListener;                                                                                            \
    }                                                                                                                  \
    TOVTest::CTOVTestListener& GetNull()                                                                               \
    {                                                                                                                  \
        static TOVTest::CTOVTestListener s_oNull;                                                                      \
        return s_oNull;                                                                                                \
    }                                                                                                                  \
    TOVTest::CTOVTestListener& GetListener()                                                                           \
    {                                                                                                                  \
        return *GetHostListener();                                                                                     \
    }                                                                                                                  \
    void SetListener(TOVTest::CTOVTestListener* pListener)                                                             \
    {                                                                                                                  \
        GetHostListener() = pListener != nullptr ? pListener : &GetNull();                                             \
    }                                                                                                                  \
    TOVTest::tCreatorMap& GetCreatorMapDirect()                                                                        \
    {                                                                                                                  \
        static TOVTest::tCreatorMap* const s_pCreators = new TOVTest::tCreatorMap;                                     \
        return *s_pCreators;                                                                                           \
    }
