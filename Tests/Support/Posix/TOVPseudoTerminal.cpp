#include "Support/Posix/TOVPseudoTerminal.h"

#include <fcntl.h>
#include <stdexcept>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <unistd.h>

CPseudoTerminal::CPseudoTerminal(int nColumns) : m_oUser(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    if (Descriptor() < 0 || ::grantpt(Descriptor()) != 0 || ::unlockpt(Descriptor()) != 0)
        throw std::runtime_error("no pseudo-terminal");
    m_sName = ::ptsname(Descriptor());
    // Without a size, a program cannot know where a line would break.
    const winsize oSize = {24, static_cast<unsigned short>(nColumns), 0, 0};
    ::ioctl(Descriptor(), TIOCSWINSZ, &oSize);
}

bool CPseudoTerminal::Press(const std::string& sKeys)
{
    return ::write(Descriptor(), sKeys.data(), sKeys.size()) == static_cast<ssize_t>(sKeys.size());
}
