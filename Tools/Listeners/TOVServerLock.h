// Internal to the folder. Declares RunUnderServerLock, which calls an action while the debug server's lock is held.
#pragma once

#include <Debug/TOVDebugServer.h>

#include <exception>

namespace TOVDebug
{
// The server has no public lock. But unregistering a listener that was never registered calls the listener's
// OnClosedown under the lock, and does nothing else: so the OnClosedown of such a listener calls the action. A separate
// lock could deadlock: a thread that calls Register would enter it before the server's lock, and a listener that calls
// Register during a call of the server would enter it after that lock.
template<class TAction> class CServerLockedAction : public ITOVLogListener
{
public:
    // Catches what the action throws, since an exception that leaves a call of the server leaves its lock taken.
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

    // GCOVR_EXCL_START: a listener that was never registered hears nothing else.
    void OnStartup() override {}
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override {}
    void OnAssert(const char*, unsigned long, const char*) override {}
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}
    // GCOVR_EXCL_STOP

    explicit CServerLockedAction(const TAction& fnAction) : m_fnAction(fnAction) {}

    // Throws what the action has thrown.
    void Run()
    {
        CTOVDebugServer::Instance().Unregister(this);
        if (m_pFailure != nullptr)
            std::rethrow_exception(m_pFailure);
    }

private:
    const TAction& m_fnAction;
    std::exception_ptr m_pFailure;
};

// Calls the action with the current server's lock held. An exception of the action reaches the caller when the lock has
// been left. The action may call the server.
template<class TAction> void RunUnderServerLock(const TAction& fnAction)
{
    CServerLockedAction<TAction>(fnAction).Run();
}
} // namespace TOVDebug
