// Declares CTOVThread, the base class of worker threads.
#pragma once

#include <TOVPlatform/TOVThread.h>

// A subclass implements Run, and InitInstance and ExitInstance if it needs them. Stopping is cooperative: Stop sets a
// flag; Run polls IsStopPending and returns. A thread is never killed. One object can be started repeatedly, one thread
// after the other.
//
//   Start                  new thread
//     |-- create ----------> InitInstance --false--> logged; the thread ends, with neither Run nor ExitInstance
//     |                      Run
//   Stop -- the flag ------>   |  IsStopPending() true, returns
//     |                      ExitInstance
//     |                      deletes the object, if so constructed
//   Stop <-- waits -------- end
//
// The destructor neither stops the thread nor waits for it: a subclass that can be destroyed during a run must stop its
// thread first, in its own destructor. Handles are not closed, so that each start keeps a system thread object until
// the process ends. A copy is another object for the same thread; copying starts nothing.
//
// Call Start and Stop from one controlling thread; Run, InitInstance and ExitInstance are called on the new thread.
// Stop sets an atomic flag without memory ordering: it publishes no other data. If an object deletes itself, no other
// thread may control it once it runs.
class TOV_EXPORT CTOVThread
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVThread();

    // Called on the new thread before Run. If it returns false, the thread ends at once, which is logged. Settled: an
    // object that should delete itself is not deleted then.
    virtual bool InitInstance();

    // Called on the new thread after Run.
    virtual void ExitInstance();

    // Starts the thread. Returns false if the system cannot start it. If the object has been started before, its old
    // thread is first asked to stop and has 10 seconds to do so; if it does not, it continues to run on the same
    // object, unsupervised. The priority is set when the new thread is already running. Only the low 32 bits of the
    // parameter are kept.
    virtual bool Start(unsigned long ulUserParam, TOVPlatform::TOVThread::eThreadPriority ePriority);

    // Sets the flag that IsStopPending reads, if the object has been started. With bWait it then waits until the thread
    // ends, for ulTimeout milliseconds; 0xFFFFFFFF waits without a limit. Settled: it returns true even if the time has
    // run out.
    virtual bool Stop(bool bWait, unsigned long ulTimeout);

    // Does the work, on the new thread. An exception that leaves it ends the process. Nothing reads the result.
    virtual unsigned long Run() = 0;

    // Returns whether Stop was called since the last start. Run polls it.
    virtual bool IsStopPending() const;

    // Settled: returns true from the first start on, even after the thread has ended. On the new thread it returns true
    // from the beginning, even before Start has returned, so that the thread can stop itself.
    virtual bool IsRunning() const;

    // With bAutoDelete the thread deletes the object as its last step; the object must then be on the heap. With bStart
    // this constructor starts the thread before the subclass is constructed, so that the new thread may call the
    // operations of this class only. As Run is pure here, calling it ends the process: a subclass should start its
    // thread when it is complete.
    CTOVThread(bool bAutoDelete = false, bool bStart = false);
    CTOVThread(const CTOVThread& oOther);
    CTOVThread& operator=(const CTOVThread& oOther);

    // These call the functions of TOVPlatform::TOVThread for the thread that was started last.
    void SetPriority(TOVPlatform::TOVThread::eThreadPriority ePriority);
    TOVPlatform::TOVThread::eThreadPriority GetPriority() const;

    // Returns the value passed to Start, for Run to read.
    unsigned long GetUserParam() const;

protected:
    // This class reads and writes these members by TOVAtomic (Debug/TOVCompiler.h), since both threads use them. A
    // subclass must do so too where it reads what the other thread may be writing: the id at the end of the work, and
    // the flag of Stop.
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
