// What the tests of time events share.
#pragma once

#include "Support/TOVTestSupport.h"
#include "Support/TOVWaitInstruments.h"

#include <Timer/TOVTimer.h>

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

constexpr int ONE_SHOT = 0;
constexpr int PERIODIC = 1;

constexpr char KILL_CHECK[] = "mmres == TIMERR_NOERROR";
constexpr char SET_CHECK[] = "nResult != 0";

struct sTimeEventCall
{
    int nEvent;
    unsigned long ulUser;
    std::thread::id oThread;
};

// A time event that remembers its calls and does what a test tells it in each of them. Uninstalls itself at the end, if
// it is periodic; calls that are still to come then find nobody.
class CTimeEvent
{
public:
    CTimeEvent();
    ~CTimeEvent();
    CTimeEvent(const CTimeEvent&) = delete;
    CTimeEvent& operator=(const CTimeEvent&) = delete;

    // Done in each call, with its number, which begins with 1. Set it before the installation.
    std::function<void(int nCall, const sTimeEventCall& oCall)> m_fnAction;

    // The identifier, or -1. Resolution 0, and the plain form of the callback.
    int Install(int nPeriod, int nKind);

    // Of the event installed last.
    void Uninstall();

    // The calls that have begun.
    int Count() const;
    bool Reaches(int nCount);
    bool Stays(int nCount);
    std::vector<sTimeEventCall> Calls() const;

    // What is handed to the callback.
    unsigned long User() const { return m_ulUser; }

    static void OnTimeEvent(unsigned int nEvent, unsigned int nMessage, unsigned long ulUser, unsigned long ulReserved1,
                            unsigned long ulReserved2);

private:
    struct sState;
    const std::shared_ptr<sState> m_pState;
    const unsigned long m_ulUser;
    int m_nEvent = -1;
    int m_nPeriod = 0;
    int m_nKind = ONE_SHOT;
};

// Has another event called a few times, so that one with a short period that were still alive would be called as well.
void LetEventsPass();
