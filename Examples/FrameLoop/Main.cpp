// tovframes bounces a ball along a line. It shows a frame loop: time events begin the frames and end the loop, all that
// happens in a frame has the same time, and the timer knows the rate of the frames.
//
//   tovframes [MILLISECONDS]        1 to 65535, by default 3000
//
// Exit status: 0 done, 1 failed, 2 wrong usage.
#include <Debug/TOVException.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVEventCondition.h>
#include <TOVString/TOVStringA.h>
#include <Text/TOVStandardOutput.h>
#include <Timer/TOVTimer.h>

#include <cmath>
#include <cstdio>

namespace
{
constexpr int GAME = 0; // the time channel of all that moves

constexpr int FRAME_PERIOD = 20; // milliseconds
constexpr int LONGEST_RUN = 65535;

constexpr int WIDTH = 40;      // characters
constexpr double SPEED = 30.0; // characters per second

// A time event calls on a thread of the system, which may do little: these events hand the call over to the loop. A
// call that has begun may still go on when its time event has been uninstalled, so that they live as long as the
// process.
CTOVEvent g_oNextFrame;
CTOVEvent g_oEnd(true);

void SignalEvent(unsigned int, unsigned int, unsigned long ulEvent, unsigned long, unsigned long)
{
    reinterpret_cast<CTOVEvent*>(ulEvent)->Signal();
}

// Signals an event once, after the time; it needs no uninstalling after that.
void SignalLater(CTOVEvent& oEvent, int nMilliseconds)
{
    CTOVTimer::InstallTimeEvent(static_cast<unsigned int>(nMilliseconds), 0, &SignalEvent,
                                reinterpret_cast<unsigned long>(&oEvent), 0);
}

// Signals an event periodically, as long as this object exists.
class CTicker
{
public:
    CTicker(CTOVEvent& oEvent, int nPeriod)
        : m_nPeriod(nPeriod),
          m_nTimeEvent(CTOVTimer::InstallTimeEvent(static_cast<unsigned int>(nPeriod), 0, &SignalEvent,
                                                   reinterpret_cast<unsigned long>(&oEvent), 1))
    {
    }
    ~CTicker() { CTOVTimer::UninstallTimeEvent(m_nTimeEvent, m_nPeriod); }
    CTicker(const CTicker&) = delete;
    CTicker& operator=(const CTicker&) = delete;

private:
    const int m_nPeriod;
    const int m_nTimeEvent;
};

// The ball is turned back at both ends of the line.
int PlaceAfter(double dSeconds)
{
    const int nWay = static_cast<int>(std::fmod(dSeconds * SPEED, 2.0 * WIDTH));
    return nWay <= WIDTH ? nWay : 2 * WIDTH - nWay;
}

void Draw(int nPlace, double dFramesPerSecond)
{
    std::printf("\r|%*s%*s| %3.0f frames per second", nPlace + 1, "o", WIDTH - nPlace, "", dFramesPerSecond);
    std::fflush(stdout);
}

void RunLoop(int nMilliseconds)
{
    CTOVTimer oTimer;
    oTimer.DefineChannel(GAME, "game");
    oTimer.Start(GAME);
    oTimer.EnableFrameTime(GAME);

    const CTicker oTicker(g_oNextFrame, FRAME_PERIOD);
    SignalLater(g_oEnd, nMilliseconds);

    CTOVEvent* apEvents[] = {&g_oEnd, &g_oNextFrame};
    CTOVEventCondition oEither(CTOVEventCondition::eConditionTypeAny, apEvents, 2);
    int nFrames = 0;
    while (oEither.Wait() != 0) // 0: the end, which comes before a frame
    {
        oTimer.UpdateAll();
        ++nFrames;
        Draw(PlaceAfter(oTimer.GetFrameTime(GAME)), oTimer.GetFPS(GAME));
    }
    std::printf("\n%d frames in %.2f seconds\n", nFrames, oTimer.GetTime(GAME));
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    const int nMilliseconds = nArguments == 2 ? CTOVStringA(aszArguments[1]).AsInt() : 3000;
    if (nArguments > 2 || nMilliseconds < 1 || nMilliseconds > LONGEST_RUN)
    {
        std::fprintf(stderr, "usage: tovframes [MILLISECONDS], 1 to %d\n", LONGEST_RUN);
        return 2;
    }
    try
    {
        RunLoop(nMilliseconds);
        return TOVShownText::FinishProgram("tovframes", 0);
    }
    // GCOVR_EXCL_START: the system of the tests has time events.
    catch (const TOVDebug::CTOVAssertException&)
    {
        std::fputs("tovframes: the system has no time events\n", stderr);
        return 1;
    }
    // GCOVR_EXCL_STOP
}
