#include "Catalog/Posix/CatalogHindrance.h"
#include "Support/Posix/TOVStartedProgram.h"

#include <csignal>
#include <linux/securebits.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace
{
void SetFileSizeLimit(unsigned long ulBytes)
{
    // The highest limit stays, so that what counts lines can lift this one for its own files.
    rlimit oLimit = {};
    ::getrlimit(RLIMIT_FSIZE, &oLimit);
    oLimit.rlim_cur = ulBytes;
    if (::setrlimit(RLIMIT_FSIZE, &oLimit) != 0)
        ::_exit(97);
}
} // namespace

sRun RunHindered(const std::vector<std::string>& aArguments, const std::string& sFolder,
                 const std::function<void()>& fnInChild)
{
    return RunProgramAfter(fnInChild, CatalogProgram(aArguments, sFolder), eErrorsApart);
}

void GiveUpPrivileges()
{
    // With this, root has no more rights in the program that the process becomes than other users have.
    if (::geteuid() == 0 && ::prctl(PR_SET_SECUREBITS, SECBIT_NOROOT) != 0)
        ::_exit(97);
}

void LimitFileSize(unsigned long ulBytes)
{
    ::signal(SIGXFSZ, SIG_IGN);
    SetFileSizeLimit(ulBytes);
}

void DieBeyondFileSize(unsigned long ulBytes)
{
    ::signal(SIGXFSZ, SIG_DFL);
    SetFileSizeLimit(ulBytes);
}
