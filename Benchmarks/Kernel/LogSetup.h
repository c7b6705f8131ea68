// Declares the listeners of the rows in which diagnostics are reported, and who hears them while a row runs.
#pragma once

#include <Bench.h>

#include <Debug/TOVDebugServer.h>
#include <Debug/TOVMSDevLogger.h>
#include <TOVPlatform/TOVString.h>

// Hears everything and does nothing, as a listener whose severity is off.
class CSilentListener : public TOVDebug::ITOVLogListener
{
public:
    void OnStartup() override {}
    void OnClosedown() override {}
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override {}
    void OnAssert(const char*, unsigned long, const char*) override {}
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}
};

// Formats each line into a buffer, as a listener does that writes it to a file.
class CFormattingListener : public CSilentListener
{
public:
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char* szFormat, va_list pArguments) override
    {
        char szBuffer[1024];
        TOVPlatform::TOVStringA::VSNPrintf(szBuffer, sizeof(szBuffer), szFormat, pArguments);
        Use(szBuffer);
    }
};

template<class TListener> class CWithListener
{
public:
    CWithListener() { TOVDebug::CTOVDebugServer::Instance().Register(&m_oListener); }
    ~CWithListener() { TOVDebug::CTOVDebugServer::Instance().Unregister(&m_oListener); }
    CWithListener(const CWithListener&) = delete;
    CWithListener& operator=(const CWithListener&) = delete;

private:
    TListener m_oListener;
};

// Takes the listener with which the library is shipped out for a while.
class CWithoutShippedListener
{
public:
    CWithoutShippedListener() { TOVDebug::CTOVDebugServer::Instance().Unregister(GetShipped()); }
    ~CWithoutShippedListener() { TOVDebug::CTOVDebugServer::Instance().Register(GetShipped()); }
    CWithoutShippedListener(const CWithoutShippedListener&) = delete;
    CWithoutShippedListener& operator=(const CWithoutShippedListener&) = delete;

private:
    static TOVDebug::ITOVLogListener* GetShipped()
    {
        return const_cast<TOVDebug::CTOVMSDevLogger*>(&TOVDebug::CTOVMSDevLogger::_m_this);
    }
};
