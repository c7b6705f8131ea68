#include "HandleRounds.h"

#include "SystemHandles.h"

#include <TOVPlatform/TOVFile.h>

#include <algorithm>
#include <fstream>
#include <numeric>

namespace File = TOVPlatform::TOVFile;

namespace
{
// Contents have lengths of all kinds, up to more than the buffer of a stream.
constexpr long LENGTHS[] = {16, 17, 24, 100, 511, 512, 513, 1000, 4095, 4096, 4097, 9000};

constexpr int UPDATE = ITOVFile::eFileOpenRead | ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary;

// What a file holds after a round, and nothing before the first. No two files of a round hold the same, nor one file
// after two rounds. A file's length stays the same, as nothing here shortens a file.
std::string ContentsOf(long lFile, long lRound)
{
    std::string sContents;
    if (lRound < 0)
        return sContents;
    const std::size_t nLength = LENGTHS[lFile % std::size(LENGTHS)];
    while (sContents.size() < nLength)
        sContents += std::to_string(lFile) + " in " + std::to_string(lRound) + ", ";
    sContents.resize(nLength);
    return sContents;
}
} // namespace

CHandleRounds::CHandleRounds(const std::filesystem::path& oFolder)
    : m_oFolder(oFolder), m_aObjects(FILE_SLOTS), m_aHandles(FILE_SLOTS, FILE_INVALID_HANDLE)
{
}

sHandleFigures CHandleRounds::Run(long lRounds, long lRoundsForACount)
{
    for (long lFile = 0; lFile < FILE_SLOTS; ++lFile)
        std::ofstream(NameOf(lFile));

    // What the system and the runtime open once, at the first use of something, counts as there from the start.
    RunOne(false);

    m_oFigures.lHandlesAtStart = CountSystemHandles();
    m_oFigures.lHandlesWhenFull = m_oFigures.lHandlesAtStart + FILE_SLOTS;
    for (m_lRound = 1; m_lRound <= lRounds; ++m_lRound)
    {
        RunOne(m_lRound % lRoundsForACount == 0);
        ++m_oFigures.lRounds;
    }
    m_oFigures.lHandlesAtEnd = CountSystemHandles();
    return m_oFigures;
}

std::string CHandleRounds::NameOf(long lFile) const
{
    return (m_oFolder / std::to_string(lFile)).string();
}

std::vector<long> CHandleRounds::Shuffled()
{
    std::vector<long> aFiles(FILE_SLOTS);
    std::iota(aFiles.begin(), aFiles.end(), 0);
    std::shuffle(aFiles.begin(), aFiles.end(), m_oChance);
    return aFiles;
}

void CHandleRounds::RunOne(bool bCount)
{
    m_bObjects = m_lRound % 2 != 0;
    OpenAll();
    ExpectRefusal();
    if (bCount)
        m_oFigures.lHandlesWhenFull = std::min(m_oFigures.lHandlesWhenFull, CountSystemHandles());

    for (const long lFile : Shuffled())
        Expect(ReadThrough(lFile, ContentsOf(lFile, m_lRound - 1)), "a file holds what was written to it", lFile);
    for (const long lFile : Shuffled())
        Expect(WriteThrough(lFile, ContentsOf(lFile, m_lRound)), "a file can be written", lFile);
    for (const long lFile : Shuffled())
        Expect(ReadThrough(lFile, ContentsOf(lFile, m_lRound)), "a handle reaches its own file", lFile);

    ReuseSome();
    ExpectRefusal();
    CloseAll(static_cast<eOrder>(m_lRound / 2 % eOrders));
}

void CHandleRounds::OpenAll()
{
    for (long lFile = 0; lFile < FILE_SLOTS; ++lFile)
        Open(lFile, static_cast<unsigned long long>(lFile));
}

// Opens a file, which must get this slot.
void CHandleRounds::Open(long lFile, unsigned long long hExpected)
{
    Expect(File::CTOVHandleManager::Instance().FindFreeHandle() == hExpected, "the lowest slot is the next", lFile);
    ++m_oFigures.lOpened;
    m_aHandles[lFile] = hExpected;
    if (!m_bObjects)
    {
        Expect(File::Open(NameOf(lFile).c_str(), "r+b") == hExpected, "a file gets the lowest slot", lFile);
        return;
    }
    try
    {
        m_aObjects[lFile].Open(NameOf(lFile).c_str(), UPDATE);
    }
    catch (const CTOVFile::FileException&)
    {
        Expect(false, "a file can be opened", lFile);
    }
    Expect(File::CTOVHandleManager::Instance().GetFile(hExpected) != nullptr, "a file gets the lowest slot", lFile);
}

bool CHandleRounds::ReadThrough(long lFile, const std::string& sContents)
{
    // One byte more would be read if it were there.
    std::string sRead(sContents.size() + 1, '\0');
    unsigned long ulRead = 0;
    if (m_bObjects)
    {
        CTOVFile& oFile = m_aObjects[lFile];
        oFile.Seek(0, File::eSeekOriginStart);
        ulRead = oFile.GetSize() == sContents.size() && oFile.Read(&sRead[0], sContents.size()) == 1 && oFile.IsEof()
                     ? static_cast<unsigned long>(sContents.size())
                     : 0;
    }
    else
    {
        const unsigned long long hFile = m_aHandles[lFile];
        if (File::Seek(hFile, 0, File::eSeekOriginStart) == File::eFileSuccess)
            ulRead = File::Read(hFile, &sRead[0], 1, static_cast<long>(sRead.size()));
    }
    return ulRead == sContents.size() && sRead.compare(0, ulRead, sContents) == 0;
}

bool CHandleRounds::WriteThrough(long lFile, const std::string& sContents)
{
    if (m_bObjects)
    {
        m_aObjects[lFile].Seek(0, File::eSeekOriginStart);
        return m_aObjects[lFile].Write(sContents.data(), sContents.size()) == 1;
    }
    const unsigned long long hFile = m_aHandles[lFile];
    const long lLength = static_cast<long>(sContents.size());
    return File::Seek(hFile, 0, File::eSeekOriginStart) == File::eFileSuccess &&
           File::Write(hFile, sContents.data(), 1, lLength) == sContents.size();
}

// A full table refuses both ways of opening, and makes no file.
void CHandleRounds::ExpectRefusal()
{
    const std::string sName = NameOf(FILE_SLOTS);
    Expect(File::Open(sName.c_str(), "wb") == FILE_INVALID_HANDLE, "a full table refuses a file");
    try
    {
        CTOVFile oFile;
        oFile.Open(sName.c_str(), ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary);
        Expect(false, "a full table refuses an object's file");
    }
    catch (const CTOVFile::FileException& oException)
    {
        Expect(oException.GetCode() == 0, "a refusal has code 0");
    }
    Expect(!std::filesystem::exists(sName), "a refused file is not made");
    m_oFigures.lRefused += 2;
}

// Closes a file in four, and opens them again: each gets the lowest slot that has become free.
void CHandleRounds::ReuseSome()
{
    std::vector<long> aFiles = Shuffled();
    aFiles.resize(FILE_SLOTS / 4);
    std::vector<unsigned long long> aFree;
    for (const long lFile : aFiles)
    {
        aFree.push_back(m_aHandles[lFile]);
        Close(lFile);
    }
    std::sort(aFree.begin(), aFree.end());
    for (std::size_t nFile = 0; nFile < aFiles.size(); ++nFile)
    {
        Open(aFiles[nFile], aFree[nFile]);
        Expect(ReadThrough(aFiles[nFile], ContentsOf(aFiles[nFile], m_lRound)), "a file holds what was closed",
               aFiles[nFile]);
    }
}

void CHandleRounds::CloseAll(eOrder nOrder)
{
    std::vector<long> aFiles = Shuffled();
    if (nOrder != eAtRandom)
    {
        const auto fnBefore = [this](long lFirst, long lSecond) { return m_aHandles[lFirst] < m_aHandles[lSecond]; };
        std::sort(aFiles.begin(), aFiles.end(), fnBefore);
    }
    if (nOrder == eBackward)
        std::reverse(aFiles.begin(), aFiles.end());
    for (const long lFile : aFiles)
        Close(lFile);
}

void CHandleRounds::Close(long lFile)
{
    const unsigned long long hFile = m_aHandles[lFile];
    if (m_bObjects)
    {
        m_aObjects[lFile].Close();
        Expect(!m_aObjects[lFile].IsOpen(), "an object is closed", lFile);
    }
    else
    {
        Expect(File::Close(hFile) == File::eFileSuccess, "a file can be closed", lFile);
    }
    Expect(File::CTOVHandleManager::Instance().GetFile(hFile) == nullptr, "a closed file's slot is empty", lFile);
    Expect(File::Close(hFile) == File::eFileFailure, "an empty slot cannot be closed", lFile);
}

void CHandleRounds::Expect(bool bHolds, const char* szFact, long lFile)
{
    if (bHolds)
        return;
    if (m_oFigures.lDeviations++ == 0)
        m_oFigures.sFirst = std::string("not so: ") + szFact + ", round " + std::to_string(m_lRound) +
                            (lFile >= 0 ? ", file " + std::to_string(lFile) : "");
}
