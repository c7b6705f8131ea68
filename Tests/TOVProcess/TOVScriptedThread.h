// A worker thread that does what a test tells it.
#pragma once

#include "Support/TOVWaitInstruments.h"

#include <TOVProcess/TOVThread.h>

#include <atomic>
#include <functional>
#include <string>
#include <vector>

class CScriptedThread : public CTOVThread
{
public:
    explicit CScriptedThread(bool bAutoDelete = false) : CTOVThread(bAutoDelete) {}

    CScriptedThread(const CScriptedThread& oOther) : CTOVThread(oOther) {}

    CScriptedThread& operator=(const CScriptedThread& oOther)
    {
        CTOVThread::operator=(oOther);
        return *this;
    }

    // What each operation does beyond that of the base class, on the new thread.
    std::function<bool()> m_fnInit;
    std::function<void()> m_fnRun;
    std::function<void()> m_fnExit;
    std::function<void()> m_fnDelete;
    unsigned long m_ulRunResult = 0;

    ~CScriptedThread() override
    {
        if (m_fnDelete)
            m_fnDelete();
    }

    bool InitInstance() override { return CTOVThread::InitInstance() && (!m_fnInit || m_fnInit()); }

    void ExitInstance() override
    {
        CTOVThread::ExitInstance();
        if (m_fnExit)
            m_fnExit();
    }

    unsigned long Run() override
    {
        if (m_fnRun)
            m_fnRun();
        return m_ulRunResult;
    }

    unsigned long long Handle() const { return m_hThread; }
    unsigned long Id() const { return m_ulThreadId; }
    bool DeletesItself() const { return m_bAutoDelete; }

    bool StartNormally(unsigned long ulUserParam = 0)
    {
        return Start(ulUserParam, TOVPlatform::TOVThread::eThreadPriorityNormal);
    }

    // Starts it; whether it comes to its end before the deadline.
    bool RunsToItsEnd(unsigned long ulUserParam = 0) { return StartNormally(ulUserParam) && Ends(); }

    // Whether the thread last started comes to its end before the deadline.
    bool Ends() const { return HasEnded(Handle(), DEADLINE); }
    bool HasEnded() const { return HasEnded(Handle(), 0); }

    static bool HasEnded(unsigned long long hThread, long lMilliseconds)
    {
        return WaitForAny({hThread}, lMilliseconds) == 0;
    }
};

typedef std::vector<std::string> tRecord;

// Records the virtual calls that it gets; its answers can be set.
class CRecordingThread : public CScriptedThread
{
public:
    bool Stop(bool bWait, unsigned long ulTimeout) override
    {
        m_aRecord.push_back("Stop " + std::to_string(bWait) + ' ' + std::to_string(ulTimeout));
        // Less time than asked for: a stubborn Run need not hold the test up.
        return m_bStops ? CTOVThread::Stop(bWait, 0) : false;
    }

    bool IsRunning() const override
    {
        m_aRecord.push_back("IsRunning");
        return m_bAnswers ? m_bRunning : CTOVThread::IsRunning();
    }

    mutable tRecord m_aRecord;
    bool m_bStops = true;
    bool m_bAnswers = false;
    bool m_bRunning = false;
};

// Its Run goes on until the gate is opened, whatever is asked of it.
class CStubbornThread : public CScriptedThread
{
public:
    CStubbornThread()
    {
        m_fnRun = [this] {
            m_oEntered.Add();
            m_oMayEnd.Wait();
        };
    }

    ~CStubbornThread() override { LetGo(); }

    // Starts it; whether it reaches its Run before the deadline.
    bool GetsToWork() { return StartNormally() && m_oEntered.Reaches(1); }

    void LetGo()
    {
        m_oMayEnd.Open();
        if (Handle() != 0)
        {
            EXPECT_TRUE(Ends());
        }
    }

    CTally m_oEntered;
    CGate m_oMayEnd;
};
