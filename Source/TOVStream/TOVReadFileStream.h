// Declares CTOVReadFileStream, a stream that opens a file by name and reads it.
#pragma once

#include <File/TOVFile.h>
#include <TOVStream/TOVFileStream.h>

// The constructor opens the file and the destructor closes it; the stream cannot be reopened. It owns the file and the
// inner stream, to which it passes its calls. The format is binary and the direction is loading. Use it from one thread
// at a time.
//
// A copy has the same file handle and the same inner stream as its source, and each destructor frees both: at most one
// of the two may be destroyed.
class TOV_EXPORT CTOVReadFileStream : public ITOVStream
{
public:
    // The class of this exception is eClassStream. Code 0: the file could not be opened; 2: there is no inner stream;
    // 4: the operation is for the other direction.
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

    // These throw ReadFileStreamException 4.
    void Write(const void* pBuffer, unsigned long long ullSize) override;
    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override;

    // These do the same as those of a loading CTOVFileStream: pass -1, then call GetVersion.
    void SerializeBegin(int nDataFormatVersion) override;
    void SerializeEnd() override;

    // Returns the open flags of the file, ITOVFile::eFileOpenRead and eFileOpenBinary. The bit of eFileOpenRead is also
    // that of eStreamModeLoading.
    int GetMode() const override;
    unsigned long long Tell() const override;
    bool SupportsRead() const override;
    bool SupportsWrite() const override;
    bool SupportsSeek() const override;
    bool SupportsVersioning() const override;

    // Settled: returns 0, not the file's size.
    unsigned long long GetSize() const override;
    int GetVersion() const override;

    virtual ~CTOVReadFileStream();

    // Opens the file by CTOVFile, so that the name may begin with an assign. Throws ReadFileStreamException 0 if it
    // cannot be opened. The option value is passed to the inner stream and has no effect.
    explicit CTOVReadFileStream(const char* szFileName, unsigned long long ullOption = 0);
    CTOVReadFileStream(const CTOVReadFileStream& oOther);
    CTOVReadFileStream& operator=(const CTOVReadFileStream& oOther);

private:
    CTOVFile m_oFile;
    CTOVFileStream* m_pStream;
    int m_nMode;
};

TOV_EXPORT_INLINE int CTOVReadFileStream::GetMode() const
{
    return m_nMode;
}
