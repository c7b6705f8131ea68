// Declares CTOVTestSender and ReceiveTestEvents, which pass the events of a test run from one process to another.
#pragma once

#include <TestHost/TOVTestEvents.h>
#include <TestHost/TOVTestSystem.h>

#include <functional>

namespace TOVTestHost
{
// What the parent asks of a worker: where in the plan it begins, and the order of the plan.
struct sWorkerTask
{
    sTestPosition oStart;
    unsigned long ulSeed;
};

// These pass the task to the worker, which receives it before it sends anything. They return false if the other process
// has ended.
bool SendTask(ITOVProcessLink& oLink, const sWorkerTask& oTask);
bool ReceiveTask(ITOVProcessLink& oLink, sWorkerTask& oTask);

// Sends the events in the worker process. The worker continues only when the parent has acknowledged an event, so that
// the output of the cases appears between the lines of the right events. If the parent has ended, the worker ends at
// once.
class CTOVTestSender : public ITOVTestEvents
{
public:
    void OnPlan(const sTestPlan& oPlan) override;
    void OnEnterRun() override;
    void OnLeaveRun() override;
    void OnEnterSuite(const sTestPlace& oSuite) override;
    void OnLeaveSuite() override;
    void OnEnterCase(const sTestPlace& oCase) override;
    void OnLeaveCase() override;
    void OnCloseCase() override;
    void OnNote(const sTestNote& oNote) override;
    void OnEndEarly(const std::string& sReason) override;

    explicit CTOVTestSender(ITOVProcessLink& oLink);

    // Tells the parent that no further events follow; call it in any case. sError is the reason if there was no run,
    // else empty.
    void SendDone(const std::string& sError);

private:
    void Send(char cEvent, const std::vector<std::string>& aFields);

    ITOVProcessLink& m_oLink;
};

// Receives the events in the parent process, and passes them on until the worker has ended. fnWatch is called before
// each event, and again and again while the worker is busy; it may end the worker. Returns false if the worker ended
// before SendDone. Throws std::runtime_error with the error that the worker has sent.
bool ReceiveTestEvents(ITOVWorkerLink& oLink, ITOVTestEvents& oEvents, const std::function<void()>& fnWatch);
} // namespace TOVTestHost
