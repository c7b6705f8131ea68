// A stream that writes a file, opened by name.
#pragma once

#include <File/TOVFile.h>
#include <TOVStream/TOVFileStream.h>

// Opens the file in its constructor, flushes and closes it in its destructor; there is no reopening. Owns the file and
// the inner stream that it forwards to. Binary format. One thread at a time.
//
// A copy holds the same file handle and the same inner stream as its source, and each destructor frees both: at most
// one of the two may be destroyed.
class TOV_EXPORT CTOVWriteFileStream : public ITOVStream
{
public:
    // Class eClassStream. Code 0: the file could not be opened; 2: no inner stream; 3: a seek; 4: another operation
    // against the direction.
    class TOV_EXPORT WriteFileStreamException : public CTOVException
    {
    public:
        explicit WriteFileStreamException(unsigned short usErrorCode);
        WriteFileStreamException(const WriteFileStreamException& oOther);
        WriteFileStreamException& operator=(const WriteFileStreamException& oOther);
    };

    // Virtual operations in the order of ITOVStream, the destructor last.

    // Throws WriteFileStreamException 4.
    void Read(void* pBuffer, unsigned long long ullSize) override;

    // A short write is not reported.
    void Write(const void* pBuffer, unsigned long long ullSize) override;

    // Throws WriteFileStreamException 3.
    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override;

    // As CTOVFileStream does it when saving: pass the version.
    void SerializeBegin(int nDataFormatVersion) override;
    void SerializeEnd() override;

    // The open flags of the file: eFileOpenBinary of ITOVFile with eFileOpenWrite, which is saving, or with
    // eFileOpenAppend. Settled: an appending stream says false to IsSaving, IsStoring and IsLoading, and writes all the
    // same.
    int GetMode() const override;
    unsigned long long Tell() const override;
    bool SupportsRead() const override;
    bool SupportsWrite() const override;
    bool SupportsSeek() const override;
    bool SupportsVersioning() const override;

    // Settled: 0, not the file's size.
    unsigned long long GetSize() const override;
    int GetVersion() const override;

    virtual ~CTOVWriteFileStream();

    // Creates the file, or truncates it, or with bAppend adds at its end. The name goes through CTOVFile, so an
    // assigned name may stand in front. Throws WriteFileStreamException 0 if it cannot be opened. The option value goes
    // to the inner stream, and has no effect.
    explicit CTOVWriteFileStream(const char* szFileName, bool bAppend = false, unsigned long long ullOption = 0);
    CTOVWriteFileStream(const CTOVWriteFileStream& oOther);
    CTOVWriteFileStream& operator=(const CTOVWriteFileStream& oOther);

private:
    CTOVFile m_oFile;
    CTOVFileStream* m_pStream;
    int m_nMode;
};
