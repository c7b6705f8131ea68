// What becomes of the events of a run when one of the two processes has ended.
#include "Support/TOVTestSupport.h"

#include <TestHost/TOVTestChannel.h>

#include <cstring>
#include <stdexcept>

using namespace TOVTestHost;

namespace
{
// Holds what was written, acknowledges every event, and ends where its bytes do.
class CMemoryLink : public ITOVWorkerLink
{
public:
    bool Write(const void* pBytes, std::size_t nBytes) override
    {
        if (nBytes > 1) // the other side only acknowledges
            m_sBytes.append(static_cast<const char*>(pBytes), nBytes);
        return m_bOpen;
    }

    bool Read(void* pBytes, std::size_t nBytes) override
    {
        if (m_bFails)
            throw std::runtime_error("no connection");
        if (m_bSends)
            return true;
        if (m_sBytes.size() - m_nNext < nBytes)
            return false;
        std::memcpy(pBytes, m_sBytes.data() + m_nNext, nBytes);
        m_nNext += nBytes;
        return true;
    }

    std::string TakeOutput(eTestStream /*eStream*/) override { return ""; }
    bool HasEnded() override { return false; }
    void End() override {}
    sWorkerEnd WaitForEnd() override { return {"", false}; }

    std::string m_sBytes;
    std::size_t m_nNext = 0;
    bool m_bSends = true;
    bool m_bOpen = true;
    bool m_bFails = false;
};

// Writes down what it hears.
class CEventRecorder : public ITOVTestEvents
{
public:
    void OnPlan(const sTestPlan& oPlan) override { m_sHeard += "plan " + std::to_string(oPlan.aSuites.size()) + ";"; }
    void OnEnterRun() override { m_sHeard += "run;"; }
    void OnLeaveRun() override { m_sHeard += "end;"; }
    void OnEnterSuite(const sTestPlace& oSuite) override { m_sHeard += oSuite.sDescription + ";"; }
    void OnLeaveSuite() override { m_sHeard += "left;"; }
    void OnEnterCase(const sTestPlace& oCase) override { m_sHeard += oCase.sDescription + ";"; }
    void OnLeaveCase() override { m_sHeard += "left;"; }
    void OnCloseCase() override { m_sHeard += "closed;"; }
    void OnNote(const sTestNote& oNote) override { m_sHeard += oNote.sMessage + ";"; }
    void OnEndEarly(const std::string& sReason) override { m_sHeard += sReason + ";"; }

    std::string m_sHeard;
};

// A run with one of each event.
void SendRun(CTOVTestSender& oSender)
{
    const sTestPlace oSuite = {"suite", "file.cpp", 7};
    const sTestPlace oCase = {"case", "file.cpp", 8};
    oSender.OnPlan({{{oSuite, {oCase}}}, 1});
    oSender.OnEnterRun();
    oSender.OnEnterSuite(oSuite);
    oSender.OnEnterCase(oCase);
    oSender.OnNote({eNoteFailure, "type", "file.cpp", 9, "note", {{"actual", "3"}}});
    oSender.OnLeaveCase();
    oSender.OnCloseCase();
    oSender.OnLeaveSuite();
    oSender.OnLeaveRun();
    oSender.SendDone("");
}

constexpr char HEARD[] = "plan 1;run;suite;case;note;left;closed;left;end;";
} // namespace

TEST(HostChannelTest, HandsOnEveryEvent)
{
    CMemoryLink oLink;
    CTOVTestSender oSender(oLink);
    SendRun(oSender);
    oLink.m_bSends = false;
    CEventRecorder oRecorder;

    EXPECT_TRUE(ReceiveTestEvents(oLink, oRecorder, [] {}));

    EXPECT_EQ(HEARD, oRecorder.m_sHeard);
}

TEST(HostChannelTest, ThrowsToTheCallerWhatTheConnectionThrows)
{
    CMemoryLink oLink;
    oLink.m_bFails = true;
    CEventRecorder oRecorder;

    EXPECT_THROW(ReceiveTestEvents(oLink, oRecorder, [] {}), std::runtime_error);

    EXPECT_EQ("", oRecorder.m_sHeard);
}

TEST(HostChannelTest, TellsThatThereIsNoTask)
{
    CMemoryLink oLink;
    oLink.m_bSends = false;
    sWorkerTask oTask = {};

    EXPECT_FALSE(ReceiveTask(oLink, oTask));
}

TEST(HostChannelTest, TellsOfAWorkerThatEndsAnywhere)
{
    CMemoryLink oWhole;
    CTOVTestSender oSender(oWhole);
    SendRun(oSender);
    for (std::size_t nBytes = 0; nBytes < oWhole.m_sBytes.size(); ++nBytes)
    {
        CMemoryLink oLink;
        oLink.m_bSends = false;
        oLink.m_sBytes = oWhole.m_sBytes.substr(0, nBytes);
        CEventRecorder oRecorder;

        EXPECT_FALSE(ReceiveTestEvents(oLink, oRecorder, [] {})) << nBytes;
        EXPECT_EQ(0, std::string(HEARD).compare(0, oRecorder.m_sHeard.size(), oRecorder.m_sHeard)) << nBytes;
    }
}

TEST(HostChannelTest, EndsAWorkerThatNobodyListensTo)
{
    EXPECT_EQ(1, RunChild("SendsToNobody").nExitCode);
}

TOV_CHILD(SendsToNobody)
{
    CMemoryLink oLink;
    oLink.m_bOpen = false;
    CTOVTestSender(oLink).OnEnterRun();
}
