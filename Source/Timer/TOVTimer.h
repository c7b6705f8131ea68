// Declares CTOVTimer, the process-wide clock: stopwatches, frame time and calls after a delay.
#pragma once

#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVString/TOVStringA.h>

// A timer has this number of time channels.
#define TOV_TIMER_MAX_TIME_CHANNELS 4

// Has four time channels. Each is a stopwatch with an index from 0 to 3 and a name. Times are in seconds.
//
//   undefined --DefineChannel--> stopped --Start--> running --Pause--> running and paused
//             <--UndefineChannel-- (any)  <--Stop--          <--Continue--
//
// The constructor chooses the time base: the system's high-resolution counter, or its millisecond counter if that
// fails. A later read of the high-resolution counter that fails is logged and gives 0; the time base does not change. A
// frequency that cannot be read is 0 as well, so that times are then infinite or not a number.
//
// Failed checks throw TOVDebug::CTOVAssertException. The comments name three checks in short; the texts of the last two
// begin with the text of the first:
//
//   checks the range                        (0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS)
//   checks that the channel is defined      ... && IsDefined(nChannel)
//   checks that the channel is running      ... && IsDefinedAndRunning(nChannel)
//
// Reading a time costs one read of the counter and one of its frequency. There is no lock: change a channel from one
// thread only. Other threads may meanwhile read times, rates and states, each of which is read atomically, but not
// names. A copy is an independent timer with the present state of all channels, rates and frozen times included.
//
// These operations allocate: DefineChannel, for the name; UndefineChannel, if a copy of the timer shares that name;
// copying a timer; Instance, if it creates the timer; InstallTimeEvent, and for the first event the system starts a
// thread. A warning in the log allocates if it has 1024 characters or more, which only a long name can cause.
class TOV_EXPORT CTOVTimer
{
public:
    // The callback of a time event, in the plain form and in the form of the system's own timer; on Windows the two
    // differ in the calling convention. It receives the identifier of the event and the value passed to
    // InstallTimeEvent. The message and the last two arguments have no meaning.
    typedef void (*tTimeEvent)(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser,
                               unsigned long ulReserved1, unsigned long ulReserved2);
    typedef void(TOV_CALLBACK* tSystemTimeEvent)(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser,
                                                 unsigned long ulReserved1, unsigned long ulReserved2);

    // Virtual operation.
    virtual ~CTOVTimer();

    // Chooses the time base. No channel is defined.
    CTOVTimer();
    CTOVTimer(const CTOVTimer& oOther);
    CTOVTimer& operator=(const CTOVTimer& oOther);

    // Returns the timer of the process. Creates it if it does not exist.
    static CTOVTimer& Instance();

    // Defines a channel, which is stopped at 0. Returns false, with nothing changed, if the index is out of range or
    // the channel is already defined. Null is the empty name, and a value below 0x10000 is a string id, as for
    // CTOVStringA; several channels may have the same name. The frame rate keeps its value. Settled: the channel is
    // defined before its name is set. If setting the name throws, the channel stays defined, has no name, and keeps the
    // rest of its former state.
    bool DefineChannel(int nChannel, const char* szName);
    // Undefines the channel and empties its name; the rest of its state stays until the next definition. Returns false
    // only if the index is out of range.
    bool UndefineChannel(int nChannel);

    // Returns the capacity, 4, however many channels are defined.
    int GetNumChannels() const;
    // Returns the lowest defined channel with this name, ignoring case, or -1. Null is the empty name.
    int GetChannelByName(const char* szName) const;
    // Returns the name, which is empty for an undefined channel. It is valid until the channel is defined or undefined.
    // Checks the range.
    const char* GetChannelName(int nChannel) const;

    // These return the state of a channel. They check the range.
    bool IsDefined(int nChannel) const;
    bool IsRunning(int nChannel) const; // for an undefined channel: its last state
    bool IsPaused(int nChannel) const;  // for an undefined channel: its last state
    bool IsDefinedAndRunning(int nChannel) const;

    // Starts the channel at 0, even if it is already running. Settled: a channel that was paused is still paused, and
    // its time is negative. Checks that the channel is defined.
    void Start(int nChannel);
    // Stops the channel: its time is 0 until the next Start. Checks that the channel is defined.
    void Stop(int nChannel);

    // Sets the time to 0. Settled: the time of a paused channel becomes negative, by the time since the pause. This and
    // the next three check that the channel is running.
    void Reset(int nChannel);
    // Sets the time, which may be negative, and also the frame time if that is enabled. Settled: the time of a paused
    // channel becomes 0, and continues from there.
    void SetTime(int nChannel, double dTime);
    // Stops the time until Continue. Logs a warning if the channel is already paused.
    void Pause(int nChannel);
    // Lets the time of a paused channel run again. Logs a warning if the channel is not paused.
    void Continue(int nChannel);

    // Returns the channel's time in seconds, or 0 if it is not defined and running. The time is negative if the channel
    // was reset, or stopped and started, while it was paused. Checks the range.
    double GetTime(int nChannel) const;
    // Returns the same time in whole milliseconds, cut to the low 32 bits: it begins at 0 again after 49 days.
    unsigned long GetTimeInMs(int nChannel) const;
    // These return the time since the zero of the time base, in seconds and as 32-bit milliseconds, independently of
    // the channels.
    double GetTimeDirect() const;
    unsigned long GetTimeInMsDirect() const;

    // The frame time is one time for everything in a frame; the frame rate is the rate of the updates.

    // Keeps the frame time at the channel's present time until the next update. Checks that the channel is running, as
    // DisableFrameTime does.
    void EnableFrameTime(int nChannel);
    void DisableFrameTime(int nChannel);
    // Returns whether frame time is enabled. Checks the range.
    bool IsFrameTimeEnabled(int nChannel) const;
    // Returns the time of the last update if frame time is enabled, else GetTime, and 0 if the channel is not defined
    // and running. Checks the range.
    double GetFrameTime(int nChannel) const;
    // Returns 1 divided by the seconds between the last two updates, without smoothing, or 0 if the time did not
    // advance. The state of the channel does not matter: a stopped or redefined channel returns the last value, and a
    // new one 0. Checks the range.
    double GetFPS(int nChannel) const;
    // Sets the frame time to the channel's time, whether frame time is enabled or not, and computes the frame rate.
    // Does nothing if the channel is not defined and running. Checks the range.
    void Update(int nChannel);
    // Updates all channels that are defined and running.
    void UpdateAll();

    // The system makes the calls of time events, once or periodically; they need no timer object. The callback runs on
    // a thread of the system's timer service, which serves all events one after the other: it must be short, must lock
    // what it shares with other threads, and must not throw. It may install and uninstall events, its own included.

    // Calls back after nDelay milliseconds: nKind 1 repeats the call at this period, any other value calls once. The
    // system aims at the resolution, in milliseconds; 0 asks for the best. A period does not drift. Late calls follow
    // without a pause; if many are late, the oldest may be dropped. A null callback is accepted and never called.
    // Returns the identifier of the event. Returns -1, and installs nothing, if the system refuses nDelay as a timer
    // period: it always refuses 0, and values beyond its range, whose upper end is at least 65535.
    // Throws "nResult != 0" if the system cannot set the event: there are at most 16 events, and memory or a thread may
    // be missing. The timer period requested for the event then stays in force.
    static int InstallTimeEvent(unsigned int nDelay, unsigned int nResolution, tTimeEvent pCallback,
                                unsigned long ulUser, int nKind);
    // Does the same for a callback of the system's form. It is a template, since the two forms are one type where the
    // system has no calling convention of its own.
    template<int = 0>
    static int InstallTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                unsigned long ulUser, int nKind)
    {
        return InstallSystemTimeEvent(nDelay, nResolution, pCallback, ulUser, nKind);
    }

    // Ends an event; nPeriod is the nDelay of its installation. A call that has begun is completed. Throws
    // "mmres == TIMERR_NOERROR" if there is no such event, and if the system refuses to end the timer period. A single
    // call ends its event; whether the event still exists during that call depends on the system (on Linux it does
    // not). The application must uninstall every event before the callback's code is unloaded.
    static void UninstallTimeEvent(int nEvent, int nPeriod);

private:
    struct sTimeChannel
    {
        // All members are initialised, as they can be read before they are first set.
        bool bDefined = false;
        // This member alone makes the header include the string's header. It lies in the object, whose layout is given.
        CTOVStringA sName;
        bool bRunning = false;
        bool bPaused = false;
        long long nPauseTime = 0; // ticks of the time base at the pause
        bool bFrameTimeEnabled = false;
        double dFrameTime = 0.0;     // seconds, at the last update
        double dLastFrameTime = 0.0; // seconds, at the previous update
        double dFPS = 0.0;           // updates per second
        long long nStartTime = 0;    // ticks of the time base at which the channel's time is 0
    };

    static int InstallSystemTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                      unsigned long ulUser, int nKind);

    bool IsHighResolutionTimerAvailable() const; // asks the system at each call
    // Settled: nothing calls these two, but they are part of the exported design. UseHighResolutionTimer sets the time
    // base of later reads and converts nothing.
    bool IsHighResolutionTimerActive() const;
    void UseHighResolutionTimer(bool bUse);
    long long GetHardwareTime() const;           // ticks; a failure is logged and gives 0
    long long GetHardwareTimerFrequency() const; // ticks per second; a failure is logged and gives 0

    // Numbers and flags, also those of the channels, are read and written by TOVAtomic (Debug/TOVCompiler.h).
    bool m_bHighResolutionTimer; // the time base: true for the high-resolution counter, false for milliseconds
    sTimeChannel m_aChannels[TOV_TIMER_MAX_TIME_CHANNELS];
};

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVTimer>;
