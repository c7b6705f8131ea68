// What the tests of streams over files share.
#pragma once

#include "TOVStream/TOVStreamInstruments.h"

typedef CTOVFileStream::FileStreamException FileStreamException;

constexpr int READ = ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary;
constexpr int WRITE = ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary;
constexpr int UPDATE = READ | WRITE;

// A file that remembers what it was asked for, and fails.
class CSpyFile : public CTOVFile
{
public:
    unsigned long long Read(void* pBuffer, unsigned long long ullSize) override
    {
        m_aCalls.push_back("Read");
        m_pBuffer = pBuffer;
        m_ullSize = ullSize;
        return 0;
    }

    unsigned long long Write(const void* pBuffer, unsigned long long ullSize) override
    {
        m_aCalls.push_back("Write");
        m_pBuffer = pBuffer;
        m_ullSize = ullSize;
        return 0;
    }

    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin eOrigin) override
    {
        m_aCalls.push_back("Seek");
        m_llOffset = llOffset;
        m_eOrigin = eOrigin;
    }

    unsigned long long Tell() const override
    {
        m_aCalls.push_back("Tell");
        return 0x123456789ABull;
    }

    unsigned long long GetSize() const override
    {
        m_aCalls.push_back("GetSize");
        return 0xCDEF01234567ull;
    }

    void Close() override
    {
        m_aCalls.push_back("Close");
        CTOVFile::Close();
    }

    mutable std::vector<std::string> m_aCalls;
    const void* m_pBuffer = nullptr;
    unsigned long long m_ullSize = 0;
    long long m_llOffset = 0;
    TOVPlatform::TOVFile::eSeekOrigin m_eOrigin = TOVPlatform::TOVFile::eSeekOriginStart;
};

// Steered by its overridden queries.
class CSteeredStream : public CTOVFileStream
{
public:
    CSteeredStream(CTOVFile* pFile, int nMode) : CTOVFileStream(pFile, nMode, 0), m_nMode(nMode) {}

    int GetMode() const override { return m_nMode; }
    int GetVersion() const override { return m_bOwnVersion ? 42 : CTOVFileStream::GetVersion(); }

    void Write(const void* pBuffer, unsigned long long ullSize) override
    {
        ++m_nWrites;
        CTOVFileStream::Write(pBuffer, ullSize);
    }

    void Read(void* pBuffer, unsigned long long ullSize) override
    {
        ++m_nReads;
        CTOVFileStream::Read(pBuffer, ullSize);
    }

    int m_nMode;
    bool m_bOwnVersion = false;
    int m_nWrites = 0;
    int m_nReads = 0;
};

class CFileStreamFixture : public testing::Test
{
protected:
    CFileStreamFixture() : m_sFile(m_oFolder.File("stream.bin")) {}

    CTOVFile* OpenForReading(const std::string& sContents)
    {
        WriteWholeFile(m_sFile, sContents);
        m_oFile.Open(m_sFile.c_str(), READ);
        return &m_oFile;
    }

    CTOVFile* OpenForWriting()
    {
        m_oFile.Open(m_sFile.c_str(), WRITE);
        return &m_oFile;
    }

    CTOVFile* OpenForBoth(const std::string& sContents)
    {
        WriteWholeFile(m_sFile, sContents);
        m_oFile.Open(m_sFile.c_str(), UPDATE);
        return &m_oFile;
    }

    std::string Written()
    {
        m_oFile.Close();
        return ReadWholeFile(m_sFile);
    }

    CTempFolder m_oFolder;
    const std::string m_sFile;
    CTOVFile m_oFile;
};
