#include <Listeners/TOVListener.h>

#include <Debug/TOVDebugServer.h>

#include <exception>
#include <functional>

namespace TOVDebug
{
namespace
{
// Runs an action under the server's lock: unregistering a listener that never was registered calls its OnClosedown
// there, and does nothing else. A lock of our own would be taken in the other order inside a call of the server.
class CLockedAction : public ITOVLogListener
{
public:
    void OnStartup() override {}

    // What is thrown through a call of the server leaves its lock taken.
    void OnClosedown() override
    {
        try
        {
            m_fnAction();
        }
        catch (...)
        {
            m_pFailure = std::current_exception();
        }
    }

    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override {}
    void OnAssert(const char*, unsigned long, const char*) override {}
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}

    static void Run(const std::function<void()>& fnAction)
    {
        CLockedAction oAction(fnAction);
        CTOVDebugServer::Instance().Unregister(&oAction);
        if (oAction.m_pFailure != nullptr)
            std::rethrow_exception(oAction.m_pFailure);
    }

private:
    explicit CLockedAction(const std::function<void()>& fnAction) : m_fnAction(fnAction) {}

    const std::function<void()>& m_fnAction;
    std::exception_ptr m_pFailure;
};
} // namespace

CTOVListener::CTOVListener() : m_bRegistered(false)
{
}

CTOVListener::~CTOVListener()
{
    Unregister();
}

void CTOVListener::Register()
{
    CLockedAction::Run([this] {
        if (m_bRegistered)
            return;
        // A second registration would keep the server's lock for ever, and the table cannot be asked.
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
