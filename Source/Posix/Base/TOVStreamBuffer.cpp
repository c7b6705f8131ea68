#include <Posix/Base/TOVStreamBuffer.h>

#include <algorithm>
#include <cstring>

#include <stdio.h>
#include <stdio_ext.h>
#include <unistd.h>
#include <wchar.h>

namespace TOVPlatform
{
namespace TOVPosix
{
#if defined(__GLIBC__) // the members that the macros of its public header read
namespace
{
// Makes a stream's buffer begin at a byte that has the system's position.
void BeginAt(FILE& oFile, char* pByte)
{
    oFile._IO_read_base = oFile._IO_read_ptr = oFile._IO_read_end = oFile._IO_write_base = pByte;
    oFile._offset = -1; // not known to the runtime
}

bool IsLeftToRuntime(FILE& oFile)
{
    return ::fileno(&oFile) < 0 || ::fwide(&oFile, 0) > 0 || ::__flbf(&oFile) != 0;
}
} // namespace

bool WriteHeld(FILE& oFile)
{
    if (oFile._IO_write_ptr <= oFile._IO_write_base || IsLeftToRuntime(oFile))
        return true;

    // The system may be ahead of the first byte, by what the stream has read.
    const int nFile = ::fileno(&oFile);
    const off_t llBack = oFile._IO_write_base - oFile._IO_read_end;
    if (llBack != 0 && ::lseek(nFile, llBack, SEEK_CUR) < 0)
        return false;

    for (char* pNext = oFile._IO_write_base; pNext != oFile._IO_write_ptr;)
    {
        BeginAt(oFile, pNext);
        const ssize_t nWritten = ::write(nFile, pNext, static_cast<std::size_t>(oFile._IO_write_ptr - pNext));
        if (nWritten <= 0)
        {
            oFile._flags |= _IO_ERR_SEEN;
            return false;
        }
        pNext += nWritten;
    }
    oFile._IO_write_ptr = oFile._IO_buf_base;
    BeginAt(oFile, oFile._IO_buf_base);
    return true;
}

std::size_t WriteAndKeep(FILE& oFile, const void* pBuffer, std::size_t ulSize, std::size_t ulCount)
{
    const std::size_t ulBytes = ulSize * ulCount;
    const std::ptrdiff_t nRoom = std::max<std::ptrdiff_t>(oFile._IO_write_end - oFile._IO_write_ptr, 0);
    const std::size_t ulRoom = static_cast<std::size_t>(nRoom);
    if (ulBytes <= ulRoom || IsLeftToRuntime(oFile))
        return ::fwrite_unlocked(pBuffer, ulSize, ulCount, &oFile);

    if (ulRoom != 0)
        std::memcpy(oFile._IO_write_ptr, pBuffer, ulRoom);
    oFile._IO_write_ptr += ulRoom;
    if (!WriteHeld(oFile))
    {
        // The caller gives a part of an element again.
        const std::ptrdiff_t nPart = static_cast<std::ptrdiff_t>(ulRoom % ulSize);
        oFile._IO_write_ptr -= std::min(nPart, oFile._IO_write_ptr - oFile._IO_write_base);
        return ulRoom / ulSize;
    }

    // The runtime writes whole blocks at once if the buffer has no room, and gives it room again.
    const std::size_t ulRest = ulBytes - ulRoom;
    if (ulRest >= static_cast<std::size_t>(oFile._IO_buf_end - oFile._IO_buf_base))
        oFile._IO_write_end = oFile._IO_write_ptr;
    return (ulRoom + ::fwrite_unlocked(static_cast<const char*>(pBuffer) + ulRoom, 1, ulRest, &oFile)) / ulSize;
}
#else
bool WriteHeld(FILE&)
{
    return true;
}

std::size_t WriteAndKeep(FILE& oFile, const void* pBuffer, std::size_t ulSize, std::size_t ulCount)
{
    return ::fwrite(pBuffer, ulSize, ulCount, &oFile);
}
#endif
} // namespace TOVPosix
} // namespace TOVPlatform
