#include <Posix/Diagnostics/TOVTextOutput.h>

#include <TOVPlatform/Backend/TOVSystem.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
bool IsAskedFor()
{
    const char* szLog = std::getenv("TOVKERNEL_LOG");
    return szLog != nullptr && *szLog != '\0';
}
} // namespace

void WriteText(int nDescriptor, const char* szText)
{
    std::size_t nLeft = std::strlen(szText);
    while (nLeft > 0)
    {
        const ssize_t nWritten = ::write(nDescriptor, szText, nLeft);
        if (nWritten < 0 && errno == EINTR)
            continue;
        if (nWritten <= 0)
            return;
        szText += nWritten;
        nLeft -= static_cast<std::size_t>(nWritten);
    }
}

bool ShowsDebugText()
{
    // Read once, by the thread that loads the library, which logs then: the environment may change under other threads.
    static const bool s_bAskedFor = IsAskedFor();
    return s_bAskedFor || Backend::IsDebuggerAttached();
}
} // namespace TOVPosix
} // namespace TOVPlatform
