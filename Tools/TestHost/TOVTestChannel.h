// The events of a test run on their way from one process to another.
#pragma once

#include <TestHost/TOVTestEvents.h>
#include <TestHost/TOVTestSystem.h>

namespace TOVTestHost
{
// In the worker. Each event is acknowledged before the worker goes on, so that what the cases print comes out between
// the lines of the right events. When the parent has gone, the worker ends at once.
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

    // At the end, whatever the end was; with what stood against a run, where there was none.
    void SendDone(const std::string& sError);

private:
    void Send(char cEvent, const std::vector<std::string>& aFields);

    ITOVProcessLink& m_oLink;
};

// In the parent: hands events on until the worker has gone. False if it went before it was done. Throws
// std::runtime_error with an error that was sent.
bool ReceiveTestEvents(ITOVProcessLink& oLink, ITOVTestEvents& oEvents);
} // namespace TOVTestHost
