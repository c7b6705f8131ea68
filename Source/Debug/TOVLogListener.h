// Declares ITOVLogListener, the receiver of diagnostics: log lines, failed checks and panics.
#pragma once

#include <Debug/TOVDebug.h>

#include <cstdarg>

namespace TOVDebug
{
// Register an object of a derived class with CTOVDebugServer. The server does not own the listener, and calls it with
// the server's lock held: one call at a time, over all threads. Unregister a listener before it is destroyed: the
// library logs until it is unloaded, which is after main has returned and its objects are gone. CTOVListener
// (Listeners/TOVListener.h), the base of the ready-made listeners, unregisters itself.
//
// A listener must not throw. During a call it may log or fail a check (the lock is recursive, and all listeners, itself
// included, are notified), and may register and unregister listeners. If a listener throws while a destructor
// reports a failed check, the exception is dropped and the process continues.
class TOV_EXPORT ITOVLogListener
{
public:
    // Virtual operations; their order is part of the exported design. There is no virtual destructor.

    // The server calls OnStartup when it registers the listener, and OnClosedown when it unregisters the listener or
    // closes down itself.
    virtual void OnStartup() = 0;
    virtual void OnClosedown() = 0;

    // These collect the arguments into a va_list and call OnLogV or OnPanicV. OnPanic drops the severity.
    virtual void OnLog(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                       ...);
    virtual void OnPanic(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                         ...);

    // Receives a log line. The argument list may be read once; a listener that reads it twice makes a copy.
    virtual void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                        va_list pArguments) = 0;
    // Receives a failed check with its literal text, before the exception is thrown.
    virtual void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) = 0;
    // Receives a panic. The process ends when all listeners have returned.
    virtual void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) = 0;
    // Is for a listener that shows a name. The server never calls it.
    virtual void SetApplicationName(const char* szName) = 0;

    ITOVLogListener();
    ITOVLogListener(const ITOVLogListener& oOther);
    ITOVLogListener& operator=(const ITOVLogListener& oOther);

    // These overloads are chosen only if an argument is an object, and refuse to compile.
    template<class... TArguments, tRefusal<TArguments...> = 0>
    void OnLog(const char*, unsigned long, eTOVDebugSeverity, const char*, const TArguments&...)
    {
        TOV_REFUSE_OBJECTS(TArguments);
    }
    template<class... TArguments, tRefusal<TArguments...> = 0>
    void OnPanic(const char*, unsigned long, eTOVDebugSeverity, const char*, const TArguments&...)
    {
        TOV_REFUSE_OBJECTS(TArguments);
    }
};
} // namespace TOVDebug
