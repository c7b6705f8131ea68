#include <Listeners/TOVConsoleListener.h>

#include <Listeners/TOVListenerOutput.h>
#include <Listeners/TOVListenerSystem.h>

namespace TOVDebug
{
namespace
{
TOVListenerSystem::eLineColour ColourOf(eTOVDebugSeverity eSeverity)
{
    if (eSeverity >= eSeverityFatal)
        return TOVListenerSystem::eColourBrightRed;
    if (eSeverity >= eSeverityError)
        return TOVListenerSystem::eColourRed;
    if (eSeverity >= eSeverityWarning)
        return TOVListenerSystem::eColourYellow;
    return eSeverity >= eSeverityInfo ? TOVListenerSystem::eColourNone : TOVListenerSystem::eColourGrey;
}
} // namespace

CTOVConsoleListener::sStream::sStream(std::FILE* pStream)
    : pFile(pStream), bColours(TOVListenerOutput::WantsColours(pStream))
{
}

CTOVConsoleListener::CTOVConsoleListener(eTOVConsoleStream eStream)
    : m_oQuiet(eStream == eConsoleError ? stderr : stdout), m_oLoud(eStream == eConsoleOutput ? stdout : stderr)
{
}

CTOVConsoleListener::~CTOVConsoleListener()
{
    Unregister();
}

void CTOVConsoleListener::OnClosedown()
{
    CTOVLineListener::OnClosedown();
    std::fflush(m_oQuiet.pFile);
    std::fflush(m_oLoud.pFile);
}

void CTOVConsoleListener::OnLine(const sTOVLogLine& oLine)
{
    const bool bLoud = oLine.eSeverity >= eSeverityWarning;
    const sStream& oStream = bLoud ? m_oLoud : m_oQuiet;
    // Where both streams end up in one place, the lines stay in their order.
    const bool bOthersFlushed = m_oQuiet.pFile == m_oLoud.pFile || !bLoud || std::fflush(m_oQuiet.pFile) == 0;
    const TOVListenerSystem::eLineColour eColour =
        oStream.bColours ? ColourOf(oLine.eSeverity) : TOVListenerSystem::eColourNone;
    const bool bWritten = TOVListenerSystem::WriteLine(oStream.pFile, eColour, oLine.Print());
    const bool bFlushed = !TOVListenerOutput::MustFlush(oLine) || std::fflush(oStream.pFile) == 0;
    if (!bOthersFlushed || !bWritten || !bFlushed)
        NoteLoss();
}
} // namespace TOVDebug
