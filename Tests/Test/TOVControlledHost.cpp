#include "Test/TOVControlledHost.h"

namespace
{
CControlledHost* s_pHost = nullptr;

// The library's suites come before this program's statics and go after them.
TOVTest::tCreatorMap& LastingMap()
{
    static TOVTest::tCreatorMap* const s_pMap = new TOVTest::tCreatorMap;
    return *s_pMap;
}

TOVTest::CTOVTestListener& LastingNull()
{
    static TOVTest::CTOVTestListener s_oNull;
    return s_oNull;
}
} // namespace

TOV_PLAIN_NAMES_BEGIN
TOV_PROGRAM_EXPORT TOVTest::CTOVTestListener& GetNull();
TOV_PROGRAM_EXPORT TOVTest::CTOVTestListener& GetListener();
TOV_PROGRAM_EXPORT void SetListener(TOVTest::CTOVTestListener* pListener);
TOV_PROGRAM_EXPORT TOVTest::tCreatorMap& GetCreatorMapDirect();
TOV_PLAIN_NAMES_END

TOVTest::CTOVTestListener& GetNull()
{
    if (s_pHost == nullptr)
        return LastingNull();
    ++s_pHost->m_nNullCalls;
    return s_pHost->m_oNull;
}

TOVTest::CTOVTestListener& GetListener()
{
    if (s_pHost == nullptr)
        return LastingNull();
    ++s_pHost->m_nListenerCalls;
    return *s_pHost->m_pListener;
}

void SetListener(TOVTest::CTOVTestListener* pListener)
{
    if (s_pHost == nullptr)
        return;
    ++s_pHost->m_nSetListenerCalls;
    s_pHost->m_pLastSet = pListener;
    s_pHost->m_pListener = pListener != nullptr ? pListener : &s_pHost->m_oNull;
}

TOVTest::tCreatorMap& GetCreatorMapDirect()
{
    if (s_pHost == nullptr)
        return LastingMap();
    ++s_pHost->m_nMapCalls;
    return s_pHost->m_aCreators;
}

CControlledHost::CControlledHost() : m_pListener(&m_oNull), m_pLastSet(&m_oNull), m_pFormer(s_pHost)
{
    s_pHost = this;
}

CControlledHost::~CControlledHost()
{
    s_pHost = m_pFormer;
}
