// Open files whose system fails: each result tells it, and what a result acknowledges is in the file.
#include "Faults/Posix/TOVSystemScenarios.h"

#include <TOVPlatform/TOVFile.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <sys/stat.h>

namespace File = TOVPlatform::TOVFile;

namespace
{
constexpr int LARGE = 20000; // more than the buffer of a stream
char s_acLarge[LARGE];

// The contents of a file, without a fault.
std::string ContentsOf(const char* szFile)
{
    const CFaultPause oPause;
    std::string sContents;
    if (std::FILE* const pFile = std::fopen(szFile, "rb"))
    {
        for (int nRead = std::fgetc(pFile); nRead != EOF; nRead = std::fgetc(pFile))
            sContents += static_cast<char>(nRead);
        std::fclose(pFile);
    }
    return sContents;
}

const char* MakeFile(const char* szName, const std::string& sContents)
{
    const CFaultPause oPause;
    const char* const szFile = FaultFile(szName);
    ::chmod(szFile, 0644);
    if (std::FILE* const pFile = std::fopen(szFile, "wb"))
    {
        std::fwrite(sContents.data(), 1, sContents.size(), pFile);
        std::fclose(pFile);
    }
    return szFile;
}

// A file of these contents that is opened without a fault, and closed at the end, until that succeeds.
class COpenFile
{
public:
    COpenFile(const char* szMode, const std::string& sContents) : m_szFile(MakeFile("opened", sContents))
    {
        const CFaultPause oPause;
        m_hFile = File::Open(m_szFile, szMode);
        m_sName = m_szFile;
    }

    ~COpenFile()
    {
        const CFaultPause oPause;
        if (m_hFile != FILE_INVALID_HANDLE)
            File::Close(m_hFile);
    }

    COpenFile(const COpenFile&) = delete;
    COpenFile& operator=(const COpenFile&) = delete;

    operator tHandle() const { return m_hFile; }

    // Closes the file without a fault and returns its contents.
    std::string Close()
    {
        {
            const CFaultPause oPause;
            FAULT_EXPECT(File::Close(m_hFile) == File::eFileSuccess);
        }
        m_hFile = FILE_INVALID_HANDLE;
        return ContentsOf(m_sName.c_str());
    }

    void Forget() { m_hFile = FILE_INVALID_HANDLE; }

private:
    const char* m_szFile;
    tHandle m_hFile = FILE_INVALID_HANDLE;
    std::string m_sName;
};

void OpenIn(const char* szMode)
{
    const char* const szFile = MakeFile("to open", "abcdef");
    const CStrikes oStrikes;
    const tHandle hFile = File::Open(szFile, szMode);
    FAULT_EXPECT((hFile == FILE_INVALID_HANDLE) == oStrikes.Of({"fopen"}));
    if (hFile == FILE_INVALID_HANDLE)
        return;
    const CFaultPause oPause;
    FAULT_EXPECT(File::Close(hFile) == File::eFileSuccess);
}

// Whether what a stream holds could not be written. A write that only falls short is gone on with, unless each does.
bool IsNotWritten(const CStrikes& oStrikes)
{
    return oStrikes.Of({"write (EINTR)", "fflush"}) || (oStrikes.Of({"write"}) && oStrikes.Count() > 1);
}

// Writes parts of a size, and compares what was acknowledged with what is in the file.
void WriteParts(int nSize, int nParts)
{
    COpenFile hFile("wb", "");
    std::string sAcknowledged;
    bool bMore = true;
    for (int nPart = 0; nPart < nParts && bMore; ++nPart)
    {
        const CStrikes oStrikes;
        const std::string sPart(static_cast<std::size_t>(nSize), static_cast<char>('a' + nPart % 26));
        const unsigned long ulWritten = File::Write(hFile, sPart.data(), 1, nSize);
        FAULT_EXPECT((ulWritten != static_cast<unsigned long>(nSize)) ==
                     (oStrikes.Of({"fwrite_unlocked"}) || IsNotWritten(oStrikes)));
        sAcknowledged.append(sPart, 0, ulWritten);
        bMore = ulWritten == static_cast<unsigned long>(nSize);
    }
    FAULT_EXPECT(hFile.Close() == sAcknowledged);
}

// Closes a file with unwritten bytes until there is nothing to be closed.
void CloseWritten()
{
    COpenFile hFile("wb", "");
    {
        const CFaultPause oPause;
        File::Write(hFile, "text", 1, 4);
    }
    const CStrikes oStrikes;
    const bool bClosed = File::Close(hFile) == File::eFileSuccess;
    FAULT_EXPECT(bClosed == !(IsNotWritten(oStrikes) || oStrikes.Of({"fclose"})));
    if (!IsNotWritten(oStrikes))
    {
        hFile.Forget();
        FAULT_EXPECT(ContentsOf(FaultFile("opened")) == "text");
        return;
    }
    FAULT_EXPECT(File::Tell(hFile) == 4); // it stays open
    FAULT_EXPECT(hFile.Close() == "text");
}
} // namespace

tFaultScenarios SystemFileScenarios()
{
    return {
        {"FileOpensToRead", [] { OpenIn("rb"); }},
        {"FileOpensToWrite", [] { OpenIn("wb"); }},
        {"FileOpensToAppend", [] { OpenIn("a"); }},
        {"FileOpensToUpdate", [] { OpenIn("r+b"); }},
        {"FileRefusesReadOnly",
         [] {
             const char* const szFile = MakeFile("read-only", "abc");
             {
                 const CFaultPause oPause;
                 ::chmod(szFile, 0444);
             }
             const CStrikes oStrikes;
             const tHandle hFile = File::Open(szFile, "r+b");
             // Without its status, the system itself decides.
             FAULT_EXPECT(hFile == FILE_INVALID_HANDLE || oStrikes.Of({"stat"}));
             const CFaultPause oPause;
             if (hFile != FILE_INVALID_HANDLE)
                 File::Close(hFile);
             ::chmod(szFile, 0644);
         }},
        {"FileRefusesDirectory",
         [] {
             const tHandle hFile = File::Open(FaultFile("."), "rb");
             FAULT_EXPECT(hFile == FILE_INVALID_HANDLE);
             const CFaultPause oPause;
             if (hFile != FILE_INVALID_HANDLE)
                 File::Close(hFile);
         }},
        {"FileReadsFew",
         [] {
             COpenFile hFile("rb", "abcdef");
             for (int nRead = 0; nRead < 2; ++nRead)
             {
                 const CStrikes oStrikes;
                 char szRead[4] = "";
                 const unsigned long ulRead = File::Read(hFile, szRead, 1, 3);
                 FAULT_EXPECT((ulRead != 3) == oStrikes.Of({"fread", "fread_unlocked"}));
                 FAULT_EXPECT(ulRead != 3 || std::strcmp(szRead, "abc") == 0 || std::strcmp(szRead, "def") == 0);
             }
             const CFaultPause oPause;
             char szRead[8] = "";
             FAULT_EXPECT(File::Seek(hFile, 0, File::eSeekOriginStart) == File::eFileSuccess);
             FAULT_EXPECT(File::Read(hFile, szRead, 1, 6) == 6 && std::strcmp(szRead, "abcdef") == 0);
         }},
        {"FileReadsMany",
         [] {
             COpenFile hFile("rb", std::string(LARGE, 'x'));
             const CStrikes oStrikes;
             const unsigned long ulRead = File::Read(hFile, s_acLarge, 1, LARGE);
             FAULT_EXPECT((ulRead != LARGE) == oStrikes.Of({"fread", "fread_unlocked"}));
         }},
        {"FileReadsWhenShared",
         [] {
             COpenFile hFile("rb", "abcdef");
             File::CTOVHandleManager::Instance().GetFile(hFile);
             const CStrikes oStrikes;
             char szRead[8] = "";
             FAULT_EXPECT((File::Read(hFile, szRead, 3, 2) != 2) == oStrikes.Of({"fread", "fread_unlocked"}));
         }},
        {"FileGetsLines",
         [] {
             COpenFile hFile("rb", "one\ntwo\n");
             const CStrikes oStrikes;
             char szLine[16] = "";
             const bool bRead = File::Gets(hFile, szLine, 16) == File::eFileSuccess;
             FAULT_EXPECT(bRead == !oStrikes.Of({"fgets"}));
             FAULT_EXPECT(!bRead || std::strcmp(szLine, "one\n") == 0);
         }},
        {"FileWritesOnce", [] { WriteParts(100, 1); }},
        {"FileWritesParts", [] { WriteParts(1000, 12); }},
        {"FileWritesStaged", [] { WriteParts(4, 3000); }},
        {"FileWritesMany", [] { WriteParts(LARGE, 2); }},
        {"FileWritesWholeElements",
         [] {
             COpenFile hFile("wb", "");
             const int anNumbers[6] = {1, 2, 3, 4, 5, 6};
             const CStrikes oStrikes;
             const unsigned long ulWritten = File::Write(hFile, anNumbers, sizeof(int), 6);
             FAULT_EXPECT(ulWritten == (oStrikes.Of({"fwrite_unlocked"}) ? 3u : 6u));
             FAULT_EXPECT(hFile.Close().size() == ulWritten * sizeof(int));
         }},
        {"FileStagesForTwoThreads",
         [] {
             COpenFile hFile("wb", "");
             for (int nWrite = 0; nWrite < 5; ++nWrite)
                 File::Write(hFile, "abcd", 1, 4);
             const CStrikes oStrikes;
             FAULT_EXPECT(std::fflush(nullptr) == 0 || oStrikes.Of({"fflush"}));
             std::FILE* const pFile = File::CTOVHandleManager::Instance().GetFile(hFile);
             const CFaultPause oPause;
             FAULT_EXPECT(std::ftell(pFile) % 2 == 0);
         }},
        {"FilePutsText",
         [] {
             COpenFile hFile("wb", "");
             const CStrikes oStrikes;
             const bool bFailed = File::Puts(hFile, "text") == File::eFileSuccess; // settled: reversed
             FAULT_EXPECT(bFailed == oStrikes.Of({"fwrite_unlocked"}));
             FAULT_EXPECT(bFailed || hFile.Close() == "text");
         }},
        {"FilePrintsShort",
         [] {
             COpenFile hFile("wb", "");
             const CStrikes oStrikes;
             const long lPrinted = File::Printf(hFile, "%d %s", 12, "text");
             FAULT_EXPECT(lPrinted == (oStrikes.Of({"fwrite_unlocked"}) ? -1 : 7));
             FAULT_EXPECT(lPrinted < 0 || hFile.Close() == "12 text");
         }},
        {"FilePrintsLong",
         [] {
             COpenFile hFile("wb", "");
             const CStrikes oStrikes;
             FAULT_EXPECT(File::Printf(hFile, "%0900d", 5) == (oStrikes.Of({"fwrite_unlocked"}) ? -1 : 900));
         }},
        {"FileTellsPosition",
         [] {
             COpenFile hFile("rb", "abcdef");
             const CStrikes oStrikes;
             FAULT_EXPECT(File::Tell(hFile) == (oStrikes.Of({"ftello"}) ? -1 : 0));
         }},
        {"FileSeeks",
         [] {
             COpenFile hFile("rb", "abcdef");
             const CStrikes oStrikes;
             const bool bMoved = File::Seek(hFile, 4, File::eSeekOriginStart) == File::eFileSuccess;
             FAULT_EXPECT(bMoved == !oStrikes.Of({"fseeko"}));
             const CFaultPause oPause;
             FAULT_EXPECT(File::Tell(hFile) == (bMoved ? 4 : 0));
         }},
        {"FileFlushes",
         [] {
             COpenFile hFile("wb", "");
             {
                 const CFaultPause oPause;
                 File::Write(hFile, "text", 1, 4);
             }
             const CStrikes oStrikes;
             const bool bFlushed = File::Flush(hFile) == File::eFileSuccess;
             FAULT_EXPECT(bFlushed == !IsNotWritten(oStrikes));
             FAULT_EXPECT(!bFlushed || ContentsOf(FaultFile("opened")) == "text");
             FAULT_EXPECT(hFile.Close() == "text");
         }},
        {"FileFlushesWhatFollowsARead",
         [] {
             COpenFile hFile("r+b", "abcdef");
             {
                 const CFaultPause oPause;
                 char acRead[2];
                 File::Read(hFile, acRead, 1, 2);
                 File::Write(hFile, "XY", 1, 2);
             }
             const CStrikes oStrikes;
             const bool bFlushed = File::Flush(hFile) == File::eFileSuccess;
             FAULT_EXPECT(bFlushed == !(IsNotWritten(oStrikes) || oStrikes.Of({"lseek"})));
             FAULT_EXPECT(hFile.Close() == "abXYef");
         }},
        {"FileFlushesALine",
         [] {
             COpenFile hFile("wb", "");
             {
                 const CFaultPause oPause;
                 std::setvbuf(File::CTOVHandleManager::Instance().GetFile(hFile), nullptr, _IOLBF, 0);
                 File::Write(hFile, "text", 1, 4);
             }
             const CStrikes oStrikes;
             FAULT_EXPECT((File::Flush(hFile) == File::eFileSuccess) == !oStrikes.Of({"fflush"}));
             FAULT_EXPECT(hFile.Close() == "text");
         }},
        {"FileClosesWritten", CloseWritten},
        {"FileClosesRead",
         [] {
             COpenFile hFile("rb", "abcdef");
             const CStrikes oStrikes;
             const bool bClosed = File::Close(hFile) == File::eFileSuccess;
             FAULT_EXPECT(bClosed == !oStrikes.Of({"fflush", "fclose"}));
             FAULT_EXPECT(!oStrikes.Of({"fflush"})); // there is nothing to write
             hFile.Forget();
         }},
        {"FilesLoseNoSlot",
         [] {
             for (int nFile = 0; nFile < 4; ++nFile)
             {
                 const tHandle hFile = File::Open(FaultFile("slot"), "wb");
                 if (hFile == FILE_INVALID_HANDLE)
                     continue;
                 File::Write(hFile, "text", 1, 4);
                 const CStrikes oStrikes;
                 if (File::Close(hFile) != File::eFileSuccess && IsNotWritten(oStrikes))
                 {
                     const CFaultPause oPause;
                     FAULT_EXPECT(File::Close(hFile) == File::eFileSuccess);
                 }
             }
             const CFaultPause oPause;
             FAULT_EXPECT(File::CTOVHandleManager::Instance().FindFreeHandle() == 0);
         }},
        {"FileIsDeleted",
         [] {
             const char* const szFile = MakeFile("to delete", "");
             const CStrikes oStrikes;
             const bool bDeleted = File::Delete(szFile) == File::eFileSuccess;
             FAULT_EXPECT(bDeleted == !oStrikes.Of({"lstat", "unlink"}));
             struct stat oStatus;
             const CFaultPause oPause;
             FAULT_EXPECT((::stat(szFile, &oStatus) != 0) == bDeleted);
         }},
    };
}
