// Declares CTOVWriteFileStream, a stream that opens a file by name and writes it.
#pragma once

#include <File/TOVFile.h>
#include <TOVStream/TOVFileStream.h>

// The constructor opens the file; the destructor flushes and closes it. The stream cannot be reopened. It owns the file
// and the inner stream, to which it passes its calls. The format is binary. Use it from one thread at a time.
//
// A copy has the same file handle and the same inner stream as its source, and each destructor frees both: at most one
// of the two may be destroyed.
class TOV_EXPORT CTOVWriteFileStream : public ITOVStream
{
public:
    // The class of this exception is eClassStream. Code 0: the file could not be opened; 2: there is no inner stream;
    // 3: Seek was called; 4: another operation is for the other direction.
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

    // These do the same as those of a saving CTOVFileStream: pass the version.
    void SerializeBegin(int nDataFormatVersion) override;
    void SerializeEnd() override;

    // Returns the open flags of the file: ITOVFile::eFileOpenBinary, and eFileOpenWrite or eFileOpenAppend. The bit of
    // eFileOpenWrite is also that of eStreamModeSaving. Settled: IsSaving, IsStoring and IsLoading of an appending
    // stream return false, although it can write.
    int GetMode() const override;
    unsigned long long Tell() const override;
    bool SupportsRead() const override;
    bool SupportsWrite() const override;
    bool SupportsSeek() const override;
    bool SupportsVersioning() const override;

    // Settled: returns 0, not the file's size.
    unsigned long long GetSize() const override;
    int GetVersion() const override;

    virtual ~CTOVWriteFileStream();

    // Creates the file, truncates an existing one, or with bAppend adds at its end. The file is opened by CTOVFile, so
    // that the name may begin with an assign. Throws WriteFileStreamException 0 if it cannot be opened. The option
    // value is passed to the inner stream and has no effect.
    explicit CTOVWriteFileStream(const char* szFileName, bool bAppend = false, unsigned long long ullOption = 0);
    CTOVWriteFileStream(const CTOVWriteFileStream& oOther);
    CTOVWriteFileStream& operator=(const CTOVWriteFileStream& oOther);

private:
    CTOVFile m_oFile;
    CTOVFileStream* m_pStream;
    int m_nMode;
};

TOV_EXPORT_INLINE int CTOVWriteFileStream::GetMode() const
{
    return m_nMode;
}
