// What the tests of one server and its listeners share.
#pragma once

#include "Debug/TOVDebugInstruments.h"
#include "Support/TOVBlockableThread.h"

#include <memory>

// A server of its own with three listeners that write into one record.
class CTOVDebugServerFixture : public testing::Test
{
protected:
    CTOVDebugServerFixture()
        : m_oA("A", m_aRecord), m_oB("B", m_aRecord), m_oC("C", m_aRecord), m_pServer(std::make_unique<COpenServer>()),
          m_oServer(*m_pServer)
    {
    }

    void RegisterAll()
    {
        m_oServer.Register(&m_oA);
        m_oServer.Register(&m_oB);
        m_oServer.Register(&m_oC);
        m_aRecord.clear();
    }

    void Log() { m_oServer.OnLog("File", 1, eSeverityInfo, "%s", "text"); }

    // What Log makes the named listeners write.
    static tRecord Logged(const std::string& sNames)
    {
        tRecord aLogged;
        for (const char cName : sNames)
            aLogged.push_back(std::string(1, cName) + " log File(1) 200: text");
        return aLogged;
    }

    // Whether another thread has to wait for the server's lock.
    bool IsLocked()
    {
        if (m_pOther == nullptr)
            m_pOther = std::make_unique<CBlockableThread>([this] {
                m_oServer.LockLoggers();
                m_oServer.UnlockLoggers();
            });
        return m_pOther->IsBlocked();
    }

    tRecord m_aRecord;
    CRecordingListener m_oA;
    CRecordingListener m_oB;
    CRecordingListener m_oC;
    const std::unique_ptr<COpenServer> m_pServer; // goes before the listeners, since it closes them down
    COpenServer& m_oServer;
    std::unique_ptr<CBlockableThread> m_pOther; // first to go, since it uses the server
};
