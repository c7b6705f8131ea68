// Declares CTOVFileStream, a stream on an open file.
#pragma once

#include <File/TOVFile.h>
#include <TOVContainers/TOVStack.h>
#include <TOVStream/TOVStream.h>

// Implements ITOVStream for a file that the caller owns: the stream never closes or deletes the file, which must be
// valid as long as the stream is used. Copies share the file. Use a stream and its file from one thread at a time.
//
// The file contains what was written, in order, and nothing else: no header, no lengths, no end marks, no padding. A
// section begins with its version, which is written as operator << writes an int. The end of a section writes nothing.
//
//    SerializeBegin(3), six bytes, SerializeEnd():     03 00 00 00  p0 p1 p2 p3 p4 p5
//
// The mode word determines the direction: see ITOVStream. A stream whose word has neither or both of the direction bits
// can read and write.
class TOV_EXPORT CTOVFileStream : public ITOVStream
{
public:
    // Reports a transfer in the wrong direction: the class is eClassStream, and the code 4 from Read and 5 from Write.
    // It is not derived from StreamException.
    class TOV_EXPORT FileStreamException : public CTOVException
    {
    public:
        explicit FileStreamException(unsigned short usErrorCode);
        FileStreamException(const FileStreamException& oOther);
        FileStreamException& operator=(const FileStreamException& oOther);
    };

    // Virtual operations in the order of ITOVStream, the destructor last. Read, Write, Seek and Tell throw unless
    // "m_pFile != NULL".

    // Read throws FileStreamException 4 if the stream only stores, and Write throws 5 if it only loads.
    void Read(void* pBuffer, unsigned long long ullSize) override;
    void Write(const void* pBuffer, unsigned long long ullSize) override;
    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override;

    // When storing, writes the version; throws unless "nDataFormatVersion != -1". Otherwise, keeps the version of the
    // enclosing section and reads the version of this one; at the end of the file, the version remains that of the
    // enclosing section. Throws unless "nDataFormatVersion == -1". If reading throws, nothing is undone.
    void SerializeBegin(int nDataFormatVersion) override;

    // When storing, does nothing. Otherwise, restores the version of the enclosing section, or -1 if there is none.
    void SerializeEnd() override;

    int GetMode() const override;
    unsigned long long Tell() const override;

    // These return true, whatever the mode.
    bool SupportsRead() const override;
    bool SupportsWrite() const override;
    bool SupportsSeek() const override;
    bool SupportsVersioning() const override;

    // Returns the size that the file had when the stream was constructed; writing does not change it.
    unsigned long long GetSize() const override;

    // Always returns -1 when storing.
    int GetVersion() const override;

    virtual ~CTOVFileStream();

    // Throws unless "pFile != NULL", and for a closed file the check of CTOVFile::GetSize. The option value is kept and
    // has no effect.
    CTOVFileStream(CTOVFile* pFile, int nMode, unsigned long long ullOption = 0);
    CTOVFileStream(const CTOVFileStream& oOther);
    CTOVFileStream& operator=(const CTOVFileStream& oOther);

private:
    friend class CTOVReadFileStream;
    friend class CTOVWriteFileStream;

    void SetVersion(int nVersion);
    void PushVersion(int nVersion);
    int PopVersion();
    void ClearVersionStack();

    CTOVFile* m_pFile;
    [[maybe_unused]] unsigned long long m_ullReserved; // Settled: always 0 and never read, but the layout is given.
    unsigned long long m_ullSize;
    [[maybe_unused]] unsigned long long m_ullOption; // Settled: never read, but the layout is given.
    int m_nMode;
    int m_nVersion;
    CTOVStack<int> m_aVersionStack; // versions of the enclosing sections, while reading
};
