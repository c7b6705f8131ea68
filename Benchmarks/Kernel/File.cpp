// Rows of files and streams.

#include <Bench.h>
#include <BenchFile.h>
#include <Inputs.h>

#include <File/TOVFile.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <cstdio>

using namespace Inputs;

namespace
{
// A file that is there while a row is measured. It holds numbers in the machine's own form.
class CNumbersFile
{
public:
    explicit CNumbersFile(int nCount) : m_sName(BenchFile("kernel.numbers"))
    {
        CTOVFile oFile;
        oFile.Open(GetName(), ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary);
        const std::vector<int> aNumbers = RandomNumbers(nCount);
        oFile.Write(aNumbers.data(), aNumbers.size() * sizeof(int));
        oFile.Close();
    }
    ~CNumbersFile() { std::remove(GetName()); }
    CNumbersFile(const CNumbersFile&) = delete;
    CNumbersFile& operator=(const CNumbersFile&) = delete;

    const char* GetName() const { return m_sName.c_str(); }

private:
    std::string m_sName;
};
} // namespace

BENCH("file/write1M int", KERNEL)
{
    const CNumbersFile oNumbers(1);
    for (auto _ : oState)
    {
        CTOVWriteFileStream oStream(oNumbers.GetName());
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            oStream << nNumber;
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/write1M int (CTOVFile)", KERNEL)
{
    const CNumbersFile oNumbers(1);
    for (auto _ : oState)
    {
        CTOVFile oFile;
        oFile.Open(oNumbers.GetName(), ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary);
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            oFile.Write(&nNumber, sizeof(nNumber));
        oFile.Close();
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/read1M int", KERNEL)
{
    const CNumbersFile oNumbers(MILLION);
    for (auto _ : oState)
    {
        CTOVReadFileStream oStream(oNumbers.GetName());
        for (int nIndex = 0; nIndex < MILLION; ++nIndex)
        {
            int nNumber = 0;
            oStream >> nNumber;
            Use(nNumber);
        }
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/read1M int (CTOVFile)", KERNEL)
{
    const CNumbersFile oNumbers(MILLION);
    for (auto _ : oState)
    {
        CTOVFile oFile;
        oFile.Open(oNumbers.GetName(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
        for (int nIndex = 0; nIndex < MILLION; ++nIndex)
        {
            int nNumber = 0;
            oFile.Read(&nNumber, sizeof(nNumber));
            Use(nNumber);
        }
        oFile.Close();
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/open+close", KERNEL)
{
    const CNumbersFile oNumbers(1000);
    for (auto _ : oState)
    {
        CTOVFile oFile;
        oFile.Open(oNumbers.GetName(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
        oFile.Close();
    }
}

BENCH("file/open+close (CTOVReadFileStream)", KERNEL)
{
    const CNumbersFile oNumbers(1000);
    for (auto _ : oState)
    {
        CTOVReadFileStream oStream(oNumbers.GetName());
        Touch(oStream);
    }
}

BENCH("file/fopen+1 getc+close", KERNEL)
{
    const CNumbersFile oNumbers(1000);
    for (auto _ : oState)
    {
        CTOVFile oFile;
        oFile.Open(oNumbers.GetName(), ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
        char cCharacter = 0;
        oFile.Read(&cCharacter, 1);
        Use(cCharacter);
        oFile.Close();
    }
}
