// Instruments that the tests of all folders share.
#pragma once

#include <Debug/TOVDebug.h>
#include <Debug/TOVDebugServer.h>
#include <Debug/TOVLogListener.h>

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

// What a listener heard.
struct sLogLine
{
    std::string sFile;
    unsigned long ulLine;
    eTOVDebugSeverity eSeverity;
    std::string sText;
};

struct sCheck
{
    std::string sFile;
    unsigned long ulLine;
    std::string sExpression;
};

// Keeps all calls that the debug server makes to its listeners while this object exists.
class CLogRecorder : public TOVDebug::ITOVLogListener
{
public:
    CLogRecorder();
    virtual ~CLogRecorder();
    CLogRecorder(const CLogRecorder&) = delete;
    CLogRecorder& operator=(const CLogRecorder&) = delete;

    void OnStartup() override;
    void OnClosedown() override;
    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override;
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override;
    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override;
    void SetApplicationName(const char* szName) override;

    std::vector<sLogLine> Lines() const;
    std::vector<sCheck> Checks() const;

    // How many lines contain the text.
    int CountLines(const std::string& sPart) const;

    // Whether a check with exactly this text was heard, from a file whose name contains the part. The last two
    // arguments tell where the test asks.
    bool SawCheck(const std::string& sFilePart, const std::string& sExpression,
                  const char* szTestFile = __builtin_FILE(), int nTestLine = __builtin_LINE()) const;

    // All checks that were heard, for messages.
    std::string DescribeChecks() const;

private:
    mutable std::mutex m_oMutex;
    std::vector<sLogLine> m_aLines;
    std::vector<sCheck> m_aChecks;
};

// The statement fails the check of this text, reported from a file whose name contains the part: it throws, and a
// listener saw the text. The last check heard is the one that threw.
#define EXPECT_CHECK_AT(szFilePart, szText, ...)                                                                       \
    do                                                                                                                 \
    {                                                                                                                  \
        CLogRecorder oRecorderOfCheck;                                                                                 \
        bool bCheckThrew = false;                                                                                      \
        try                                                                                                            \
        {                                                                                                              \
            __VA_ARGS__;                                                                                               \
        }                                                                                                              \
        catch (const TOVDebug::CTOVAssertException&)                                                                   \
        {                                                                                                              \
            bCheckThrew = true;                                                                                        \
        }                                                                                                              \
        EXPECT_TRUE(bCheckThrew) << "no failed check in: " #__VA_ARGS__;                                               \
        EXPECT_TRUE(oRecorderOfCheck.SawCheck(szFilePart, szText))                                                     \
            << "expected check: " << (szText) << "\nheard: " << oRecorderOfCheck.DescribeChecks();                     \
    } while (false)

#define EXPECT_CHECK(szText, ...) EXPECT_CHECK_AT("", szText, __VA_ARGS__)

// The statement throws nothing, and no listener hears of a check.
#define EXPECT_NO_CHECK(...)                                                                                           \
    do                                                                                                                 \
    {                                                                                                                  \
        CLogRecorder oRecorderOfCheck;                                                                                 \
        EXPECT_NO_THROW(__VA_ARGS__);                                                                                  \
        EXPECT_TRUE(oRecorderOfCheck.Checks().empty()) << "heard: " << oRecorderOfCheck.DescribeChecks();              \
    } while (false)

// The statement destroys objects: a listener hears of a failed check of this text, and nothing is thrown.
#define EXPECT_TOLD_CHECK_AT(szFilePart, szText, ...)                                                                  \
    do                                                                                                                 \
    {                                                                                                                  \
        CLogRecorder oRecorderOfCheck;                                                                                 \
        EXPECT_NO_THROW(__VA_ARGS__);                                                                                  \
        EXPECT_TRUE(oRecorderOfCheck.SawCheck(szFilePart, szText))                                                     \
            << "expected check: " << (szText) << "\nheard: " << oRecorderOfCheck.DescribeChecks();                     \
    } while (false)

#define EXPECT_TOLD_CHECK(szText, ...) EXPECT_TOLD_CHECK_AT("", szText, __VA_ARGS__)

// A real folder in the system's place for temporary files, empty at first, removed with its contents at the end.
class CTempFolder
{
public:
    CTempFolder();
    ~CTempFolder();
    CTempFolder(const CTempFolder&) = delete;
    CTempFolder& operator=(const CTempFolder&) = delete;

    // The full name without a separator at its end, and that of a file in the folder, joined with the system's
    // separator.
    const std::string& Path() const;
    std::string File(const std::string& sName) const;

private:
    std::string m_sPath;
};

// Read and write whole files as bytes. Both throw if that fails, which ends the test.
std::string ReadWholeFile(const std::string& sPath);
void WriteWholeFile(const std::string& sPath, const std::string& sContents);

// Converts ASCII to 16-bit text with its terminator, and back.
std::vector<wchar_t> Wide(const char* szText);
std::string Narrow(const wchar_t* szText);

// A gate between threads: one thread opens it, and another waits for that under a deadline.
class CGate
{
public:
    void Open();

    // Returns false if the gate was not opened within 60 seconds.
    bool Wait();

    // Whether the gate is open now.
    bool IsOpen() const;

private:
    mutable std::mutex m_oMutex;
    std::condition_variable m_oChanged;
    bool m_bOpen = false;
};

// How a child process ended.
struct sChildResult
{
    int nExitCode; // 0 to 255: exit(-1) reads 255 on every system; -1 if a fault, a signal or the deadline ended it
    std::string sOutput;      // standard output and standard error; lines end with \n alone on every system
    std::string sErrors = {}; // standard error, where RunProgram was told to keep it apart
};

typedef void (*tChildScenario)(const std::vector<std::string>& aArguments);

// Runs a scenario of this test program, defined with TOV_CHILD, in a process of its own, and waits for its end under a
// deadline. A scenario that returns ends its process with exit(0).
sChildResult RunChild(const std::string& sScenario, const std::vector<std::string>& aArguments = {});

class CChildRegistrar
{
public:
    CChildRegistrar(const char* szName, tChildScenario fnScenario);
};

// Defines a scenario: TOV_CHILD(Panics) { TOVPanic("file", 1, "%s", aArguments[0].c_str()); }
#define TOV_CHILD(Name)                                                                                                \
    static void Child##Name(const std::vector<std::string>& aArguments);                                               \
    static const CChildRegistrar s_oChild##Name(#Name, &Child##Name);                                                  \
    static void Child##Name([[maybe_unused]] const std::vector<std::string>& aArguments)
