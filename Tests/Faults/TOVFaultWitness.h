// Another thread, which shows that a fault has left no lock taken.
#pragma once

#include "Support/TOVTestSupport.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

// A thread that uses what the whole process shares: it logs, opens a file and a search, and makes a named object. It
// never sees a fault.
class CFaultWitness
{
public:
    CFaultWitness();
    ~CFaultWitness();
    CFaultWitness(const CFaultWitness&) = delete;
    CFaultWitness& operator=(const CFaultWitness&) = delete;

    // Returns whether all that succeeds. A thread that is not done at a deadline ends the process.
    bool CanWork();

private:
    void Serve();
    bool Work() const;

    const CTempFolder m_oFolder;
    const std::string m_sFile;
    std::mutex m_oMutex;
    std::condition_variable m_oChanged;
    bool m_bAsked = false;
    bool m_bEnding = false;
    bool m_bResult = false;
    std::thread m_oThread;
};
