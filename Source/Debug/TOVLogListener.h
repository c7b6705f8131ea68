// Receiver of diagnostics: log lines, failed checks and panics.
#pragma once

#include <Debug/TOVDebug.h>

#include <cstdarg>

namespace TOVDebug
{
// Register an object of a derived class with CTOVDebugServer. The server does not own it, and calls it with its lock
// held: one call at a time over all threads. Unregister it before it ends: the library logs to its very end, which
// comes after that of main and its objects. CTOVListener (Listeners/TOVListener.h), the base of the ready-made
// listeners, unregisters by itself.
//
// A listener must not throw; it may log or fail a check itself (the lock is recursive and all listeners, itself
// included, hear of it), and may register and unregister listeners in a call. What it throws all the same when a
// destructor tells it of a failed check is dropped there, so that the process goes on.
class TOV_EXPORT ITOVLogListener
{
public:
    // Virtual operations; their order is part of the exported design. There is no virtual destructor.

    // Called once when registered, and when unregistered or when the server closes down.
    virtual void OnStartup() = 0;
    virtual void OnClosedown() = 0;

    // Start the argument list and call the V form. The severity of a panic falls away there.
    virtual void OnLog(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                       ...);
    virtual void OnPanic(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                         ...);

    virtual void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                        va_list pArguments) = 0;
    virtual void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) = 0;
    virtual void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) = 0;
    virtual void SetApplicationName(const char* szName) = 0;

    ITOVLogListener();
    ITOVLogListener(const ITOVLogListener& oOther);
    ITOVLogListener& operator=(const ITOVLogListener& oOther);

    // Do not compile: an object among the arguments.
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
