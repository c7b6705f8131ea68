#include <TOVStream/TOVFileStream.h>

namespace
{
constexpr unsigned short READ_REFUSED = 4;
constexpr unsigned short WRITE_REFUSED = 5;
constexpr int NO_VERSION = -1;
} // namespace

CTOVFileStream::FileStreamException::FileStreamException(unsigned short usErrorCode)
    : CTOVException(eClassStream, usErrorCode)
{
}

CTOVFileStream::FileStreamException::FileStreamException(const FileStreamException& oOther) = default;
CTOVFileStream::FileStreamException&
CTOVFileStream::FileStreamException::operator=(const FileStreamException& oOther) = default;

CTOVFileStream::CTOVFileStream(CTOVFile* pFile, int nMode, unsigned long long ullOption)
    : m_pFile(pFile), m_ullReserved(0), m_ullSize(0), m_ullOption(ullOption), m_nMode(nMode), m_nVersion(NO_VERSION)
{
    TOV_ASSERT(pFile != NULL);
    m_ullSize = m_pFile->GetSize();
}

CTOVFileStream::CTOVFileStream(const CTOVFileStream& oOther) = default;
CTOVFileStream& CTOVFileStream::operator=(const CTOVFileStream& oOther) = default;

CTOVFileStream::~CTOVFileStream()
{
    ClearVersionStack();
}

void CTOVFileStream::Read(void* pBuffer, unsigned long long ullSize)
{
    TOV_ASSERT(m_pFile != NULL);
    if (IsStoring() && !IsLoading())
        throw FileStreamException(READ_REFUSED);
    m_pFile->Read(pBuffer, ullSize);
}

void CTOVFileStream::Write(const void* pBuffer, unsigned long long ullSize)
{
    TOV_ASSERT(m_pFile != NULL);
    if (!IsStoring() && IsLoading())
        throw FileStreamException(WRITE_REFUSED);
    m_pFile->Write(pBuffer, ullSize);
}

void CTOVFileStream::Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin)
{
    TOV_ASSERT(m_pFile != NULL);
    m_pFile->Seek(llOffset, eOrigin);
}

void CTOVFileStream::SerializeBegin(int nDataFormatVersion)
{
    if (IsStoring())
    {
        TOV_ASSERT(nDataFormatVersion != -1);
        *this << nDataFormatVersion;
        return;
    }
    TOV_ASSERT(nDataFormatVersion == -1);
    PushVersion(GetVersion());
    *this >> m_nVersion;
}

void CTOVFileStream::SerializeEnd()
{
    if (!IsStoring())
        SetVersion(PopVersion());
}

int CTOVFileStream::GetMode() const
{
    return m_nMode;
}

unsigned long long CTOVFileStream::Tell() const
{
    TOV_ASSERT(m_pFile != NULL);
    return m_pFile->Tell();
}

bool CTOVFileStream::SupportsRead() const
{
    return true;
}

bool CTOVFileStream::SupportsWrite() const
{
    return true;
}

bool CTOVFileStream::SupportsSeek() const
{
    return true;
}

bool CTOVFileStream::SupportsVersioning() const
{
    return true;
}

unsigned long long CTOVFileStream::GetSize() const
{
    return m_ullSize;
}

int CTOVFileStream::GetVersion() const
{
    return m_nVersion;
}

void CTOVFileStream::SetVersion(int nVersion)
{
    m_nVersion = nVersion;
}

void CTOVFileStream::PushVersion(int nVersion)
{
    m_aVersionStack.Push(nVersion);
}

int CTOVFileStream::PopVersion()
{
    if (m_aVersionStack.IsEmpty())
        return NO_VERSION;
    const int nVersion = m_aVersionStack.GetTop();
    m_aVersionStack.Pop();
    return nVersion;
}

void CTOVFileStream::ClearVersionStack()
{
    m_aVersionStack.Clear();
}
