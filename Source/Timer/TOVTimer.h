// The process-wide clock: stopwatches, frame time and calls after a delay.
#pragma once

#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVString/TOVStringA.h>

// Number of time channels of a timer.
#define TOV_TIMER_MAX_TIME_CHANNELS 4

// Four time channels, each a stopwatch that is known by its index from 0 to 3 and bears a name. Times are seconds.
//
//   undefined --DefineChannel--> stopped --Start--> running --Pause--> running and paused
//             <--UndefineChannel-- (any)  <--Stop--          <--Continue--
//
// The time base is chosen once, by the constructor: the system's high-resolution counter, or its millisecond counter
// where that fails. A high-resolution read that fails later is logged and counts as 0; nothing falls back. A frequency
// that cannot be read counts as 0 as well, so that times are infinite or not a number then.
//
// Failed checks throw TOVDebug::CTOVAssertException. Where a range is said to be checked, the check is
// "(0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS)"; where a channel has to be defined, that with
// " && IsDefined(nChannel)"; where it has to run, that with " && IsDefinedAndRunning(nChannel)".
//
// Reading a time costs one read of the counter and one of its frequency. No lock: what changes a channel belongs to one
// thread. Others may read times, rates and states meanwhile, each of which is whole, but no names. Copies are timers of
// their own and take the channels as they stand, the rates and frozen times included.
//
// What allocates: DefineChannel, for the name; UndefineChannel, where a copy of the timer shares that name; copying a
// timer; Instance, if there is none yet; InstallTimeEvent, and for the first event the system starts a thread. A
// warning in the log allocates if it has 1024 characters or more, which takes a long name. Nothing else does.
class TOV_EXPORT CTOVTimer
{
public:
    // Callback of a time event, in the plain form and in the form of the system's own timer, which differ on Windows by
    // the calling convention: the event's identifier, a message and the value given at the installation. The message
    // and the last two mean nothing.
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

    // The timer of the process, created if there is none.
    static CTOVTimer& Instance();

    // Makes a channel that stands still at 0. False, with nothing changed, for an index out of range or a defined
    // channel. NULL is the empty name, and a value below 0x10000 is a string id, as for CTOVStringA; names need not
    // differ. The frame rate keeps what it held. Settled: the channel is defined before it is named. What the naming
    // throws leaves it defined, without a name, and otherwise as its last definition left it.
    bool DefineChannel(int nChannel, const char* szName);
    // Gives up the channel and empties its name; everything else stays until the next definition. False for an index
    // out of range alone.
    bool UndefineChannel(int nChannel);

    // The capacity, 4, however many channels are defined.
    int GetNumChannels() const;
    // The lowest defined channel of this name without regard to case, -1 if there is none. NULL is the empty name.
    int GetChannelByName(const char* szName) const;
    // Empty for an undefined channel. Valid until the channel is defined or undefined. Checks the range.
    const char* GetChannelName(int nChannel) const;

    // State. They check the range.
    bool IsDefined(int nChannel) const;
    bool IsRunning(int nChannel) const; // of an undefined channel: what it last was
    bool IsPaused(int nChannel) const;  // the same
    bool IsDefinedAndRunning(int nChannel) const;

    // Runs the channel from 0, also one that is running. Settled: one that was paused is paused still, and stands
    // before 0. Checks that it is defined.
    void Start(int nChannel);
    // Its time reads 0 until the next Start. Checks that it is defined.
    void Stop(int nChannel);

    // These check that the channel is running.

    // Back to 0. Settled: a paused channel stands before 0 then, by the time that has passed since the pause.
    void Reset(int nChannel);
    // Goes on from the given time, negative ones included; the frame time becomes it, if enabled. Settled: a paused
    // channel reads 0, and goes on from there.
    void SetTime(int nChannel, double dTime);
    // Holds the time. Logs a warning for a paused channel.
    void Pause(int nChannel);
    // Lets the time go on. Logs a warning for a channel that is not paused.
    void Continue(int nChannel);

    // The channel's time in seconds; 0 if it is not defined and running. Negative for a channel that was reset, or
    // stopped and started, while paused. Checks the range.
    double GetTime(int nChannel) const;
    // The same in milliseconds, without the fraction, and of that the low 32 bits: it starts again at 0 after 49 days.
    unsigned long GetTimeInMs(int nChannel) const;
    // Time since the zero of the time base, in seconds and as 32-bit milliseconds. No channel takes part.
    double GetTimeDirect() const;
    unsigned long GetTimeInMsDirect() const;

    // Frame time: one time for everything in a frame, and the rate of the updates.

    // Holds the frame time at the channel's present time until the next update. Checks that the channel is running.
    void EnableFrameTime(int nChannel);
    void DisableFrameTime(int nChannel);
    bool IsFrameTimeEnabled(int nChannel) const; // checks the range
    // The time of the last update if frame time is enabled, else GetTime; 0 if the channel is not defined and running.
    // Checks the range.
    double GetFrameTime(int nChannel) const;
    // 1 divided by the seconds between the last two updates; 0 if time did not go forward. No smoothing. Asks for no
    // state: a stopped or redefined channel gives the last value, a new one 0. Checks the range.
    double GetFPS(int nChannel) const;
    // Takes the channel's time for the frame, enabled or not. Nothing if it is not defined and running. Checks the
    // range.
    void Update(int nChannel);
    // Updates all channels that are defined and running.
    void UpdateAll();

    // Time events: calls after a delay, once or again and again, by the system and without any timer object. The
    // callback runs on a thread of the system's timer service, which serves all events one after the other: it is to be
    // short, sees to its own locking, and lets no exception out. It may install and uninstall events, its own included.

    // Calls back after nDelay milliseconds, with nKind 1 again and again at this period, otherwise once. The resolution
    // in milliseconds is a wish, 0 for the best. A period does not drift; calls that are held up follow without pause,
    // and of many, the oldest can be lost. With NULL nothing is called. The identifier of the event; -1, with nothing
    // installed, if the system refuses the delay as its timer's period: 0 always, and what is beyond its range, which
    // reaches to 65535 at least. Throws "nResult != 0" if the system cannot set the event: it has 16 of them, and needs
    // memory or a thread for some. The period stays raised then.
    static int InstallTimeEvent(unsigned int nDelay, unsigned int nResolution, tTimeEvent pCallback,
                                unsigned long ulUser, int nKind);
    // The same for a callback of the system's form; a template, since both forms are one where the system has no
    // calling convention of its own.
    template<int = 0>
    static int InstallTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                unsigned long ulUser, int nKind)
    {
        return InstallSystemTimeEvent(nDelay, nResolution, pCallback, ulUser, nKind);
    }

    // Ends an event, with the delay given at its installation as the period. A call that has begun goes on. Throws
    // "mmres == TIMERR_NOERROR" if there is no such event, and if the system refuses to lower the period. An event of
    // one call is gone after it; whether it still is there in the call is the system's affair (on Linux it is not).
    // Every event is to be uninstalled before its callback goes away; nobody else does it.
    static void UninstallTimeEvent(int nEvent, int nPeriod);

private:
    struct sTimeChannel
    {
        // Only bDefined has to have a value from the start; the others are read at times before they are first set.
        bool bDefined = false;
        CTOVStringA sName;
        bool bRunning = false;
        bool bPaused = false;
        long long nPauseTime = 0; // ticks of the time base at the pause
        bool bFrameTimeEnabled = false;
        double dFrameTime = 0.0;     // seconds, at the last update
        double dLastFrameTime = 0.0; // seconds, at the update before
        double dFPS = 0.0;           // updates per second
        long long nStartTime = 0;    // ticks of the time base that are the channel's time 0
    };

    static int InstallSystemTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                      unsigned long ulUser, int nKind);

    bool IsHighResolutionTimerAvailable() const; // asks the system now
    bool IsHighResolutionTimerActive() const;
    void UseHighResolutionTimer(bool bUse);      // the next read is of this base; nothing is converted
    long long GetHardwareTime() const;           // ticks; a failure is logged and gives 0
    long long GetHardwareTimerFrequency() const; // ticks per second; a failure is logged and gives 0

    // Numbers and flags, those of the channels too, are read and written by TOVAtomic (Debug/TOVCompiler.h).
    bool m_bHighResolutionTimer; // the time base: the high-resolution counter, else milliseconds
    sTimeChannel m_aChannels[TOV_TIMER_MAX_TIME_CHANNELS];
};

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVTimer>;
