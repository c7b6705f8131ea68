// Declares TOV_TEST_HOST, which defines the functions that the main program of a test run exports.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuiteFactory.h>

// Use it once, outside all namespaces, in a source of the program. SetListener is required: if the main program does
// not export it, the first run crashes. (A static program that defines none has the library's own.) The other three are
// defined with it, so that every copy of the framework in the process uses the same listener and the same map. The
// library uses the map before the program's own statics are constructed and after they are destroyed, so that the map
// is never deleted.
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
