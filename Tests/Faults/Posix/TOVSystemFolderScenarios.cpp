// Directories, attributes and searches; file objects, scanners, paths and streams.
#include "Faults/Posix/TOVSystemScenarios.h"

#include <File/TOVFile.h>
#include <File/TOVFileScanner.h>
#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <cstring>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace File = TOVPlatform::TOVFile;
namespace Directory = TOVPlatform::TOVDirectory;

namespace
{
constexpr unsigned long long ALL_BITS = 0xFFFFFFFFFFFFFFFFULL;

// Makes a file of six bytes without a fault.
const char* FileOfSix(const char* szName)
{
    const CFaultPause oPause;
    const char* const szFile = FaultFile(szName);
    ::chmod(szFile, 0644);
    const tHandle hFile = File::Open(szFile, "wb");
    File::Write(hFile, "abcdef", 1, 6);
    File::Close(hFile);
    return szFile;
}

// Searches to the end, and counts the entries.
int CountFound(const char* szPattern, File::eFindResult& eEnd)
{
    File::sTOVFindData oRecord;
    tHandle hFind = FILE_INVALID_HANDLE;
    int nFound = 0;
    for (eEnd = File::FindFirstEntry(szPattern, &oRecord, &hFind); eEnd == File::eFindEntry;
         eEnd = File::FindNextEntry(hFind, &oRecord))
        ++nFound;
    File::FindClose(hFind);
    return nFound;
}

void SearchFor(const char* szPattern, int nExpected, std::initializer_list<const char*> aszFatal)
{
    FileOfSix("search-1");
    FileOfSix("search-2");
    const CStrikes oStrikes;
    File::eFindResult eEnd = File::eFindEnd;
    const int nFound = CountFound(FaultFile(szPattern), eEnd);
    FAULT_EXPECT(nFound <= nExpected);
    FAULT_EXPECT(nFound == nExpected || eEnd == File::eFindFailure);
    FAULT_EXPECT(eEnd == File::eFindEnd || oStrikes.Of(aszFatal));
}

CTOVFileScanner::eScannerControl CountFile(CTOVFileScanner::eScannerMode, CTOVFileScanner::sTOVFileDescriptor*,
                                           unsigned long long ullCount)
{
    ++*reinterpret_cast<int*>(static_cast<std::uintptr_t>(ullCount));
    return CTOVFileScanner::eScannerContinue;
}

// Opens an object on a file without a fault.
void OpenSix(CTOVFile& oFile)
{
    const char* const szFile = FileOfSix("object");
    const CFaultPause oPause;
    oFile.Open(szFile, ITOVFile::eFileOpenRead | ITOVFile::eFileOpenWrite);
}
} // namespace

tFaultScenarios SystemFolderScenarios()
{
    return {
        {"FileExists",
         [] {
             const char* const szFile = FileOfSix("existing");
             const CStrikes oStrikes;
             FAULT_EXPECT(File::DoesExist(szFile) == !oStrikes.Of({"access"}));
         }},
        {"AttributesAreRead",
         [] {
             const char* const szFile = FileOfSix("attributes");
             const CStrikes oStrikes;
             const unsigned long ulAttributes = File::GetAttributes(szFile);
             const unsigned long ulNormal = File::eFileAttributeNormal;
             FAULT_EXPECT(ulAttributes == (oStrikes.Of({"stat"}) ? 0xFFFFFFFF : ulNormal));
         }},
        {"AttributesAreSet",
         [] {
             const char* const szFile = FileOfSix("attributes");
             const CStrikes oStrikes;
             const bool bSet = File::SetAttributes(szFile, File::eFileAttributeReadOnly);
             FAULT_EXPECT(bSet == !oStrikes.Of({"stat", "chmod"}));
             struct stat oStatus = {};
             const CFaultPause oPause;
             ::stat(szFile, &oStatus);
             FAULT_EXPECT(((oStatus.st_mode & 0222) == 0) == bSet);
             ::chmod(szFile, 0644);
         }},
        {"NameWithBackslash",
         [] {
             FileOfSix("backslash");
             std::string sFile = FaultFile("backslash");
             sFile[sFile.rfind('/')] = '\\';
             const CStrikes oStrikes;
             FAULT_EXPECT(File::DoesExist(sFile.c_str()) == !oStrikes.Of({"access"}));
         }},
        {"DirectoryIsMadeAndRemoved",
         [] {
             const char* const szFolder = FaultFile("folder");
             const CStrikes oStrikes;
             const bool bMade = Directory::Create(szFolder) == Directory::eDirectorySuccess;
             FAULT_EXPECT(bMade == !oStrikes.Of({"mkdir"}));
             const bool bRemoved = Directory::Remove(szFolder) == Directory::eDirectorySuccess;
             FAULT_EXPECT(bRemoved == (bMade && !oStrikes.Of({"rmdir"})));
             const CFaultPause oPause;
             Directory::Remove(szFolder);
         }},
        {"WorkingDirectoryIsChanged",
         [] {
             char szBefore[512] = "";
             char szAfter[512] = "";
             {
                 const CFaultPause oPause;
                 Directory::GetWorkingDirectory(szBefore, 512);
             }
             const CStrikes oStrikes;
             const bool bChanged = Directory::Change("/") == Directory::eDirectorySuccess;
             FAULT_EXPECT(bChanged == !oStrikes.Of({"chdir"}));
             const CFaultPause oPause;
             Directory::GetWorkingDirectory(szAfter, 512);
             FAULT_EXPECT(std::strcmp(szAfter, bChanged ? "/" : szBefore) == 0);
             Directory::Change(szBefore);
         }},
        {"WorkingDirectoryIsRead",
         [] {
             const CStrikes oStrikes;
             char szFolder[512] = "former";
             const bool bRead = Directory::GetWorkingDirectory(szFolder, 512) == Directory::eDirectorySuccess;
             FAULT_EXPECT(bRead == !oStrikes.Of({"getcwd"}));
             const CStrikes oAgain;
             FAULT_EXPECT(CTOVPath::GetWorkingDirectory().IsEmpty() == oAgain.Of({"getcwd"}));
         }},
        {"PathAsksTheSystem",
         [] {
             const CTOVPath oPath(FileOfSix("path"));
             const CStrikes oStrikes;
             FAULT_EXPECT(oPath.DoesExist() == !oStrikes.Of({"access"}));
             FAULT_EXPECT(oPath.IsFile() == !oStrikes.Of({"stat"}));
         }},
        {"SearchWithWildcard",
         [] {
             SearchFor("search-*", 2, {"opendir", "readdir", "statx"});
         }},
        {"SearchForOneName",
         [] {
             SearchFor("search-1", 1, {"statx", "opendir", "readdir"});
         }},
        {"SearchForAnotherCase",
         [] {
             SearchFor("SEARCH-1", 1, {"statx", "opendir", "readdir"});
         }},
        {"SearchForDirectory",
         [] {
             SearchFor(".", 1, {"realpath", "statx", "opendir"});
         }},
        {"SearchForNothing",
         [] {
             SearchFor("nothing*", 0, {"opendir", "readdir"});
         }},
        {"SearchIsClosedEarly",
         [] {
             FileOfSix("search-1");
             File::sTOVFindData oRecord;
             for (int nSearch = 0; nSearch < 3; ++nSearch)
                 File::FindClose(File::FindFirst(FaultFile("*"), &oRecord));
         }},
        {"ScannerGoesOn",
         [] {
             FileOfSix("search-1");
             FileOfSix("search-2");
             CTOVFileScanner oScanner;
             oScanner.AddScanDirectory(FaultFile("."), "search-*");
             int nFiles = 0;
             const CStrikes oStrikes;
             oScanner.Run(&CountFile, reinterpret_cast<std::uintptr_t>(&nFiles));
             FAULT_EXPECT(nFiles == 2 || oStrikes.Of({"opendir", "readdir", "statx"})); // settled: it looks empty
         }},
    };
}

tFaultScenarios SystemFileObjectScenarios()
{
    return {
        {"FileObjectOpens",
         [] {
             const char* const szFile = FileOfSix("object");
             CTOVFile oFile;
             const CStrikes oStrikes;
             bool bOpened = true;
             try
             {
                 oFile.Open(szFile, ITOVFile::eFileOpenRead);
             }
             catch (const CTOVFile::FileException& oException)
             {
                 bOpened = false;
                 FAULT_EXPECT(oException.GetCode() == 0);
             }
             FAULT_EXPECT(bOpened == !oStrikes.Of({"fopen"}) && oFile.IsOpen() == bOpened);
         }},
        {"FileObjectTransfers",
         [] {
             CTOVFile oFile;
             OpenSix(oFile);
             char szRead[8] = "";
             const CStrikes oStrikes;
             FAULT_EXPECT(oFile.Read(szRead, 3) == (oStrikes.Of({"fread", "fread_unlocked"}) ? 0 : 1));
             oFile.Seek(0, File::eSeekOriginEnd);
             const CStrikes oWrite;
             FAULT_EXPECT(oFile.Write("ghi", 3) == (oWrite.Of({"fwrite", "fwrite_unlocked"}) ? 0 : 1));
         }},
        {"FileObjectTellsItsPositionAsSizeWithoutASeek",
         [] {
             CTOVFile oFile;
             OpenSix(oFile);
             const CStrikes oStrikes;
             const unsigned long long ullSize = oFile.GetSize();
             FAULT_EXPECT(ullSize == 6 || (oStrikes.Of({"fseeko"}) && ullSize == 0) ||
                          (oStrikes.Of({"ftello"}) && ullSize == ALL_BITS));
             char cRead = 0;
             {
                 const CFaultPause oPause;
                 oFile.Seek(2, File::eSeekOriginStart);
                 oFile.Read(&cRead, 1);
             }
             FAULT_EXPECT(cRead == 'c');
             const CStrikes oAgain;
             const unsigned long long ullAgain = oFile.GetSize();
             FAULT_EXPECT(ullAgain == 6 || (oAgain.Of({"fseeko"}) && ullAgain == 3) ||
                          (oAgain.Of({"ftello"}) && ullAgain == ALL_BITS));
             const CFaultPause oPause;
             FAULT_EXPECT(oFile.GetSize() == 6);
         }},
        {"FileObjectTellsPosition",
         [] {
             CTOVFile oFile;
             OpenSix(oFile);
             const CStrikes oStrikes;
             FAULT_EXPECT(oFile.Tell() == (oStrikes.Of({"ftello"}) ? ALL_BITS : 0));
             const CStrikes oEnd;
             FAULT_EXPECT(!oFile.IsEof() || oEnd.Of({"ftello", "fseeko", "fstat"}));
         }},
        {"FileObjectFlushes",
         [] {
             CTOVFile oFile;
             OpenSix(oFile);
             oFile.Write("X", 1);
             oFile.Flush(); // a failure is not reported
             FAULT_EXPECT(oFile.IsOpen());
         }},
        {"FileObjectClosesForGood",
         [] {
             for (int nFile = 0; nFile < 3; ++nFile)
             {
                 CTOVFile oFile;
                 OpenSix(oFile);
                 oFile.Write("X", 1);
                 oFile.Close();
                 FAULT_EXPECT(!oFile.IsOpen());
             }
             const CFaultPause oPause;
             FAULT_EXPECT(File::CTOVHandleManager::Instance().FindFreeHandle() == 0);
         }},
        {"StreamWrites",
         [] {
             const CStrikes oStrikes;
             bool bOpened = true;
             try
             {
                 CTOVWriteFileStream oStream(FaultFile("stream"));
                 oStream << 12;
                 oStream << 13;
             }
             catch (const CTOVWriteFileStream::WriteFileStreamException& oException)
             {
                 bOpened = false;
                 FAULT_EXPECT(oException.GetCode() == 0);
             }
             FAULT_EXPECT(bOpened == !oStrikes.Of({"fopen"}));
         }},
        {"StreamReads",
         [] {
             FileOfSix("stream");
             const CStrikes oStrikes;
             bool bOpened = true;
             int nRead = 5;
             try
             {
                 CTOVReadFileStream oStream(FaultFile("stream"));
                 oStream >> nRead; // a short read is not reported
                 FAULT_EXPECT(nRead != 5 || oStrikes.Of({"fread", "fread_unlocked"}));
             }
             catch (const CTOVReadFileStream::ReadFileStreamException& oException)
             {
                 bOpened = false;
                 FAULT_EXPECT(oException.GetCode() == 0);
             }
             FAULT_EXPECT(bOpened == !oStrikes.Of({"fopen"}));
         }},
    };
}
