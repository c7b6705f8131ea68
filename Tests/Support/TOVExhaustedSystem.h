// A system that has nothing more to give.
#pragma once

#include "Support/TOVAllocationCounter.h"

#include <Debug/TOVLogListener.h>

#include <memory>
#include <vector>

#if TOV_CAN_FAIL_ALLOCATIONS
// While it lives, the library cannot create an event, a mutex, a semaphore, a critical section or a thread on the
// calling thread: there is no memory, and on Windows the system's functions fail too. The test must not allocate, and
// so must not call googletest, before the end of its life.
class CExhaustedSystem
{
public:
    CExhaustedSystem();
    ~CExhaustedSystem();
    CExhaustedSystem(const CExhaustedSystem&) = delete;
    CExhaustedSystem& operator=(const CExhaustedSystem&) = delete;

private:
    struct sRefusals;

    std::unique_ptr<sRefusals> m_pRefusals;
    std::unique_ptr<CAllocationFailure> m_pFailure;
    std::vector<unsigned long long> m_aEvents;
    std::vector<unsigned long long> m_aCriticalSections;
};

// Remembers the last line and the last check that it hears while it lives, without an allocation. The arguments tell
// where the test makes it.
class CQuietRecorder : public TOVDebug::ITOVLogListener
{
public:
    explicit CQuietRecorder(const char* szTestFile = __builtin_FILE(), int nTestLine = __builtin_LINE());
    virtual ~CQuietRecorder();
    CQuietRecorder(const CQuietRecorder&) = delete;
    CQuietRecorder& operator=(const CQuietRecorder&) = delete;

    void OnStartup() override;
    void OnClosedown() override;
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;
    void SetApplicationName(const char* szName) override;

    // Both texts are empty and the severity is 0 before anything is heard.
    const char* File() const { return m_szFile; }
    const char* Text() const { return m_szText; }
    const char* Format() const { return m_szFormat; }
    int Severity() const { return m_nSeverity; }
    int Count() const { return m_nCount; }

private:
    const char* m_szTestFile;
    int m_nTestLine;
    char m_szFile[256] = "";
    char m_szFormat[256] = "";
    char m_szText[1024] = "";
    int m_nSeverity = 0;
    int m_nCount = 0;
    unsigned long m_ulCheckLine = 0; // 0 unless a check was heard last
};
#endif
