#include <Posix/Diagnostics/TOVUnheardCheck.h>

#include <Debug/TOVException.h>
#include <Posix/Diagnostics/TOVTextOutput.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <exception>
#include <new>
#include <typeinfo>
#include <unistd.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
// What a check that was not caught says, cut to 1023 characters.
constexpr std::size_t MAX_TEXT = 1023;

// The check of one exception. Its texts are copied, as they may be gone where a function that must not throw ends the
// process, and only put together then.
struct sCheckText
{
    const void* pException;
    tDword dwLine;
    std::atomic<bool> bInUse;
    char szFile[MAX_TEXT + 1];
    char szExpression[MAX_TEXT + 1];
};

// The latest checks. With more at the same time, some are not shown.
constexpr unsigned int MAX_CHECKS = 16;
sCheckText s_aTexts[MAX_CHECKS];
std::atomic<unsigned int> s_nNext(0);

void CopyText(char (&szTarget)[MAX_TEXT + 1], const char* szText)
{
    if (szText == nullptr)
        szText = "(null)";
    const std::size_t nLength = ::strnlen(szText, MAX_TEXT);
    std::memcpy(szTarget, szText, nLength);
    szTarget[nLength] = '\0';
}

void Keep(const void* pException, const char* szExpression, const char* szFile, tDword dwLine)
{
    sCheckText& oText = s_aTexts[s_nNext++ % MAX_CHECKS];
    if (oText.bInUse.exchange(true))
        return;
    // A new exception may have the address of an old one.
    oText.pException = pException;
    oText.dwLine = dwLine;
    CopyText(oText.szFile, szFile);
    CopyText(oText.szExpression, szExpression);
    oText.bInUse = false;
}

// The address of the exception that ends the process if it is a check's, else null.
const void* CurrentCheck()
{
    if (abi::__cxa_current_exception_type() == nullptr)
        return nullptr;
    try
    {
        throw;
    }
    catch (const TOVDebug::CTOVAssertException& oException)
    {
        return &oException;
    }
    catch (...)
    {
        return nullptr;
    }
}

void Write(const sCheckText& oText)
{
    char szText[MAX_TEXT + 1];
    const int nLength = std::snprintf(szText, sizeof(szText), "%s(%u) : check failed, and nobody caught it: %s\n",
                                      oText.szFile, oText.dwLine, oText.szExpression);
    // A text that was cut has lost its line end.
    if (nLength > static_cast<int>(MAX_TEXT))
        szText[MAX_TEXT - 1] = '\n';
    WriteText(STDERR_FILENO, szText);
}

void Tell(const void* pException)
{
    // The search runs backwards from the latest check.
    for (unsigned int nBack = 1; nBack <= MAX_CHECKS; ++nBack)
    {
        sCheckText& oText = s_aTexts[(s_nNext - nBack) % MAX_CHECKS];
        if (oText.bInUse.exchange(true))
            continue;
        if (oText.pException == pException)
        {
            Write(oText);
            return;
        }
        oText.bInUse = false;
    }
}

// The handler that ours has replaced for the moment, and calls.
std::atomic<std::terminate_handler> s_pfFormer(nullptr);

void TellAndTerminate()
{
    const void* const pException = CurrentCheck();
    if (pException != nullptr && !ShowsDebugText())
        Tell(pException);

    const std::terminate_handler pfNow = std::get_terminate();
    const std::terminate_handler pfFormer = pfNow != &TellAndTerminate ? pfNow : s_pfFormer.load();
    if (pfFormer != nullptr)
        pfFormer();
    std::abort();
}

// While a watch lives, an exception that nobody catches ends in our handler. It lives only while the language looks for
// a catch clause, so that no other code ever gets to know this handler: neither code that sets another handler and
// keeps the former one, nor a process that has unloaded this library. The exception itself remembers the handler of
// this moment, for functions that must not throw.
class CTerminateWatch
{
public:
    CTerminateWatch()
    {
        ++s_nWatches;
        Put();
    }

    ~CTerminateWatch()
    {
        if (--s_nWatches > 0 || std::get_terminate() != &TellAndTerminate)
            return;
        const std::terminate_handler pfReplaced = std::set_terminate(s_pfFormer);
        // Another thread may have set its own handler meanwhile, or begun a watch.
        if (pfReplaced != &TellAndTerminate)
            std::set_terminate(pfReplaced);
        if (s_nWatches > 0)
            Put();
    }

    CTerminateWatch(const CTerminateWatch&) = delete;
    CTerminateWatch& operator=(const CTerminateWatch&) = delete;

private:
    static void Put()
    {
        const std::terminate_handler pfNow = std::get_terminate();
        if (pfNow == &TellAndTerminate)
            return;
        s_pfFormer = pfNow;
        const std::terminate_handler pfReplaced = std::set_terminate(&TellAndTerminate);
        if (pfReplaced != &TellAndTerminate)
            s_pfFormer = pfReplaced;
    }

    static std::atomic<int> s_nWatches;
};
std::atomic<int> CTerminateWatch::s_nWatches(0);
} // namespace

void ThrowUnheard(const char* szExpression, const char* szFile, tDword dwLine)
{
    // These are the compiler's steps for "throw CTOVAssertException()", done by hand because the exception's address is
    // needed.
    void* const pRoom = abi::__cxa_allocate_exception(sizeof(TOVDebug::CTOVAssertException));
    const void* const pException = new (pRoom) TOVDebug::CTOVAssertException;
    Keep(pException, szExpression, szFile, dwLine);

    const CTerminateWatch oWatch;
    abi::__cxa_throw(pRoom, const_cast<std::type_info*>(&typeid(TOVDebug::CTOVAssertException)), nullptr);
}
} // namespace TOVPosix
} // namespace TOVPlatform
