#include <Listeners/TOVConsoleListener.h>

#include <Listeners/TOVListenerOutput.h>
#include <Listeners/TOVListenerSystem.h>

#include <cstdlib>

namespace TOVDebug
{
namespace
{
bool WantsColours()
{
    const char* szNoColour = std::getenv("NO_COLOR");
    return szNoColour == nullptr || *szNoColour == '\0';
}

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

CTOVConsoleListener::CTOVConsoleListener(eTOVConsoleStream eStream)
    : m_pStream(eStream == eConsoleOutput ? stdout : stderr),
      m_bColours(WantsColours() && TOVListenerSystem::ShowsColours(m_pStream))
{
}

CTOVConsoleListener::~CTOVConsoleListener()
{
    Unregister();
}

void CTOVConsoleListener::OnClosedown()
{
    CTOVLineListener::OnClosedown();
    std::fflush(m_pStream);
}

void CTOVConsoleListener::OnLine(const sTOVLogLine& oLine)
{
    const TOVListenerSystem::eLineColour eColour =
        m_bColours ? ColourOf(oLine.eSeverity) : TOVListenerSystem::eColourNone;
    const bool bWritten = TOVListenerSystem::WriteLine(m_pStream, eColour, oLine.Print());
    const bool bFlushed = !TOVListenerOutput::MustFlush(oLine) || std::fflush(m_pStream) == 0;
    if (!bWritten || !bFlushed)
        NoteLoss();
}
} // namespace TOVDebug
