#include <Listeners/TOVListener.h>

#include <Debug/TOVDebugServer.h>
#include <Listeners/TOVServerLock.h>

namespace TOVDebug
{
CTOVListener::CTOVListener() : m_bRegistered(false)
{
}

CTOVListener::~CTOVListener()
{
    Unregister();
}

void CTOVListener::Register()
{
    RunUnderServerLock([this] {
        if (m_bRegistered)
            return;
        // A second registration would never leave the server's lock, and the table cannot be read. So this listener is
        // removed first, in case it is already there.
        CTOVDebugServer::Instance().Unregister(this);
        CTOVDebugServer::Instance().Register(this);
        m_bRegistered = true;
    });
}

void CTOVListener::Unregister()
{
    CTOVDebugServer::Instance().Unregister(this);
}

void CTOVListener::OnStartup()
{
}

void CTOVListener::OnClosedown()
{
    m_bRegistered = false;
}

void CTOVListener::SetApplicationName(const char* /*szName*/)
{
}
} // namespace TOVDebug
