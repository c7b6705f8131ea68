// Declares CTOVCheckedStream, which reads through another stream and reports what that stream keeps silent about.
#pragma once

#include <Debug/TOVCheck.h>
#include <File/TOVFile.h>
#include <TOVStream/TOVFileStream.h>
#include <TOVString/TOVCrc.h>
#include <TOVString/TOVStringA.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

// Reads values from another stream, or writes them to it, with the calls of every stream, and changes nothing in the
// format. The other streams do not report a short read; this one knows how many bytes there are, and each operation
// that reads either gets all its bytes or throws CheckedStreamException:
//
//   what is wrong                      code                    who throws
//   the file cannot be opened          eFailureNotOpened       the constructor
//   it ends too early                  eFailureTooShort        Read, SerializeBegin, operator >>, ReadCount
//   the system fails to read it        eFailureUnreadable      the same; the constructor, if the size is unknown
//   a count is negative                eFailureBadCount        ReadCount
//   bytes are left at the end          eFailureTooLong         Finish
//   (a call of the other direction)    eFailureWrongDirection  Read, Write, ReadCount; Seek always
//
// The other stream is used in blocks of 64 KB, so that nobody else may use it meanwhile. A failure to write is not
// reported, as with every stream: read the file back. Use a stream from one thread at a time.
class CTOVCheckedStream final : public ITOVStream
{
public:
    // The codes of CheckedStreamException. 0 and 4 mean the same as in the exceptions of CTOVReadFileStream.
    enum eFailure
    {
        eFailureNotOpened = 0,
        eFailureWrongDirection = 4,
        eFailureTooShort = 6,
        eFailureUnreadable = 7,
        eFailureTooLong = 8,
        eFailureBadCount = 9
    };

    // Its error class is eClassStream. what() is one line: the name of the file, and the problem.
    class CheckedStreamException : public CTOVException, public std::runtime_error
    {
    public:
        // Makes an exception with this code, whose text is the name, a blank and the problem.
        CheckedStreamException(eFailure eCode, const std::string& sName, const std::string& sProblem)
            : CTOVException(eClassStream, eCode), std::runtime_error(sName + " " + sProblem),
              m_nProblem(sName.size() + 1)
        {
        }

        // Returns the problem alone, such as "ends too early", for programs that name the file themselves.
        const char* GetProblem() const { return what() + m_nProblem; }

    private:
        std::size_t m_nProblem; // where it begins in the text
    };

    // Virtual operations in the order of ITOVStream.

    // If Read throws because the stream ends too early, nothing has been read. Both throw unless
    // "pBuffer != NULL || ullSize == 0".
    void Read(void* pBuffer, unsigned long long ullSize) override;
    void Write(const void* pBuffer, unsigned long long ullSize) override;
    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override;

    // These do the same as those of CTOVFileStream. If reading the version throws, no section has begun.
    void SerializeBegin(int nDataFormatVersion) override;
    void SerializeEnd() override;

    // Returns the format of the other stream, with one direction.
    int GetMode() const override;

    // Returns the position at which the other stream would be without blocks.
    unsigned long long Tell() const override;
    bool SupportsRead() const override;
    bool SupportsWrite() const override;
    bool SupportsSeek() const override;
    bool SupportsVersioning() const override;

    // Returns how many bytes there were to read in the beginning, and 0 when writing.
    unsigned long long GetSize() const override;
    int GetVersion() const override;

    // When writing, passes on what Finish has not passed on. No exception escapes.
    ~CTOVCheckedStream();

    // Opens a file of less than 2 GB and reads it. The name may begin with an assign.
    explicit CTOVCheckedStream(const char* szFileName);

    // Reads the next ullSize bytes of a stream, which the caller owns and which must not translate line ends.
    CTOVCheckedStream(ITOVStream& oStream, unsigned long long ullSize);

    // Writes to a stream, which the caller owns.
    explicit CTOVCheckedStream(ITOVStream& oStream);

    // There are no copies, as each would have a block of its own.
    CTOVCheckedStream(const CTOVCheckedStream& oOther) = delete;
    CTOVCheckedStream& operator=(const CTOVCheckedStream& oOther) = delete;

    // Reads the number of the elements that follow, each of which has at least ullSmallest bytes. The result is neither
    // negative nor larger than the rest of the stream allows. Throws unless "ullSmallest > 0".
    int ReadCount(unsigned long long ullSmallest);

    // Ends the work. When reading, throws if bytes are left; when writing, passes the last block on.
    void Finish();

    // Returns how many bytes are left to read, and 0 when writing.
    unsigned long long GetRest() const;

    // Returns the CRC-32 (that of zip and PNG) of all bytes that have been read or written through this stream.
    unsigned int GetCrc();

private:
    static constexpr std::size_t BLOCK_SIZE = std::size_t(64) * 1024;
    static constexpr unsigned long long UNKNOWN_SIZE = ~0ull;

    static std::unique_ptr<CTOVFile> OpenFile(const char* szFileName);
    static std::string NameOf(const char* szFileName);
    static std::size_t BlockFor(unsigned long long ullSize);

    [[noreturn]] void Fail(eFailure eCode, const std::string& sProblem) const;
    [[noreturn]] void FailShort(const std::string& sWanted) const;
    bool IsWriting() const;
    void Take(char* pBytes, std::size_t nSize);
    void Fill();
    void PassOn();
    void Sum();

    std::unique_ptr<CTOVFile> m_pFile; // null unless this stream has opened it
    std::unique_ptr<CTOVFileStream> m_pFileStream;
    ITOVStream& m_oStream;
    const std::string m_sName;
    const int m_nMode;
    const unsigned long long m_ullSize;
    unsigned long long m_ullInStream; // the bytes to read that the block does not hold yet
    unsigned long long m_ullBlock;    // the position of the other stream at which the block begins
    std::vector<char> m_aBlock;
    std::size_t m_nFilled = 0; // the bytes that it holds, when reading
    std::size_t m_nPassed = 0; // the bytes of it that have been read or written
    std::size_t m_nSummed = 0; // the bytes of it that the CRC-32 contains
    unsigned int m_uCrc = 0xFFFFFFFF;
    std::vector<int> m_anVersions; // of the open sections, when reading
};

inline CTOVCheckedStream::CTOVCheckedStream(const char* szFileName)
    : m_pFile(OpenFile(szFileName)), m_pFileStream(new CTOVFileStream(m_pFile.get(), eStreamModeLoading)),
      m_oStream(*m_pFileStream), m_sName(NameOf(szFileName)), m_nMode(eStreamModeLoading),
      m_ullSize(m_pFileStream->GetSize()), m_ullInStream(m_ullSize), m_ullBlock(0), m_aBlock(BlockFor(m_ullSize))
{
    if (m_ullSize == UNKNOWN_SIZE)
        Fail(eFailureUnreadable, "cannot be read: its size is unknown, or 2 GB or more");
}

inline CTOVCheckedStream::CTOVCheckedStream(ITOVStream& oStream, unsigned long long ullSize)
    : m_oStream(oStream), m_sName("the stream"), m_nMode(oStream.GetFormat() | eStreamModeLoading), m_ullSize(ullSize),
      m_ullInStream(ullSize), m_ullBlock(oStream.Tell()), m_aBlock(BlockFor(ullSize))
{
}

inline CTOVCheckedStream::CTOVCheckedStream(ITOVStream& oStream)
    : m_oStream(oStream), m_sName("the stream"), m_nMode(oStream.GetFormat() | eStreamModeSaving), m_ullSize(0),
      m_ullInStream(0), m_ullBlock(oStream.Tell()), m_aBlock(BLOCK_SIZE)
{
}

inline CTOVCheckedStream::~CTOVCheckedStream()
{
    TOVDebug::RunInDestructor([this] { PassOn(); });
}

inline void CTOVCheckedStream::Read(void* pBuffer, unsigned long long ullSize)
{
    TOV_ASSERT(pBuffer != NULL || ullSize == 0);
    if (IsWriting())
        Fail(eFailureWrongDirection, "is written, not read");

    // Most reads are of a value in the block.
    if (ullSize <= m_nFilled - m_nPassed)
    {
        Take(static_cast<char*>(pBuffer), static_cast<std::size_t>(ullSize));
        return;
    }
    if (ullSize > GetRest())
        FailShort(std::to_string(ullSize) + " bytes");

    char* pNext = static_cast<char*>(pBuffer);
    for (std::size_t nLeft = static_cast<std::size_t>(ullSize); nLeft > 0;)
    {
        if (m_nPassed == m_nFilled)
            Fill();
        const std::size_t nPart = std::min(nLeft, m_nFilled - m_nPassed);
        Take(pNext, nPart);
        pNext += nPart;
        nLeft -= nPart;
    }
}

inline void CTOVCheckedStream::Write(const void* pBuffer, unsigned long long ullSize)
{
    TOV_ASSERT(pBuffer != NULL || ullSize == 0);
    if (!IsWriting())
        Fail(eFailureWrongDirection, "is read, not written");

    const char* pNext = static_cast<const char*>(pBuffer);
    for (std::size_t nLeft = static_cast<std::size_t>(ullSize); nLeft > 0;)
    {
        if (m_nPassed == m_aBlock.size())
            PassOn();
        const std::size_t nPart = std::min(nLeft, m_aBlock.size() - m_nPassed);
        std::copy_n(pNext, nPart, m_aBlock.data() + m_nPassed);
        pNext += nPart;
        nLeft -= nPart;
        m_nPassed += nPart;
    }
}

inline void CTOVCheckedStream::Seek(long long /*llOffset*/, TOVPlatform::TOVFile::eSeekOrigin /*eOrigin*/)
{
    Fail(eFailureWrongDirection, "has no other position");
}

inline void CTOVCheckedStream::SerializeBegin(int nDataFormatVersion)
{
    if (IsWriting())
    {
        TOV_ASSERT(nDataFormatVersion != -1);
        *this << nDataFormatVersion;
        return;
    }
    TOV_ASSERT(nDataFormatVersion == -1);
    m_anVersions.reserve(m_anVersions.size() + 1); // nothing is read that cannot be kept
    int nVersion = -1;
    *this >> nVersion;
    m_anVersions.push_back(nVersion);
}

inline void CTOVCheckedStream::SerializeEnd()
{
    if (!m_anVersions.empty())
        m_anVersions.pop_back();
}

inline int CTOVCheckedStream::GetMode() const
{
    return m_nMode;
}

inline unsigned long long CTOVCheckedStream::Tell() const
{
    return m_ullBlock + m_nPassed;
}

inline bool CTOVCheckedStream::SupportsRead() const
{
    return !IsWriting();
}

inline bool CTOVCheckedStream::SupportsWrite() const
{
    return IsWriting();
}

inline bool CTOVCheckedStream::SupportsSeek() const
{
    return false;
}

inline bool CTOVCheckedStream::SupportsVersioning() const
{
    return true;
}

inline unsigned long long CTOVCheckedStream::GetSize() const
{
    return m_ullSize;
}

inline int CTOVCheckedStream::GetVersion() const
{
    return m_anVersions.empty() ? -1 : m_anVersions.back();
}

inline int CTOVCheckedStream::ReadCount(unsigned long long ullSmallest)
{
    TOV_ASSERT(ullSmallest > 0);
    int nCount = 0;
    *this >> nCount;
    if (nCount < 0)
        Fail(eFailureBadCount, "is damaged: it has a count of " + std::to_string(nCount));
    if (static_cast<unsigned long long>(nCount) > GetRest() / ullSmallest)
        FailShort(std::to_string(nCount) + " elements of " + std::to_string(ullSmallest) + " bytes or more");
    return nCount;
}

inline void CTOVCheckedStream::Finish()
{
    PassOn();
    if (GetRest() > 0)
        Fail(eFailureTooLong, "goes on after its end, which is byte " + std::to_string(Tell()));
}

inline unsigned long long CTOVCheckedStream::GetRest() const
{
    return IsWriting() ? 0 : m_nFilled - m_nPassed + m_ullInStream;
}

inline unsigned int CTOVCheckedStream::GetCrc()
{
    Sum();
    return ~m_uCrc;
}

inline std::unique_ptr<CTOVFile> CTOVCheckedStream::OpenFile(const char* szFileName)
{
    std::unique_ptr<CTOVFile> pFile(new CTOVFile);
    try
    {
        pFile->Open(szFileName, ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
    }
    catch (const CTOVFile::FileException&)
    {
        throw CheckedStreamException(eFailureNotOpened, NameOf(szFileName), "cannot be opened");
    }
    return pFile;
}

// The name may be the id of a text, or null.
inline std::string CTOVCheckedStream::NameOf(const char* szFileName)
{
    const CTOVStringA oName(szFileName);
    return oName.GetLength() > 0 ? ~oName : "a file without a name";
}

inline std::size_t CTOVCheckedStream::BlockFor(unsigned long long ullSize)
{
    return static_cast<std::size_t>(std::min<unsigned long long>(BLOCK_SIZE, ullSize));
}

inline void CTOVCheckedStream::Fail(eFailure eCode, const std::string& sProblem) const
{
    throw CheckedStreamException(eCode, m_sName, sProblem);
}

inline void CTOVCheckedStream::FailShort(const std::string& sWanted) const
{
    Fail(eFailureTooShort, "ends too early: after byte " + std::to_string(Tell()) + " there should be " + sWanted +
                               "; bytes left: " + std::to_string(GetRest()));
}

inline bool CTOVCheckedStream::IsWriting() const
{
    return (m_nMode & eStreamModeSaving) != 0;
}

// Copies the next bytes of the block.
inline void CTOVCheckedStream::Take(char* pBytes, std::size_t nSize)
{
    std::copy_n(m_aBlock.data() + m_nPassed, nSize, pBytes);
    m_nPassed += nSize;
}

// Reads the next block, when all bytes of the last one have been read.
inline void CTOVCheckedStream::Fill()
{
    Sum();
    m_ullBlock += m_nFilled;
    m_nFilled = m_nPassed = m_nSummed = 0;
    const std::size_t nBlock = BlockFor(m_ullInStream);
    errno = 0;
    m_oStream.Read(m_aBlock.data(), nBlock);
    const int nError = errno;

    // A stream does not report a failure, but its position does not move past bytes that it could not read.
    if (m_oStream.Tell() != m_ullBlock + nBlock)
        Fail(eFailureUnreadable,
             "cannot be read" + (nError != 0 ? ": " + std::generic_category().message(nError) : ""));
    m_nFilled = nBlock;
    m_ullInStream -= nBlock;
}

// Writes the block, if this stream writes and there is one.
inline void CTOVCheckedStream::PassOn()
{
    if (!IsWriting() || m_nPassed == 0)
        return;
    Sum();
    const std::size_t nBlock = m_nPassed;
    m_ullBlock += nBlock;
    m_nPassed = m_nSummed = 0;
    m_oStream.Write(m_aBlock.data(), nBlock);
}

// Adds the bytes that have been read or written to the CRC-32.
inline void CTOVCheckedStream::Sum()
{
    m_uCrc = CRC32Generate(m_aBlock.data() + m_nSummed, m_nPassed - m_nSummed, m_uCrc);
    m_nSummed = m_nPassed;
}
