#include <File/TOVFile.h>

#include <Debug/TOVCheck.h>
#include <Debug/TOVDebug.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFileDiscard.h>
#include <TOVString/TOVStringId.h>

#include <cstring>

namespace
{
constexpr unsigned short CODE_OPEN = 0;
constexpr unsigned short CODE_SEEK = 5;

constexpr char OPEN_FAILED[] =
    "CTOVFile::Open() : Enhance the exception throwing. Should be more detailed, what exactly failed.";

// The longest mode is "a+bc".
constexpr int MAX_MODE = 8;

bool Has(int nFlags, ITOVFile::eFileOpenFlags eFlag)
{
    return (nFlags & eFlag) != 0;
}

// Makes the runtime's mode text for open flags. The text for flags without access is empty or has no access letter; it
// is passed to the runtime unchanged.
void BuildMode(char (&szMode)[MAX_MODE], int nFlags)
{
    const bool bRead = Has(nFlags, ITOVFile::eFileOpenRead);
    const bool bWrite = Has(nFlags, ITOVFile::eFileOpenWrite);
    char* pMode = szMode;

    if (Has(nFlags, ITOVFile::eFileOpenAppend))
        *pMode++ = 'a';
    else if (bRead)
        *pMode++ = 'r';
    else if (bWrite)
        *pMode++ = 'w';

    if (bRead && (bWrite || Has(nFlags, ITOVFile::eFileOpenAppend)))
        *pMode++ = '+';

    if (Has(nFlags, ITOVFile::eFileOpenText))
        *pMode++ = 't';
    else if (Has(nFlags, ITOVFile::eFileOpenBinary))
        *pMode++ = 'b';

    if (Has(nFlags, ITOVFile::eFileOpenCommit))
        *pMode++ = 'c';
    else if (Has(nFlags, ITOVFile::eFileOpenNoCommit))
        *pMode++ = 'n';

    *pMode = 0;
}

// Whether the virtual file system can make another name of this one: of the id of a text, or of a text with a colon.
bool CanHaveAssign(const char* szFileName)
{
    return !IsText(szFileName) || std::strchr(szFileName, ':') != nullptr;
}

tHandle OpenResolved(const char* szFileName, const char* szMode)
{
    const CTOVPath oPath = CTOVVirtualFileSystem::Instance().ResolvePath(CTOVPath(szFileName));
    return TOVPlatform::TOVFile::Open(~oPath, szMode);
}

// Cuts a block size or an offset to its low 32 bits, in the type that the platform layer takes.
long ToLong(unsigned long long ullValue)
{
    return static_cast<int>(static_cast<tDword>(ullValue));
}

// Converts a position and extends its sign, so that a failure has all bits set.
unsigned long long ToPosition(long lPosition)
{
    return static_cast<unsigned long long>(static_cast<long long>(lPosition));
}
} // namespace

CTOVFile::FileException::FileException(unsigned short usErrorCode) : ITOVFile::Exception(usErrorCode)
{
}

CTOVFile::FileException::FileException(const FileException& oOther) = default;

CTOVFile::FileException& CTOVFile::FileException::operator=(const FileException& oOther) = default;

CTOVFile::CTOVFile() : m_hFile(FILE_INVALID_HANDLE)
{
}

CTOVFile::CTOVFile(const CTOVFile& oOther) = default;

CTOVFile& CTOVFile::operator=(const CTOVFile& oOther) = default;

CTOVFile::~CTOVFile()
{
    TOVDebug::RunInDestructor([this] { CTOVFile::Close(); });
}

void CTOVFile::Open(const char* szFileName, int nFlags)
{
    char szMode[MAX_MODE];
    BuildMode(szMode, nFlags);

    // Settled: the handle of a file that is already open is overwritten, not closed.
    if (CanHaveAssign(szFileName))
        m_hFile = OpenResolved(szFileName, szMode);
    else
        m_hFile = TOVPlatform::TOVFile::Open(szFileName, szMode);
    if (m_hFile == FILE_INVALID_HANDLE)
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityTrace, "%s", OPEN_FAILED);
        throw FileException(CODE_OPEN);
    }
}

void CTOVFile::Close()
{
    if (m_hFile == FILE_INVALID_HANDLE)
        return;

    // Settled: a failed close is not reported. The file is discarded, as nobody could close it later without its
    // handle.
    if (TOVPlatform::TOVFile::Close(m_hFile) != TOVPlatform::TOVFile::eFileSuccess)
        TOVPlatform::TOVFile::Discard(m_hFile);
    m_hFile = FILE_INVALID_HANDLE;
}

unsigned long long CTOVFile::Read(void* pBuffer, unsigned long long ullSize)
{
    if (m_hFile == FILE_INVALID_HANDLE)
        return 0;

    // Settled: the block is one element, so that the result is not a number of bytes.
    return TOVPlatform::TOVFile::Read(m_hFile, pBuffer, ToLong(ullSize), 1);
}

unsigned long long CTOVFile::Write(const void* pBuffer, unsigned long long ullSize)
{
    if (m_hFile == FILE_INVALID_HANDLE)
        return 0;

    // Settled: the block is one element, so that the result is not a number of bytes.
    return TOVPlatform::TOVFile::Write(m_hFile, pBuffer, ToLong(ullSize), 1);
}

void CTOVFile::Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin)
{
    // Settled: the result is 1 or -1 and never 0, so that no failure is ever reported.
    const int nResult = TOVPlatform::TOVFile::Seek(m_hFile, ToLong(static_cast<unsigned long long>(llOffset)), eOrigin);
    if (nResult == 0)
        throw FileException(CODE_SEEK);
}

void CTOVFile::Flush()
{
    if (m_hFile != FILE_INVALID_HANDLE)
        TOVPlatform::TOVFile::Flush(m_hFile);
}

unsigned long long CTOVFile::Tell() const
{
    return ToPosition(TOVPlatform::TOVFile::Tell(m_hFile));
}

bool CTOVFile::IsOpen() const
{
    return m_hFile != FILE_INVALID_HANDLE;
}

bool CTOVFile::IsEof() const
{
    const unsigned long long ullSize = GetSize();
    return ullSize == Tell();
}

unsigned long long CTOVFile::GetSize() const
{
    using namespace TOVPlatform;

    // A new stream is often asked for its size, and seeking there and back would read a part of the file.
    const long lUnused = TOVFile::GetSizeOfUnused(m_hFile);
    if (lUnused >= 0)
        return ToPosition(lUnused);

    // Settled: a position that Tell cannot return cannot be restored; the position then stays at the end.
    const long lPosition = TOVFile::Tell(m_hFile);
    TOVFile::Seek(m_hFile, 0, TOVFile::eSeekOriginEnd);
    const long lSize = TOVFile::Tell(m_hFile);
    TOVFile::Seek(m_hFile, lPosition, TOVFile::eSeekOriginStart);
    return ToPosition(lSize);
}
