// An open file: one platform handle, opened by a name that may begin with an assign of CTOVVirtualFileSystem.
//
// The object owns its handle and closes it when it dies. A copy, however, is the same handle once more: whichever of
// the two closes first leaves the other with a handle that is stale. No lock: one thread at a time.
#pragma once

#include <File/TOVFileInterface.h>

class TOV_EXPORT CTOVFile : public ITOVFile
{
public:
    // Code 0: a file could not be opened, whatever the cause. Code 5: a seek.
    class TOV_EXPORT FileException : public ITOVFile::Exception
    {
    public:
        explicit FileException(unsigned short usErrorCode);
        FileException(const FileException& oOther);
        FileException& operator=(const FileException& oOther);
    };

    // Virtual operations; their order is part of the exported design.

    // Resolves the name and opens it with nFlags (eFileOpenFlags). Throws FileException with code 0 if that fails; the
    // object is closed then. Settled: a handle already held is overwritten without being closed.
    void Open(const char* szFileName, int nFlags) override;

    // A closed file is left alone. A failure is not reported: the object forgets its handle, the file is closed all the
    // same, and what the system did not take is lost.
    void Close() override;

    // Settled: 1 if the whole block was moved, otherwise 0, and never a count of bytes; what did arrive of a block cut
    // short is in the buffer. 0 for a closed file, for a size of 0 and for a null buffer. The size is cut to its low 32
    // bits.
    unsigned long long Read(void* pBuffer, unsigned long long ullSize) override;
    unsigned long long Write(const void* pBuffer, unsigned long long ullSize) override;

    // Settled: never reports a failure of the system. The offset is cut to its low 32 bits.
    // Throws unless the file is open ("hHandle != FILE_INVALID_HANDLE").
    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override;

    // A closed file is left alone. A failure is not reported.
    void Flush() override;

    // Position in bytes; all 64 bits set where the system has none to tell, as beyond 0x7FFFFFFF.
    // Throws unless the file is open, as do IsEof and GetSize.
    unsigned long long Tell() const override;

    bool IsOpen() const override;

    // Whether the position equals the size. A position beyond the end is not at the end.
    bool IsEof() const override;

    // Size in bytes, within the limits of Tell. The position is kept, unless Tell cannot tell it or the system fails:
    // it may be at the end then.
    unsigned long long GetSize() const override;

    // Does the same as Close.
    virtual ~CTOVFile();

    // Closed.
    CTOVFile();

    // Both copy the handle's value and nothing else. A handle that was held before is not closed.
    CTOVFile(const CTOVFile& oOther);
    CTOVFile& operator=(const CTOVFile& oOther);

private:
    tHandle m_hFile; // FILE_INVALID_HANDLE: closed
};
