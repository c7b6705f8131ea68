// Declares CTOVListener, the base of all ready-made listeners, which registers and unregisters them.
#pragma once

#include <Debug/TOVLogListener.h>
#include <Listeners/TOVListenerExport.h>

namespace TOVDebug
{
// Base of the listeners of this library. An object receives no events until it is registered, directly or as the target
// of a CTOVSeverityFilter. The server does not own it.
//
// Any thread may use it. Register, Unregister and the destructor may be called during a call by the server, of this
// listener or another one; at any other time, they wait until the present call has returned. If an earlier listener is
// removed from the server's table during a call, the next one misses that event.
//
// A derived class must call Unregister at the beginning of its destructor: after that it is no longer called.
class TOV_LISTENER_EXPORT CTOVListener : public ITOVLogListener
{
public:
    // Unregisters this listener from the current server.
    virtual ~CTOVListener();

    // An override must call these.
    void OnStartup() override;
    void OnClosedown() override;

    // Ignores the name; the server passes no name to its listeners.
    void SetApplicationName(const char* szName) override;

    CTOVListener();
    CTOVListener(const CTOVListener&) = delete;
    CTOVListener& operator=(const CTOVListener&) = delete;

    // Registers this listener with the current server, at the end of its table. Does nothing if it is already
    // registered, so that it is never in the table twice; if it was registered by the server's own Register, it moves
    // to the end. Throws std::bad_alloc; the listener is then not registered.
    void Register();

    // Removes this listener from the current server's table, if it is there. Its OnClosedown is called in any case.
    void Unregister();

private:
    bool m_bRegistered; // true: certainly in the table; guarded by the server's lock
};
} // namespace TOVDebug
