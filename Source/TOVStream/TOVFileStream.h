// A stream over an open file.
#pragma once

#include <File/TOVFile.h>
#include <TOVContainers/TOVStack.h>
#include <TOVStream/TOVStream.h>

// Puts ITOVStream on a file that somebody else owns: the file is never closed or deleted here, and must be valid as
// long as the stream is used. Copies share the file. One thread at a time for a stream and its file.
//
// What stands in the file is what was written, in order, and nothing else: no header, no lengths, no end marks, no
// padding. A section start is the version as operator << renders an int, a section end is nothing.
//
//    SerializeBegin(3), six bytes, SerializeEnd():     03 00 00 00  p0 p1 p2 p3 p4 p5
//
// Direction is the mode word's: see ITOVStream. A word with neither or both of its direction bits reads and writes.
class TOV_EXPORT CTOVFileStream : public ITOVStream
{
public:
    // A transfer against the direction: class eClassStream, code 4 from Read, 5 from Write. No kind of StreamException.
    class TOV_EXPORT FileStreamException : public CTOVException
    {
    public:
        explicit FileStreamException(unsigned short usErrorCode);
        FileStreamException(const FileStreamException& oOther);
        FileStreamException& operator=(const FileStreamException& oOther);
    };

    // Virtual operations in the order of ITOVStream, the destructor last. The first three and Tell throw unless
    // m_pFile != NULL.

    // Read throws FileStreamException 4 when storing only, Write 5 when loading only.
    void Read(void* pBuffer, unsigned long long ullSize) override;
    void Write(const void* pBuffer, unsigned long long ullSize) override;
    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override;

    // Storing: writes the version; throws unless nDataFormatVersion != -1.
    // Else: remembers the enclosing section's version and reads this one's, which stays the enclosing one's at the end
    // of the file; throws unless nDataFormatVersion == -1. An exception on the way rolls nothing back.
    void SerializeBegin(int nDataFormatVersion) override;

    // Storing: nothing. Else: back to the enclosing section's version, or -1 where there is none.
    void SerializeEnd() override;

    int GetMode() const override;
    unsigned long long Tell() const override;

    // All true, whatever the mode.
    bool SupportsRead() const override;
    bool SupportsWrite() const override;
    bool SupportsSeek() const override;
    bool SupportsVersioning() const override;

    // The file's size when the stream was made; writing does not change it.
    unsigned long long GetSize() const override;

    // Always -1 when storing.
    int GetVersion() const override;

    virtual ~CTOVFileStream();

    // Throws unless pFile != NULL, and for a closed file the check of its GetSize. The option value is kept, and has no
    // effect.
    CTOVFileStream(CTOVFile* pFile, int nMode, unsigned long long ullOption = 0);
    CTOVFileStream(const CTOVFileStream& oOther);
    CTOVFileStream& operator=(const CTOVFileStream& oOther);

private:
    void SetVersion(int nVersion);
    void PushVersion(int nVersion);
    int PopVersion();
    void ClearVersionStack();

    CTOVFile* m_pFile;
    [[maybe_unused]] unsigned long long m_ullReserved; // 0; no effect
    unsigned long long m_ullSize;
    [[maybe_unused]] unsigned long long m_ullOption; // no effect
    int m_nMode;
    int m_nVersion;
    CTOVStack<int> m_aVersionStack; // versions of the enclosing sections, while reading
};
