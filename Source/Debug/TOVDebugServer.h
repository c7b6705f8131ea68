// The hub through which every diagnostic passes.
#pragma once

#include <Debug/TOVLogListener.h>

#include <vector>

namespace TOVDebug
{
// Hands each event to all registered listeners, in the order of their registration, under one recursive lock. It shapes
// and filters nothing, and does not own the listeners. It lives until the process ends.
//
// Threads: any. A listener that blocks blocks all diagnostics of the process; one that throws leaves the lock taken.
// Exhausted memory does not: the server's own allocations happen in Register and in copies, and leave the lock free.
// Without its lock the server cannot go on: any lock or unlock with handle 0 ends the process with exit(-1).
class TOV_EXPORT CTOVDebugServer : public ITOVLogListener
{
public:
    // Closes down all listeners and leaves them in the table, then destroys the lock; the handle keeps its old value.
    // A server that closed down works without a lock until it gets a fresh one through OnStartup: one thread at a time.
    // Another closedown, that of its destructor included, tells the listeners once more and destroys nothing.
    void OnClosedown() override;

    // Creates a new lock over the old one, which is not destroyed; exit(-1) if there can be none.
    void OnStartup() override;

    // One dispatch each. A listener may register and unregister listeners from inside. A server that is in its own
    // table is passed over there.
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;

    // Keeps 256 characters of the name, padded with zeros; a longer name leaves no terminator. Null is ignored, and no
    // listener is told.
    void SetApplicationName(const char* szName) override;

    // Runs OnClosedown.
    virtual ~CTOVDebugServer() noexcept(false);

    // The current server, made on first need (in the library's own start-up, on the loading thread).
    static CTOVDebugServer& Instance();

    // An empty table, the name "<unknown>" and a lock of its own; exit(-1) if there can be none.
    CTOVDebugServer();

    // Memberwise: the table by value, the lock shared. Each of the two destroys the lock at its end: before the first
    // of them ends, the other one must get a lock of its own through OnStartup.
    CTOVDebugServer(const CTOVDebugServer& oOther);
    CTOVDebugServer& operator=(const CTOVDebugServer& oOther);

    // Appends the listener and calls its OnStartup. Null is ignored. Throws std::bad_alloc with nothing changed.
    // A second registration adds nothing and, settled, leaves the lock entered once more by the calling thread: every
    // other thread that logs then waits until this one has left. Do not register a listener twice.
    void Register(ITOVLogListener* pListener);

    // Calls the listener's OnClosedown, also if it was never registered, then removes it. Null is ignored.
    void Unregister(ITOVLogListener* pListener);

protected:
    // Puts a derived server in the place of the current one: it takes over table, lock handle and name, then the old
    // server is deleted, which closes down the listeners and destroys that lock. The new server must get a fresh lock
    // through its OnStartup afterwards. Null is ignored.
    static void SetDebugServer(CTOVDebugServer* pServer);

    void LockLoggers();
    void UnlockLoggers();

    // Call OnStartup or OnClosedown of a listener that is not null.
    void StartupLogger(ITOVLogListener* pListener);
    void ClosedownLogger(ITOVLogListener* pListener);

private:
    // Whether the table has listeners besides the library's own. Internal.
    friend bool HasOtherListeners(CTOVDebugServer& oServer);

    static constexpr int NAME_SIZE = 256;

    void CreateLock();
    template<class TCall> void Dispatch(TCall fnCall);

    static CTOVDebugServer* s_pInstance;

    std::vector<ITOVLogListener*> m_oLoggers;
    tHandle m_hLoggerLock;
    char m_szApplicationName[NAME_SIZE];
};
} // namespace TOVDebug
