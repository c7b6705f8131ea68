// Base class of worker threads.
#pragma once

#include <TOVPlatform/TOVThread.h>

// A subclass supplies Run, and InitInstance and ExitInstance if it needs them. Stopping is cooperative: Stop sets a
// flag, Run polls IsStopPending and returns. A thread is never killed. One object can be started many times in turn.
//
//   Start                  new thread
//     |-- create ----------> InitInstance --false--> logged; the thread ends, with neither Run nor ExitInstance
//     |                      Run
//   Stop -- the flag ------>   |  IsStopPending() true, returns
//     |                      ExitInstance
//     |                      deletes the object, if so constructed
//   Stop <-- waits -------- end
//
// The destructor neither stops the thread nor waits for it: a subclass that can be destroyed during a run stops its
// thread first, in its own destructor. Handles are not closed, so each start keeps a system thread object for the rest
// of the process. Copies are further objects for the same thread; nothing is started.
//
// Threads: Start and Stop from one controlling thread; Run and its companions on the new one. Nothing is ordered by the
// flag of Stop but the flag itself. An object that deletes itself is not controlled from outside once it runs.
class TOV_EXPORT CTOVThread
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVThread();

    // Called on the new thread before Run; false ends it at once, which is logged. Then an object that deletes itself
    // is, settled, not deleted.
    virtual bool InitInstance();

    // Called on the new thread after Run.
    virtual void ExitInstance();

    // Starts the thread; false if the system cannot. If the object has been started before, its old thread is asked to
    // stop and gets 10 seconds for it; one that does not stop in that time runs on, unsupervised, on the same object.
    // The priority is set when the thread is already running. 32 bits of the parameter are kept.
    virtual bool Start(unsigned long ulUserParam, TOVPlatform::TOVThread::eThreadPriority ePriority);

    // Sets the flag that IsStopPending reads, if the object has been started, and with bWait waits for the thread's
    // end: milliseconds, 0xFFFFFFFF for ever. Settled: the result is true also when the time ran out.
    virtual bool Stop(bool bWait, unsigned long ulTimeout);

    // The work, on the new thread. An exception that leaves it ends the process. Nothing reads the result.
    virtual unsigned long Run() = 0;

    virtual bool IsStopPending() const;

    // Settled: true from the first start on, also after the thread has ended. True on the new thread from the
    // beginning, so that it can stop itself, although Start may not have returned.
    virtual bool IsRunning() const;

    // bAutoDelete: the thread deletes the object, which stands on the heap then, as its last act. bStart: starts it
    // from this constructor, before the subclass is built, so that the new thread may find the base operations only;
    // since Run is pure among them, which ends the process, a subclass rather starts its thread when it is complete.
    CTOVThread(bool bAutoDelete = false, bool bStart = false);
    CTOVThread(const CTOVThread& oOther);
    CTOVThread& operator=(const CTOVThread& oOther);

    // As in TOVPlatform::TOVThread, for the thread last started.
    void SetPriority(TOVPlatform::TOVThread::eThreadPriority ePriority);
    TOVPlatform::TOVThread::eThreadPriority GetPriority() const;

    // The value given to Start, for Run to read.
    unsigned long GetUserParam() const;

protected:
    // This class reads and writes them by TOVAtomic (Debug/TOVCompiler.h), since both threads use them. A subclass does
    // so too where it reads what the other thread may be writing: the id at the end of the work, the flag of Stop.
    unsigned long m_ulThreadId; // the system's id; 0 before a start and after the work
    tHandle m_hThread;          // 0 until the first start
    unsigned long m_ulUserParam;
    bool m_bStopPending;
    bool m_bAutoDelete;

private:
    bool StartNew(unsigned long ulUserParam, TOVPlatform::TOVThread::eThreadPriority ePriority);
    void CopyMembers(const CTOVThread& oOther);

    static unsigned long ThreadProcess(unsigned long long ullParam);
};
