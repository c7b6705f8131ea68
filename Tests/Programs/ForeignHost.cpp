#include "Programs/ForeignHost.h"

static int s_nCalls = 0;
static TOVTest::CTOVTestListener s_oListener;

TOVTest::CTOVTestListener& GetNull()
{
    ++s_nCalls;
    return s_oListener;
}

TOVTest::CTOVTestListener& GetListener()
{
    ++s_nCalls;
    return s_oListener;
}

void SetListener(TOVTest::CTOVTestListener* /*pListener*/)
{
    ++s_nCalls;
}

TOVTest::tCreatorMap& GetCreatorMapDirect()
{
    static TOVTest::tCreatorMap* const s_pMap = new TOVTest::tCreatorMap;
    ++s_nCalls;
    return *s_pMap;
}

int GetForeignCalls()
{
    return s_nCalls;
}
