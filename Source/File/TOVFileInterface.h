// ITOVFile, what an open file can do. CTOVFile is the one implementation that the library has.
#pragma once

#include <Debug/TOVException.h>
#include <TOVPlatform/TOVFile.h>

class TOV_EXPORT ITOVFile
{
public:
    // How Open opens, a bit set. Reading and writing together keep what the file holds.
    enum eFileOpenFlags
    {
        eFileOpenRead = 0x01,
        eFileOpenWrite = 0x02,
        eFileOpenAppend = 0x04, // in place of what the two above would give; with Read also readable
        eFileOpenText = 0x08,   // line ends are translated where the system has its own; wins over Binary
        eFileOpenBinary = 0x10,
        eFileOpenCommit = 0x20, // a flush goes through to the disk; wins over NoCommit
        eFileOpenNoCommit = 0x40
    };

    // Failure of a file operation, of class eClassFile.
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
