// Versioned sections of a stream on a file in memory, against a simple model.
#include "Fuzz.h"

#include <File/TOVFile.h>
#include <TOVStream/TOVFileStream.h>
#include <TOVStream/TOVStreamTraits.h>

#include <algorithm>

namespace
{
constexpr std::size_t MAX_SIZE = 1000;

// A file that needs no system. A transfer that does not fit is short, as with a real file.
class CMemoryFile : public CTOVFile
{
public:
    unsigned long long Read(void* pBuffer, unsigned long long ullSize) override
    {
        const std::size_t nRead = std::min(static_cast<std::size_t>(ullSize), sBytes.size() - nPosition);
        std::copy_n(sBytes.data() + nPosition, nRead, static_cast<char*>(pBuffer));
        nPosition += nRead;
        return nRead == ullSize ? 1 : 0;
    }

    unsigned long long Write(const void* pBuffer, unsigned long long ullSize) override
    {
        const std::size_t nSize = static_cast<std::size_t>(ullSize);
        if (nPosition + nSize > MAX_SIZE)
            return 0;
        sBytes.resize(std::max(sBytes.size(), nPosition + nSize));
        std::copy_n(static_cast<const char*>(pBuffer), nSize, &sBytes[nPosition]);
        nPosition += nSize;
        return 1;
    }

    void Seek(long long llOffset, TOVPlatform::TOVFile::eSeekOrigin /*eOrigin*/) override
    {
        nPosition = static_cast<std::size_t>(llOffset);
    }

    void Flush() override {}
    unsigned long long Tell() const override { return nPosition; }
    bool IsOpen() const override { return true; }
    bool IsEof() const override { return nPosition == sBytes.size(); }
    unsigned long long GetSize() const override { return sBytes.size(); }

    std::string sBytes;
    std::size_t nPosition = 0;
};

// Returns the code of the stream's exception, 0 without one.
template<class TFunction> int ErrorOf(TFunction fnFunction)
{
    try
    {
        fnFunction();
        return 0;
    }
    catch (const CTOVFileStream::FileStreamException& oError)
    {
        return static_cast<int>(oError.GetCode());
    }
}

// What a stream does, told by plain code on a text.
class CStreamModel
{
public:
    CStreamModel(CMemoryFile& oFile, int nMode) : m_oFile(oFile), m_nMode(nMode) {}

    bool IsLoading() const { return (m_nMode & ITOVStream::eStreamModeLoading) != 0; }
    bool IsStoring() const { return (m_nMode & ITOVStream::eStreamModeSaving) != 0; }
    bool IsText() const { return (m_nMode & ITOVStream::eStreamModeFormat) == ITOVStream::eStreamFormatASCII; }
    int GetReadError() const { return IsStoring() && !IsLoading() ? 4 : 0; }
    int GetWriteError() const { return IsLoading() && !IsStoring() ? 5 : 0; }

    std::string FormOf(int nValue) const
    {
        return IsText() ? std::to_string(nValue) : std::string(reinterpret_cast<const char*>(&nValue), sizeof(nValue));
    }

    void Put(const std::string& sBytes) { m_oFile.Write(sBytes.data(), sBytes.size()); }
    void Get(int& nValue) { m_oFile.Read(&nValue, sizeof(nValue)); }

    int GetVersion() const { return m_nVersion; }

    void Enter()
    {
        m_aVersions.push_back(m_nVersion);
        if (!IsText())
            Get(m_nVersion);
    }

    void Leave()
    {
        m_nVersion = m_aVersions.empty() ? -1 : m_aVersions.back();
        if (!m_aVersions.empty())
            m_aVersions.pop_back();
    }

private:
    CMemoryFile& m_oFile;
    int m_nMode;
    int m_nVersion = -1;
    std::vector<int> m_aVersions;
};

void Begin(Fuzz::CInput& oInput, CTOVFileStream& oStream, CStreamModel& oModel)
{
    const int nVersion = oInput.Below(2) == 0 ? -1 : oInput.Number();
    const bool bFails = oModel.IsStoring() ? nVersion == -1 : nVersion != -1 || oModel.IsText();
    FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { oStream.SerializeBegin(nVersion); }));
    if (oModel.IsStoring() && nVersion != -1)
        oModel.Put(oModel.FormOf(nVersion));
    else if (!oModel.IsStoring() && nVersion == -1)
        oModel.Enter();
}

void Transfer(Fuzz::CInput& oInput, CTOVFileStream& oStream, CStreamModel& oModel)
{
    const int nValue = oInput.Value<int>();
    int nRead = nValue;
    int nExpected = nValue;
    if (oInput.Below(2) == 0)
    {
        FUZZ_EXPECT_EQ(oModel.GetWriteError(), ErrorOf([&] { oStream << nValue; }));
        if (oModel.GetWriteError() == 0)
            oModel.Put(oModel.FormOf(nValue));
        return;
    }
    const bool bFails = Fuzz::FailsCheck(
        [&] { FUZZ_EXPECT_EQ(oModel.IsText() ? 0 : oModel.GetReadError(), ErrorOf([&] { oStream >> nRead; })); });
    FUZZ_EXPECT_EQ(oModel.IsText(), bFails);
    if (!bFails && oModel.GetReadError() == 0)
        oModel.Get(nExpected);
    FUZZ_EXPECT_EQ(nExpected, nRead);
}
} // namespace

// The stream and the model have a file each, which stay equal.
FUZZ_TARGET(Streams)
{
    const int nMode = (oInput.Byte() & 3) | oInput.Below(16) << 8;
    CMemoryFile oFile;
    oFile.sBytes = oInput.Bytes(100);
    CMemoryFile oModelFile;
    oModelFile.sBytes = oFile.sBytes;
    const std::size_t nSize = oFile.sBytes.size();
    CTOVFileStream oStream(&oFile, nMode);
    CStreamModel oModel(oModelFile, nMode);
    while (!oInput.IsAtEnd())
    {
        switch (oInput.Below(6))
        {
        case 0:
        case 1:
            Begin(oInput, oStream, oModel);
            break;
        case 2:
            oStream.SerializeEnd();
            if (!oModel.IsStoring())
                oModel.Leave();
            break;
        case 3:
        {
            const int nPosition = oInput.Below(static_cast<int>(std::min<std::size_t>(oFile.sBytes.size(), 255)) + 1);
            oStream.Seek(nPosition, TOVPlatform::TOVFile::eSeekOriginStart);
            oModelFile.nPosition = static_cast<std::size_t>(nPosition);
            break;
        }
        default:
            Transfer(oInput, oStream, oModel);
        }
        FUZZ_EXPECT_EQ(oModel.GetVersion(), oStream.GetVersion());
        FUZZ_EXPECT_EQ(oModelFile.nPosition, static_cast<std::size_t>(oStream.Tell()));
        FUZZ_EXPECT_EQ(oModelFile.sBytes, oFile.sBytes);
    }
    FUZZ_EXPECT_EQ(nSize, static_cast<std::size_t>(oStream.GetSize()));
}
