#include <TOVStream/TOVWriteFileStream.h>

#include <Debug/TOVCheck.h>

#include <new>

namespace
{
constexpr unsigned short NOT_OPENED = 0;
constexpr unsigned short NO_STREAM = 2;
constexpr unsigned short SEEK = 3;
constexpr unsigned short WRONG_DIRECTION = 4;
} // namespace

CTOVWriteFileStream::WriteFileStreamException::WriteFileStreamException(unsigned short usErrorCode)
    : CTOVException(eClassStream, usErrorCode)
{
}

CTOVWriteFileStream::WriteFileStreamException::WriteFileStreamException(const WriteFileStreamException& oOther) =
    default;
CTOVWriteFileStream::WriteFileStreamException&
CTOVWriteFileStream::WriteFileStreamException::operator=(const WriteFileStreamException& oOther) = default;

CTOVWriteFileStream::CTOVWriteFileStream(const char* szFileName, bool bAppend, unsigned long long ullOption)
    : m_pStream(nullptr),
      m_nMode(ITOVFile::eFileOpenBinary | (bAppend ? ITOVFile::eFileOpenAppend : ITOVFile::eFileOpenWrite))
{
    try
    {
        m_oFile.Open(szFileName, m_nMode);
    }
    catch (const CTOVFile::FileException&)
    {
        throw WriteFileStreamException(NOT_OPENED);
    }

    m_pStream = new (std::nothrow) CTOVFileStream(&m_oFile, eStreamModeSaving, ullOption);
    TOV_ASSERT(m_pStream != NULL);
    // Settled: the check above throws first, so that code 2 is never thrown. It is one of the documented codes.
    if (m_pStream == nullptr)
        throw WriteFileStreamException(NO_STREAM);
}

CTOVWriteFileStream::CTOVWriteFileStream(const CTOVWriteFileStream& oOther) = default;
CTOVWriteFileStream& CTOVWriteFileStream::operator=(const CTOVWriteFileStream& oOther) = default;

CTOVWriteFileStream::~CTOVWriteFileStream()
{
    TOV_SAFE_DELETE(m_pStream);
    TOVDebug::RunInDestructor([this] {
        if (m_oFile.IsOpen())
        {
            m_oFile.Flush();
            m_oFile.Close();
        }
    });
}

void CTOVWriteFileStream::Read(void* /*pBuffer*/, unsigned long long /*ullSize*/)
{
    throw WriteFileStreamException(WRONG_DIRECTION);
}

void CTOVWriteFileStream::Write(const void* pBuffer, unsigned long long ullSize)
{
    // The inner stream and its file are of known classes, and the stream always saves.
    m_pStream->m_pFile->CTOVFile::Write(pBuffer, ullSize);
}

void CTOVWriteFileStream::Seek(long long /*llOffset*/, TOVPlatform::TOVFile::eSeekOrigin /*eOrigin*/)
{
    throw WriteFileStreamException(SEEK);
}

void CTOVWriteFileStream::SerializeBegin(int nDataFormatVersion)
{
    // Settled: the inner stream always saves, so that this and the next function never throw code 4.
    if (!m_pStream->IsStoring())
        throw WriteFileStreamException(WRONG_DIRECTION);
    m_pStream->SerializeBegin(nDataFormatVersion);
}

void CTOVWriteFileStream::SerializeEnd()
{
    if (!m_pStream->IsStoring())
        throw WriteFileStreamException(WRONG_DIRECTION);
    m_pStream->SerializeEnd();
}

unsigned long long CTOVWriteFileStream::Tell() const
{
    return m_pStream->Tell();
}

bool CTOVWriteFileStream::SupportsRead() const
{
    return false;
}

bool CTOVWriteFileStream::SupportsWrite() const
{
    return true;
}

bool CTOVWriteFileStream::SupportsSeek() const
{
    return false;
}

bool CTOVWriteFileStream::SupportsVersioning() const
{
    return true;
}

unsigned long long CTOVWriteFileStream::GetSize() const
{
    return 0;
}

int CTOVWriteFileStream::GetVersion() const
{
    return m_pStream->GetVersion();
}
