// Declares ITOVFile, the interface of an open file.
#pragma once

#include <Debug/TOVException.h>
// Needed for eSeekOrigin, whose enumerators the callers of Seek name as well.
#include <TOVPlatform/TOVFile.h>

// The library has one implementation of this interface, CTOVFile.
class TOV_EXPORT ITOVFile
{
public:
    // The flags of Open, which can be combined. Read and Write together keep the contents of the file.
    enum eFileOpenFlags
    {
        eFileOpenRead = 0x01,
        eFileOpenWrite = 0x02,
        eFileOpenAppend = 0x04, // overrides Read and Write; together with Read the file is also readable
        eFileOpenText = 0x08,   // line ends are translated where the system has its own; overrides Binary
        eFileOpenBinary = 0x10,
        eFileOpenCommit = 0x20, // a flush writes to the disk; overrides NoCommit
        eFileOpenNoCommit = 0x40
    };

    // Reports the failure of a file operation. Its class is eClassFile.
    class TOV_EXPORT Exception : public CTOVException
    {
    public:
        explicit Exception(unsigned short usErrorCode);
        Exception(const Exception& oOther);
        Exception& operator=(const Exception& oOther);
    };

    // Virtual operations; their order is part of the exported design. There is no virtual destructor.
    virtual void Open(const char* szFileName, int nFlags) = 0;
    virtual void Close() = 0;
    virtual unsigned long long Read(void* pBuffer, unsigned long long ullSize) = 0;
    virtual unsigned long long Write(const void* pBuffer, unsigned long long ullSize) = 0;
    virtual void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) = 0;
    virtual void Flush() = 0;
    virtual unsigned long long Tell() const = 0;
    virtual bool IsOpen() const = 0;
    virtual bool IsEof() const = 0;
    virtual unsigned long long GetSize() const = 0;

    ITOVFile();
    ITOVFile(const ITOVFile& oOther);
    ITOVFile& operator=(const ITOVFile& oOther);
};
