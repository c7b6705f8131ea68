// What all ready-made listeners have in common: how they come into the debug server's table and out of it.
#pragma once

#include <Debug/TOVLogListener.h>

namespace TOVDebug
{
// Base of the listeners of this library. An object hears nothing until it is registered, directly or behind a
// CTOVSeverityFilter. The server does not own it.
//
// Threads: any. Register, Unregister and the destructor may be called inside a call of the server, of this listener
// or another one; outside, they wait for the call that is going on. As the server has it, whoever takes an earlier
// listener out of the table inside a call makes the next one miss that one event.
//
// A derived class calls Unregister first thing in its destructor: behind that, it is no longer called.
class CTOVListener : public ITOVLogListener
{
public:
    // Unregisters it, from the current server.
    virtual ~CTOVListener();

    // Overrides call these.
    void OnStartup() override;
    void OnClosedown() override;

    // Ignored: the server passes on no name.
    void SetApplicationName(const char* szName) override;

    CTOVListener();
    CTOVListener(const CTOVListener&) = delete;
    CTOVListener& operator=(const CTOVListener&) = delete;

    // Registers it with the current server, at the end of its table. Nothing happens when it already is, so that it is
    // never there twice; one that came in by the server's own Register moves to the end.
    // Throws std::bad_alloc; it is not registered then.
    void Register();

    // Takes it out of the current server's table; harmless when it is not there. Its OnClosedown is called in any case.
    void Unregister();

private:
    bool m_bRegistered; // certainly in the table; guarded by the server's lock
};
} // namespace TOVDebug
