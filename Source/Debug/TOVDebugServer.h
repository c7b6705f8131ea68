// Declares CTOVDebugServer, through which every diagnostic passes.
#pragma once

#include <Debug/TOVLogListener.h>

#include <vector>

namespace TOVDebug
{
// Passes each event to all registered listeners, in the order of their registration, under one recursive lock. It
// neither formats nor filters, and does not own the listeners. It lives until the process ends.
//
// Any thread may call it. A listener that blocks also blocks all other diagnostics of the process. If a listener
// throws, the lock stays taken. If memory is exhausted, it does not: the server allocates only in Register and when it
// is copied, and releases the lock when that fails. The server cannot work without its lock: locking or unlocking with
// handle 0 ends the process with exit(-1).
class TOV_EXPORT CTOVDebugServer : public ITOVLogListener
{
public:
    // Calls OnClosedown of all listeners and keeps them in the table, then destroys the lock; the handle keeps its old
    // value. After that the server works without a lock, for one thread at a time, until OnStartup gives it a new one.
    // A second closedown, for example by the destructor, notifies the listeners again and destroys nothing.
    void OnClosedown() override;

    // Creates a new lock in place of the old one, which is not destroyed. Calls exit(-1) if it cannot be created.
    void OnStartup() override;

    // Each of these passes its event to all listeners. A listener may register and unregister listeners during the
    // call. If the server is in its own table, it skips itself.
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;

    // Keeps 256 characters of the name, padded with zeros; a name of 256 or more has no terminator. Null is ignored.
    // Listeners are not notified.
    void SetApplicationName(const char* szName) override;

    // Calls OnClosedown.
    virtual ~CTOVDebugServer() noexcept(false);

    // Returns the current server. The first call creates it (during the library's own start-up, on the loading thread).
    static CTOVDebugServer& Instance();

    // Makes a server with an empty table, the name "<unknown>" and its own lock. Calls exit(-1) if the lock cannot be
    // created.
    CTOVDebugServer();

    // These copy the table and share the lock. Each server's destructor destroys the lock that the server has, so that
    // one of the two must get a new lock through OnStartup before the other is destroyed.
    CTOVDebugServer(const CTOVDebugServer& oOther);
    CTOVDebugServer& operator=(const CTOVDebugServer& oOther);

    // Appends the listener and calls its OnStartup. Null is ignored. Throws std::bad_alloc with nothing changed. Do not
    // register a listener twice. Settled: a second registration adds nothing, but the calling thread then holds the
    // lock once more than it releases it, so that every other thread that logs waits until this thread leaves it.
    void Register(ITOVLogListener* pListener);

    // Calls the listener's OnClosedown, even if it was never registered, then removes it. Null is ignored.
    void Unregister(ITOVLogListener* pListener);

protected:
    // Makes a server of a derived class the current one. It takes over the table, the lock's handle and the name of the
    // old server, which is then deleted: this calls OnClosedown of the listeners and destroys the lock. The caller must
    // give the new server a new lock through its OnStartup. Null is ignored.
    static void SetDebugServer(CTOVDebugServer* pServer);

    // These lock and unlock the table. A thread may lock it several times. Without a lock they do nothing; with handle
    // 0 they call exit(-1).
    void LockLoggers();
    void UnlockLoggers();

    // These call OnStartup or OnClosedown of a listener that is not null.
    void StartupLogger(ITOVLogListener* pListener);
    void ClosedownLogger(ITOVLogListener* pListener);

private:
    // Internal functions. HasOtherListeners returns whether the table has listeners besides the library's own.
    // NoteAudience notes who hears the current server, after each change of a table (see TOVAudience.h).
    friend bool HasOtherListeners(CTOVDebugServer& oServer);
    friend void NoteAudience(const CTOVDebugServer& oServer);

    static constexpr int NAME_SIZE = 256;

    void CreateLock();
    template<class TCall> void Dispatch(TCall fnCall);

    static CTOVDebugServer* s_pInstance;

    std::vector<ITOVLogListener*> m_oLoggers;
    tHandle m_hLoggerLock;
    char m_szApplicationName[NAME_SIZE];
};
} // namespace TOVDebug
