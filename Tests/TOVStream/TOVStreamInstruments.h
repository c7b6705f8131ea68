// What the tests of streams share.
#pragma once

#include "Support/TOVTestSupport.h"

#include <File/TOVFile.h>
#include <TOVStream/TOVFileStream.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

typedef CTOVReadFileStream::ReadFileStreamException ReadFileStreamException;
typedef CTOVWriteFileStream::WriteFileStreamException WriteFileStreamException;

constexpr int MODE_NONE = 0;
constexpr int MODE_LOADING = 1;
constexpr int MODE_SAVING = 2;
constexpr int MODE_BOTH = 3;

// Bytes in their order on disk.
inline std::string Bytes(std::initializer_list<int> aBytes)
{
    std::string sBytes;
    for (const int nByte : aBytes)
        sBytes += static_cast<char>(nByte);
    return sBytes;
}

// A stream in memory that counts what comes in through its virtual slots.
class CMemoryStream : public ITOVStream
{
public:
    explicit CMemoryStream(int nMode, const std::string& sBytes = std::string()) : m_sBytes(sBytes), m_nMode(nMode) {}

    virtual ~CMemoryStream() {}

    void Read(void* pBuffer, unsigned long long ullSize) override
    {
        ++m_nReads;
        m_pLast = pBuffer;
        m_ullLastSize = ullSize;
        const std::size_t nSize = std::min(static_cast<std::size_t>(ullSize), m_sBytes.size() - m_nPosition);
        m_sBytes.copy(static_cast<char*>(pBuffer), nSize, m_nPosition);
        m_nPosition += nSize;
    }

    void Write(const void* pBuffer, unsigned long long ullSize) override
    {
        ++m_nWrites;
        m_pLast = pBuffer;
        m_ullLastSize = ullSize;
        m_sBytes.append(static_cast<const char*>(pBuffer), static_cast<std::size_t>(ullSize));
    }

    void Seek(long long, TOVPlatform::TOVFile::eSeekOrigin) override {}
    void SerializeBegin(int) override {}
    void SerializeEnd() override {}

    int GetMode() const override
    {
        ++m_nModeCalls;
        return m_nMode;
    }

    unsigned long long Tell() const override { return m_nPosition; }
    bool SupportsRead() const override { return true; }
    bool SupportsWrite() const override { return true; }
    bool SupportsSeek() const override { return false; }
    bool SupportsVersioning() const override { return false; }
    unsigned long long GetSize() const override { return m_sBytes.size(); }
    int GetVersion() const override { return -1; }

    std::string m_sBytes;
    int m_nMode;
    std::size_t m_nPosition = 0;
    int m_nReads = 0;
    int m_nWrites = 0;
    const void* m_pLast = nullptr;
    unsigned long long m_ullLastSize = 0;
    mutable int m_nModeCalls = 0;
};

// Gives one format after the other, the last one for ever.
class CFormatSequence : public CMemoryStream
{
public:
    explicit CFormatSequence(const std::vector<int>& aFormats, const std::string& sBytes = std::string())
        : CMemoryStream(MODE_NONE, sBytes), m_aFormats(aFormats)
    {
    }

    int GetFormat() const override
    {
        const std::size_t nCall = std::min(static_cast<std::size_t>(m_nFormatCalls), m_aFormats.size() - 1);
        ++m_nFormatCalls;
        return m_aFormats[nCall];
    }

    const std::vector<int> m_aFormats;
    mutable int m_nFormatCalls = 0;
};

// The lowest free slot of the table of open files: the same before and after where nothing stays open.
inline unsigned long long FreeSlot()
{
    return TOVPlatform::TOVFile::CTOVHandleManager::Instance().FindFreeHandle();
}

// Catches like an application: true if a handler for this very type gets what the statement throws.
template<class TException, class TStatement> bool IsCaughtAs(const TStatement& fnStatement)
{
    try
    {
        fnStatement();
    }
    catch (const TException&)
    {
        return true;
    }
    catch (...)
    {
    }
    return false;
}

// The statement throws this type with class eClassStream and the code.
#define EXPECT_STREAM_EXCEPTION(TException, ulCode, ...)                                                               \
    do                                                                                                                 \
    {                                                                                                                  \
        bool bStreamThrew = false;                                                                                     \
        try                                                                                                            \
        {                                                                                                              \
            __VA_ARGS__;                                                                                               \
        }                                                                                                              \
        catch (TException & oCaught)                                                                                   \
        {                                                                                                              \
            bStreamThrew = true;                                                                                       \
            EXPECT_EQ(CTOVException::eClassStream, oCaught.GetClass());                                                \
            EXPECT_EQ(static_cast<unsigned long>(ulCode), oCaught.GetCode());                                          \
        }                                                                                                              \
        EXPECT_TRUE(bStreamThrew) << "no " #TException " in: " #__VA_ARGS__;                                           \
    } while (false)
