#include <Debug/TOVDebug.h>

#include <Debug/TOVAudience.h>
#include <Debug/TOVDebugServer.h>
#include <TOVPlatform/Backend/TOVSystem.h>

#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace TOVDebug
{
namespace
{
// These 88 dashes are the line above and below the question.
#define DASHES "----------------------------------------------------------------------------------------"

constexpr char QUESTION[] = "\n" DASHES "\n\nWould you like to debug the application?\n"
                            "\n YES:           Debug or try to continue (if no debugger present) "
                            "\n NO:             Try a clean shutdown (might throw more exceptions)"
                            "\n CANCEL:     Force the application to exit\n"
                            "\n" DASHES "\n";

#undef DASHES

// Returns a line number as listeners receive it: cut to 32 bits, even where its type has more.
template<class TLine> unsigned long ToLine(TLine nLine)
{
    return static_cast<tDword>(nLine);
}

// Is a function of its own, so that _Log saves no registers for it where nobody hears the line.
TOV_NOINLINE void PassOn(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                         va_list pArguments)
{
    // A null format fails its check in the first listener that prints it.
    if (szFormat == nullptr || IsHeard())
        CTOVDebugServer::Instance().OnLogV(szFile, ulLine, eSeverity, szFormat, pArguments);
}

// Settled: the text is never cleared, so that each failed check shows the question once more, as far as it fits.
char s_szQuestions[1024];
} // namespace

bool _Log(const char* szFile, unsigned long ulLine, unsigned long /*ulFlags*/, eTOVDebugSeverity eSeverity,
          const char* szFormat, ...)
{
    if (s_eAudience == eAudienceNobody)
        return true;

    va_list pArguments;
    va_start(pArguments, szFormat);
    PassOn(szFile, ToLine(ulLine), eSeverity, szFormat, pArguments);
    va_end(pArguments);
    return true;
}

void Assert(const char* szExpression, const char* szFile, int nLine)
{
    if (IsHeard())
    {
        CTOVDebugServer& oServer = CTOVDebugServer::Instance();
        oServer.OnAssert(szFile, ToLine(nLine), szExpression);
        if (HasOtherListeners(oServer))
            throw CTOVAssertException();
    }
    TOVPlatform::Backend::ThrowUnheardCheck(szExpression, szFile, static_cast<tDword>(nLine));
}

bool Alternate_Assert(const char* szExpression, const char* szFile, int nLine)
{
    CTOVDebugServer::Instance().OnAssert(szFile, ToLine(nLine), szExpression);

    const std::size_t nUsed = std::strlen(s_szQuestions);
    std::strncat(s_szQuestions, QUESTION, sizeof(s_szQuestions) - 1 - nUsed);

    switch (TOVPlatform::Backend::AskYesNoCancel(s_szQuestions, "TOV ASSERTION"))
    {
    case TOVPlatform::Backend::eAnswerYes:
        return TOVPlatform::Backend::IsDebuggerAttached();
    case TOVPlatform::Backend::eAnswerNo:
        std::exit(0); // NOLINT(concurrency-mt-unsafe): the user has asked for it.
    case TOVPlatform::Backend::eAnswerCancel:
        TOVPlatform::Backend::EndProcess(0);
    default:
        return false;
    }
}
} // namespace TOVDebug

void TOVPanic(const char* szFile, unsigned long ulLine, const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    TOVDebug::CTOVDebugServer::Instance().OnPanicV(szFile, TOVDebug::ToLine(ulLine), szFormat, pArguments);
    va_end(pArguments);
    std::exit(-1); // NOLINT(concurrency-mt-unsafe): a panic runs the exit handlers, in whichever thread.
}
