// Writes files where there is no room: FullDiskAttack SMALL-FOLDER ROUNDS
//
// The folder is on a file system of its own, which has room for few kibibytes. The exit status is 1 unless everything
// that the library took is in the files once there is room, and all slots and descriptors are free at the end.
#include <File/TOVFile.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace File = TOVPlatform::TOVFile;

namespace
{
constexpr long FILE_SLOTS = 1024;
constexpr int WRITE = ITOVFile::eFileOpenWrite | ITOVFile::eFileOpenBinary;
constexpr int READ = ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary;

long s_lFacts;
long s_lDeviations;
long s_lFiles; // that were written without room
long s_lTold;  // of these, where a write said that it failed
long s_lLost;  // of these, which do not hold all that was taken before

void Expect(bool bHolds, const std::string& sFact)
{
    ++s_lFacts;
    if (!bHolds && s_lDeviations++ < 10)
        std::printf("not so: %s\n", sFact.c_str());
}

std::string ContentsOf(const std::string& sName)
{
    std::ifstream oFile(sName, std::ios::binary);
    return std::string{std::istreambuf_iterator<char>(oFile), {}};
}

long CountDescriptors()
{
    const std::filesystem::directory_iterator oDescriptors("/proc/self/fd");
    return static_cast<long>(std::distance(begin(oDescriptors), end(oDescriptors)));
}

// Takes all room of a file system.
void Fill(const std::string& sFiller)
{
    std::FILE* const pFile = std::fopen(sFiller.c_str(), "wb");
    std::setvbuf(pFile, nullptr, _IONBF, 0);
    const std::string sBlock(4096, 'x');
    while (std::fwrite(sBlock.data(), 1, sBlock.size(), pFile) == sBlock.size())
        continue;
    while (std::fputc('x', pFile) != EOF)
        continue;
    std::fclose(pFile);
}

// One way to be without room.
struct sObstacle
{
    const char* szName;
    std::function<void()> fnRaise;
    std::function<void()> fnLower;
};

// What a file's writes took, and whether one of them said that it took less than it was given.
struct sTaken
{
    std::string sBytes;
    bool bTold = false;
};

void WritePieces(unsigned long long hFile, std::size_t nSize, int nPieces, sTaken& oTaken)
{
    for (int nPiece = 0; nPiece < nPieces; ++nPiece)
    {
        const std::string sPiece(nSize, static_cast<char>('a' + nPiece));
        const unsigned long ulTaken = File::Write(hFile, sPiece.data(), 1, static_cast<long>(nSize));
        oTaken.sBytes += sPiece.substr(0, ulTaken);
        oTaken.bTold = oTaken.bTold || ulTaken != nSize;
    }
}

// What the writes took must arrive, after any number of failed tries, when there is room again.
void ExpectNothingLost(const sObstacle& oObstacle, const std::string& sName, const char* szMode, std::size_t nSize,
                       int nPieces, bool bFlush)
{
    const std::string sCase = std::string(oObstacle.szName) + ", mode " + szMode + ", " + std::to_string(nPieces) +
                              " times " + std::to_string(nSize) + (bFlush ? ", flushed" : "");
    std::filesystem::remove(sName);
    const unsigned long long hFile = File::Open(sName.c_str(), szMode);
    Expect(hFile != FILE_INVALID_HANDLE, "a file is opened: " + sCase);
    sTaken oTaken;
    oObstacle.fnRaise();
    WritePieces(hFile, nSize, nPieces, oTaken);
    bool bClosed = false;
    if (bFlush)
        Expect(File::Flush(hFile) == File::eFileFailure || oTaken.sBytes.empty(), "a flush fails: " + sCase);
    for (int nTry = 0; nTry < 3 && !bClosed; ++nTry)
    {
        bClosed = File::Close(hFile) == File::eFileSuccess;
        Expect(!bClosed || oTaken.bTold, "a close fails: " + sCase);
    }
    if (!bClosed)
        WritePieces(hFile, 10, 1, oTaken);
    oObstacle.fnLower();

    Expect(bClosed || File::Close(hFile) == File::eFileSuccess, "a close succeeds with room: " + sCase);
    const bool bArrived = ContentsOf(sName) == oTaken.sBytes;
    Expect(bArrived, "all that was taken has arrived: " + sCase);
    ++s_lFiles;
    s_lTold += oTaken.bTold ? 1 : 0;
    s_lLost += bArrived ? 0 : 1;
}

void ExpectNothingLost(const sObstacle& oObstacle, const std::string& sName)
{
    for (const char* szMode : {"wb", "ab", "w+b"})
    {
        for (const std::size_t nSize : {1u, 10u, 511u, 512u, 4095u, 4096u, 4097u, 9000u})
        {
            for (const int nPieces : {1, 3, 7})
            {
                ExpectNothingLost(oObstacle, sName, szMode, nSize, nPieces, false);
                ExpectNothingLost(oObstacle, sName, szMode, nSize, nPieces, true);
            }
        }
    }
}

// The table is empty if all of its slots can be taken.
void ExpectAllSlotsFree(const char* szWhen)
{
    std::vector<unsigned long long> aFiles;
    for (long lFile = 0; lFile < FILE_SLOTS; ++lFile)
        aFiles.push_back(File::Open("/dev/null", "rb"));
    for (const unsigned long long hFile : aFiles)
        Expect(hFile != FILE_INVALID_HANDLE && File::Close(hFile) == File::eFileSuccess, szWhen);
}

void LoseObjects(const std::string& sName, long lRounds)
{
    const std::string sBytes(100, 'x');
    for (long lRound = 0; lRound < lRounds; ++lRound)
    {
        CTOVFile oFile;
        oFile.Open(sName.c_str(), WRITE);
        Expect(oFile.Write(sBytes.data(), sBytes.size()) == 1, "the buffer takes a few bytes");
        oFile.Close();
        Expect(!oFile.IsOpen(), "an object gives up what cannot be written");

        CTOVWriteFileStream oStream(sName.c_str());
        oStream.SerializeBegin(1);
        oStream.Write(sBytes.data(), sBytes.size());
        oStream.SerializeEnd();
    }
    ExpectAllSlotsFree("no slot is lost to files that could not be written");
}

// The beginning of this file can be opened, and every read of it fails.
void ReadWithErrors(long lRounds)
{
    for (long lRound = 0; lRound < lRounds; ++lRound)
    {
        char szBytes[16] = "unchanged";
        CTOVFile oFile;
        oFile.Open("/proc/self/mem", READ);
        Expect(oFile.Read(szBytes, sizeof(szBytes)) == 0, "a failed read is told");
        CTOVReadFileStream oStream("/proc/self/mem");
        oStream.SerializeBegin(-1);
        Expect(oStream.GetVersion() == -1 && oStream.Tell() == 0, "a failed read leaves version and position");
        oStream.Read(szBytes, sizeof(szBytes));
        Expect(std::string(szBytes) == "unchanged", "a failed read leaves the bytes");
    }
    ExpectAllSlotsFree("no slot is lost to files that could not be read");
}

void SetSizeLimit(rlim_t ulBytes)
{
    rlimit oLimit = {};
    ::getrlimit(RLIMIT_FSIZE, &oLimit);
    oLimit.rlim_cur = ulBytes;
    ::setrlimit(RLIMIT_FSIZE, &oLimit);
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 3)
        return 2;
    const std::string sFolder = aszArguments[1];
    const long lRounds = std::atol(aszArguments[2]);
    const std::string sFiller = sFolder + "/filler";
    std::signal(SIGXFSZ, SIG_IGN);
    ExpectAllSlotsFree("all slots can be used");
    const long lDescriptors = CountDescriptors();

    const sObstacle oFullDisk = {"full disk", [&] { Fill(sFiller); }, [&] { std::filesystem::remove(sFiller); }};
    ExpectNothingLost(oFullDisk, sFolder + "/file");
    for (const rlim_t ulLimit : {0u, 1u, 100u})
    {
        const sObstacle oSizeLimit = {"limit of sizes", [ulLimit] { SetSizeLimit(ulLimit); },
                                      [] { SetSizeLimit(RLIM_INFINITY); }};
        // A limit of more than the first piece is no obstacle to it.
        for (const std::size_t nSize : {200u, 4096u, 9000u})
            ExpectNothingLost(oSizeLimit, sFolder + "/file", "wb", nSize, 3, nSize == 200);
    }
    LoseObjects("/dev/full", lRounds);
    Fill(sFiller);
    LoseObjects(sFolder + "/file", lRounds);
    std::filesystem::remove(sFiller);
    ReadWithErrors(lRounds);
    Expect(CountDescriptors() == lDescriptors, "all descriptors are closed");

    std::printf("%ld facts, %ld deviations\n", s_lFacts, s_lDeviations);
    std::printf("%ld files without room, a write told it for %ld, of which %ld lost what was taken before\n", s_lFiles,
                s_lTold, s_lLost);
    return s_lDeviations == 0 ? 0 : 1;
}
