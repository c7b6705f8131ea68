// Declares CHandleRounds, which fills the library's table of files and empties it again, as often as is asked.
#pragma once

#include <File/TOVFile.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

constexpr long FILE_SLOTS = 1024;

// What the rounds found out.
struct sHandleFigures
{
    long lRounds = 0;
    long lOpened = 0;
    long lRefused = 0;         // opens of a full table
    long lDeviations = 0;      // facts that were not as described
    std::string sFirst;        // the first one
    long lHandlesAtStart = 0;  // after one round more, which comes first
    long lHandlesWhenFull = 0; // the fewest of all rounds that counted
    long lHandlesAtEnd = 0;
};

// A round opens a file for each slot, reads through each what the round before has left in that file, and writes and
// reads contents of its own, in an order by chance. Some of the files are closed and others opened in their slots, and
// then all are closed: forward, backward, or by chance. Every second round uses objects of CTOVFile, which own their
// handles, the others the functions of the platform.
class CHandleRounds
{
public:
    explicit CHandleRounds(const std::filesystem::path& oFolder);

    // Counting the system's handles takes long on some systems: it is done in every round of that number.
    sHandleFigures Run(long lRounds, long lRoundsForACount);

private:
    enum eOrder
    {
        eForward,
        eBackward,
        eAtRandom,
        eOrders
    };

    std::string NameOf(long lFile) const;
    std::vector<long> Shuffled();
    void RunOne(bool bCount);
    void OpenAll();
    void Open(long lFile, unsigned long long hExpected);
    bool ReadThrough(long lFile, const std::string& sContents);
    bool WriteThrough(long lFile, const std::string& sContents);
    void ExpectRefusal();
    void ReuseSome();
    void CloseAll(eOrder nOrder);
    void Close(long lFile);
    void Expect(bool bHolds, const char* szFact, long lFile = -1);

    const std::filesystem::path m_oFolder;
    std::mt19937 m_oChance{20}; // the same in every run
    sHandleFigures m_oFigures;
    long m_lRound = 0;
    bool m_bObjects = false;
    std::vector<CTOVFile> m_aObjects;
    std::vector<unsigned long long> m_aHandles;
};
