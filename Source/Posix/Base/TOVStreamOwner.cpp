#include <Posix/Base/TOVStreamOwner.h>

#include <TOVPlatform/Backend/TOVFile.h>

namespace TOVPlatform
{
namespace TOVPosix
{
CStreamOwner s_aStreamOwners[Backend::File::MAX_HANDLES];

void ForgetOtherStreamOwners()
{
    for (CStreamOwner& oStream : s_aStreamOwners)
        oStream.ForgetOtherThreads();
}
} // namespace TOVPosix
} // namespace TOVPlatform
