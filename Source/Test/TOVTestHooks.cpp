#include <Test/TOVTestHooks.h>

#include <Test/TOVMainProgram.h>
#include <Test/TOVTestDynamicSingleton.h>

namespace TOVTest
{
template class TOV_TEMPLATE_DEFINE CTOVTestDynamicSingleton<tCreatorMap>;

namespace
{
CTOVTestListener s_oNull;
CTOVTestListener* s_pListener = &s_oNull;
} // namespace

CTOVTestListener& GetOwnNull()
{
    return s_oNull;
}

CTOVTestListener& GetOwnListener()
{
    return *s_pListener;
}

void SetOwnListener(CTOVTestListener* pListener)
{
    s_pListener = CTOVTestListener::GetSafeListener(pListener);
}

tCreatorMap& GetOwnCreatorMap()
{
    return CTOVTestDynamicSingleton<tCreatorMap>::GetInstance();
}
} // namespace TOVTest

TOVTest::CTOVTestListener& GetListener()
{
    return TOVTest::GetOwnListener();
}

TOVTest::CTOVTestListener& GetNull()
{
    return TOVTest::GetOwnNull();
}

void SetListener(TOVTest::CTOVTestListener* pListener)
{
    TOVTest::SetOwnListener(pListener);
}

TOVTest::tCreatorMap& GetCreatorMapDirect()
{
    return TOVTest::GetOwnCreatorMap();
}
