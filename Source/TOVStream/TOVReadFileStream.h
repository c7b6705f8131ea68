// A stream that reads a file, opened by name.
#pragma once

#include <File/TOVFile.h>
#include <TOVStream/TOVFileStream.h>

// Opens the file in its constructor and closes it in its destructor; there is no reopening. Owns the file and the inner
// stream that it forwards to. Binary format, loading. One thread at a time.
//
// A copy holds the same file handle and the same inner stream as its source, and each destructor frees both: at most
// one of the two may be destroyed.
class TOV_EXPORT CTOVReadFileStream : public ITOVStream
{
public:
    // Class eClassStream. Code 0: the file could not be opened; 2: no inner stream; 4: an operation against the
    // direction.
    class TOV_EXPORT ReadFileStreamException : public CTOVException
    {
    public:
        explicit ReadFileStreamException(unsigned short usErrorCode);
        ReadFileStreamException(const ReadFileStreamException& oOther);
        ReadFileStreamException& operator=(const ReadFileStreamException& oOther);
    };

    // Virtual operations in the order of ITOVStream, the destructor last.

    // A short read is not reported.
    void Read(void* pBuffer, unsigned long long ullSize) override;

    // Throw ReadFileStreamException 4.
    void Write(const void* pBuffer, unsigned long long ullSize) override;
    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override;

    // As CTOVFileStream does it when loading: pass -1, then ask GetVersion.
    void SerializeBegin(int nDataFormatVersion) override;
    void SerializeEnd() override;

    // The open flags of the file, ITOVFile::eFileOpenRead and eFileOpenBinary: read is loading.
    int GetMode() const override;
    unsigned long long Tell() const override;
    bool SupportsRead() const override;
    bool SupportsWrite() const override;
    bool SupportsSeek() const override;
    bool SupportsVersioning() const override;

    // Settled: 0, not the file's size.
    unsigned long long GetSize() const override;
    int GetVersion() const override;

    virtual ~CTOVReadFileStream();

    // Opens the file through CTOVFile, so an assigned name may stand in front. Throws ReadFileStreamException 0 if it
    // cannot be opened. The option value goes to the inner stream, and has no effect.
    explicit CTOVReadFileStream(const char* szFileName, unsigned long long ullOption = 0);
    CTOVReadFileStream(const CTOVReadFileStream& oOther);
    CTOVReadFileStream& operator=(const CTOVReadFileStream& oOther);

private:
    CTOVFile m_oFile;
    CTOVFileStream* m_pStream;
    int m_nMode;
};
