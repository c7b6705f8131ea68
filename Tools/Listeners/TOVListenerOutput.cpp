#include <Listeners/TOVListenerOutput.h>

#include <Listeners/TOVListenerSystem.h>

#include <atomic>
#include <cstdlib>

namespace TOVDebug
{
namespace TOVListenerOutput
{
namespace
{
std::atomic<bool> s_bEnding(false);

// This library is cleaned up after the application.
struct sEndMarker
{
    ~sEndMarker()
    {
        s_bEnding = true;
        std::fflush(nullptr);
    }
};
const sEndMarker s_oEndMarker;
} // namespace

bool WriteText(std::FILE* pStream, const std::string& sText)
{
    return std::fwrite(sText.data(), 1, sText.size(), pStream) == sText.size();
}

bool WantsColours(std::FILE* pStream)
{
    const char* szNoColour = std::getenv("NO_COLOR");
    return (szNoColour == nullptr || *szNoColour == '\0') && TOVListenerSystem::ShowsColours(pStream);
}

bool IsEnding()
{
    return s_bEnding;
}
} // namespace TOVListenerOutput
} // namespace TOVDebug
