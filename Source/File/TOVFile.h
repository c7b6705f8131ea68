// Declares CTOVFile, an open file.
#pragma once

#include <File/TOVFileInterface.h>

// Opens, reads and writes one file. Its name may begin with an assign of CTOVVirtualFileSystem. The object owns its
// platform handle, and the destructor closes it. A copy has the same handle: the first of the two that closes it leaves
// the other with a stale handle. The class has no lock: use a file from one thread at a time.
//
//   operation            on a closed file    when the system fails
//   Open                 opens the file      throws FileException, code 0; the object is closed
//   Close, destruction   do nothing          not reported; the file is closed
//   Read, Write          return 0            return 0
//   Flush                does nothing        not reported
//   Seek                 throws              not reported
//   Tell, GetSize        throw               all 64 bits set
//   IsEof                throws              compares what GetSize and Tell return
//   IsOpen               returns false       cannot fail
class TOV_EXPORT CTOVFile : public ITOVFile
{
public:
    // Code 0: the file could not be opened, whatever the cause. Code 5: a seek failed.
    class TOV_EXPORT FileException : public ITOVFile::Exception
    {
    public:
        explicit FileException(unsigned short usErrorCode);
        FileException(const FileException& oOther);
        FileException& operator=(const FileException& oOther);
    };

    // Virtual operations; their order is part of the exported design.

    // Resolves the name and opens the file with nFlags (eFileOpenFlags). Throws FileException with code 0 if that
    // fails; the object is then closed. Settled: the handle of a file that is already open is overwritten, not closed.
    void Open(const char* szFileName, int nFlags) override;

    // Does nothing if the file is closed. A failure is not reported: the file is closed all the same, and data that the
    // system did not accept is lost.
    void Close() override;

    // Settled: these return 1 if the whole block was transferred, otherwise 0, and never a number of bytes; the part of
    // a block that could be read is in the buffer. They return 0 for a closed file, for a size of 0 and for a null
    // buffer. The size is cut to its low 32 bits.
    unsigned long long Read(void* pBuffer, unsigned long long ullSize) override;
    unsigned long long Write(const void* pBuffer, unsigned long long ullSize) override;

    // Settled: never reports a failure of the system. The offset is cut to its low 32 bits.
    // Throws unless the file is open ("hHandle != FILE_INVALID_HANDLE").
    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override;

    // Does nothing if the file is closed. A failure is not reported.
    void Flush() override;

    // Returns the position in bytes. All 64 bits are set if the system cannot return it, as beyond 0x7FFFFFFF.
    // Throws unless the file is open, as IsEof and GetSize do.
    unsigned long long Tell() const override;

    bool IsOpen() const override;

    // Returns whether the position equals the size. A position beyond the end is not at the end.
    bool IsEof() const override;

    // Returns the size in bytes, within the limits of Tell. The position is kept, unless Tell cannot return it or the
    // system fails: it may then be at the end.
    unsigned long long GetSize() const override;

    // Does the same as Close.
    virtual ~CTOVFile();

    // Makes an object whose file is closed.
    CTOVFile();

    // Both copy the value of the handle and nothing else. A handle that the target had before is not closed.
    CTOVFile(const CTOVFile& oOther);
    CTOVFile& operator=(const CTOVFile& oOther);

private:
    tHandle m_hFile; // FILE_INVALID_HANDLE: closed
};
