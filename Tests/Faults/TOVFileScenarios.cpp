// Paths, files, searches, assigns and streams.
#include "Faults/TOVAllocationScenarios.h"

#include <File/TOVFile.h>
#include <File/TOVFileScanner.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVStream/TOVFileStream.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <cstring>

namespace Directory = TOVPlatform::TOVDirectory;
namespace File = TOVPlatform::TOVFile;

namespace
{
constexpr char LONG_NAME[] = "a/directory with a long name, and longer/a file.text";

bool IsPath(const CTOVPath& oPath, const char* szText)
{
    return oPath.AsString() == szText && oPath.GetLength() == static_cast<long>(std::strlen(szText));
}

// Makes a file of six bytes, without a fault.
const char* FileOfSix(const char* szName)
{
    const CFaultPause oPause;
    const char* const szFile = FaultFile(szName);
    const tHandle hFile = File::Open(szFile, "wb");
    File::Write(hFile, "abcdef", 1, 6);
    File::Close(hFile);
    return szFile;
}

CTOVFileScanner::eScannerControl CountFile(CTOVFileScanner::eScannerMode, CTOVFileScanner::sTOVFileDescriptor*,
                                           unsigned long long ullCount)
{
    ++*reinterpret_cast<int*>(static_cast<std::uintptr_t>(ullCount));
    return CTOVFileScanner::eScannerContinue;
}
} // namespace

tFaultScenarios PathScenarios()
{
    return {
        {"PathIsMade",
         [] {
             const CTOVPath oPath(LONG_NAME);
             const CTOVPath oCopy(oPath);
             FAULT_EXPECT(IsPath(oCopy, LONG_NAME));
         }},
        {"PathIsAssigned",
         [] {
             CTOVPath oPath("short");
             const bool bDone = Completes([&] { oPath = LONG_NAME; });
             FAULT_EXPECT(IsPath(oPath, bDone ? LONG_NAME : "short"));
         }},
        {"PathAppends",
         [] {
             CTOVPath oPath("one");
             const CTOVPath oMore("two and three and four and five and six and seven");
             const bool bDone = Completes([&] { oPath.Append(oMore); });
             FAULT_EXPECT(!bDone || IsPath(oPath, "one\\two and three and four and five and six and seven"));
             FAULT_EXPECT(bDone || IsPath(oPath, "one"));
         }},
        {"PathConcatenates",
         [] {
             CTOVPath oPath("one");
             const CTOVPath oMore("two");
             Completes([&] { FAULT_EXPECT(IsPath(oPath.Concat(oMore), "one\\two")); });
             FAULT_EXPECT(IsPath(oPath, "one") && IsPath(oMore, "two"));
             if (Completes([&] { oPath += "three"; }))
                 FAULT_EXPECT(IsPath(oPath, "one\\three"));
         }},
        {"PathGetsSeparators",
         [] {
             CTOVPath oPath("one");
             if (!Completes([&] { oPath.AddTrailingBackslash(); }))
                 FAULT_EXPECT(IsPath(oPath, "one"));
             const CTOVPath oCopy(oPath);
             const bool bLed = Completes([&] { oPath.AddLeadingForwardslash(); });
             FAULT_EXPECT(bLed ? oPath.HasLeadingForwardslash() : IsPath(oPath, ~oCopy));
             if (Completes([&] { oPath.RemoveTrailingSlash(); }))
                 FAULT_EXPECT(!oPath.HasTrailingSlash());
             Completes([&] { oPath.RemoveLeadingForwardslash(); });
             FAULT_EXPECT(oPath.GetLength() >= 3);
         }},
        {"PathGivesComponents",
         [] {
             const CTOVPath oPath(LONG_NAME);
             FAULT_EXPECT(oPath.GetNumComponents() == 3);
             Completes([&] { FAULT_EXPECT(oPath.GetComponent(1, 1) == "directory with a long name, and longer"); });
             CTOVStringA sComponent("former");
             long lPosition = 0;
             const bool bDone = Completes([&] { oPath.GetFirstComponent(sComponent, lPosition); });
             FAULT_EXPECT(sComponent == (bDone ? "a" : "former"));
             Completes([&] { oPath.GetNextComponent(sComponent, lPosition); });
             FAULT_EXPECT(IsPath(oPath, LONG_NAME));
         }},
        {"PathGivesParts",
         [] {
             CTOVPath oPath(LONG_NAME);
             Completes([&] { FAULT_EXPECT(IsPath(oPath.Parent(), "a/directory with a long name, and longer")); });
             Completes([&] { FAULT_EXPECT(oPath.GetFileName(false) == "a file"); });
             Completes([&] { FAULT_EXPECT(oPath.GetFileName(true) == "a file.text"); });
             Completes([&] { FAULT_EXPECT(oPath.GetExtension() == ".text"); });
             Completes([&] { FAULT_EXPECT(oPath.GetPath().GetLength() == 40); });
             FAULT_EXPECT(IsPath(oPath, LONG_NAME));
             const bool bDone = Completes([&] { oPath.StripPath(); });
             FAULT_EXPECT(IsPath(oPath, bDone ? "a file.text" : LONG_NAME));
         }},
        {"PathChangesExtension",
         [] {
             CTOVPath oPath("name.text");
             if (!Completes([&] { oPath.RemoveExtension(); }))
             {
                 FAULT_EXPECT(IsPath(oPath, "name.text"));
                 return;
             }
             const bool bDone = Completes([&] { oPath.AddExtension(".other"); });
             FAULT_EXPECT(IsPath(oPath, bDone ? "name.other" : "name"));
         }},
        {"PathIsStripped",
         [] {
             const CTOVPath oPath("a/b/c");
             const CTOVPath oBase("A/B");
             Completes([&] { FAULT_EXPECT(IsPath(oPath.Strip(oBase), "c")); });
             Completes([&] { FAULT_EXPECT(oPath.Compare(oBase) != 0); });
             Completes([&] { FAULT_EXPECT(oBase.IsBelow(oPath) && !oBase.IsAbove(oPath)); });
             Completes([&] { FAULT_EXPECT(!oPath.IsSame(oBase, 0, true, true)); });
             FAULT_EXPECT(IsPath(oPath, "a/b/c") && IsPath(oBase, "A/B"));
         }},
        {"PathAsksTheFileSystem",
         [] {
             const CTOVPath oPath(FileOfSix("asked"));
             Completes([&] { FAULT_EXPECT(oPath.DoesExist() && oPath.IsFile() && !oPath.IsDirectory()); });
             Completes([] { FAULT_EXPECT(!CTOVPath::GetWorkingDirectory().IsEmpty()); });
             Completes([] { FAULT_EXPECT(IsPath(CTOVPath::BuildRoot(2), "C:\\")); });
         }},
    };
}

tFaultScenarios FileScenarios()
{
    return {
        {"FileIsReadAndWritten",
         [] {
             const char* const szFile = FileOfSix("read");
             const tHandle hFile = File::Open(szFile, "r+b");
             if (hFile == FILE_INVALID_HANDLE)
                 return;
             char szRead[8] = "";
             const unsigned long ulRead = File::Read(hFile, szRead, 1, 3);
             FAULT_EXPECT(ulRead == 0 || std::strcmp(szRead, "abc") == 0);
             File::Seek(hFile, 0, File::eSeekOriginEnd);
             const unsigned long ulWritten = File::Write(hFile, "ghi", 1, 3);
             const bool bClosed = File::Close(hFile) == File::eFileSuccess;
             CFaultPause oPause;
             File::sTOVFindData oRecord;
             File::FindClose(File::FindFirst(szFile, &oRecord));
             FAULT_EXPECT(bClosed && oRecord.ullSize == 6 + ulWritten);
         }},
        {"FilePrints",
         [] {
             const tHandle hFile = File::Open(FaultFile("printed"), "w+b");
             if (hFile == FILE_INVALID_HANDLE)
                 return;
             long lPrinted = 0;
             FAULT_EXPECT(Completes([&] { lPrinted = File::Printf(hFile, "%0700d", 5); }));
             FAULT_EXPECT(Completes([&] { File::Puts(hFile, "x"); }));
             FAULT_EXPECT(lPrinted == -1 || lPrinted == 700);
             File::Close(hFile);
         }},
        {"FileIsOpenedByAnyName",
         [] {
             FileOfSix("folder-file");
             const bool bDone = Completes([] {
                 char szName[600];
                 std::snprintf(szName, sizeof szName, "%s", FaultFile("folder-file"));
                 if (char* const pSlash = std::strrchr(szName, '/'))
                     *pSlash = '\\';
                 const tHandle hFile = File::Open(szName, "rb");
                 if (hFile != FILE_INVALID_HANDLE)
                     File::Close(hFile);
                 File::GetAttributes(szName);
                 File::SetAttributes(szName, File::eFileAttributeNormal);
                 File::DoesExist(szName);
                 File::Delete(szName);
                 Directory::Create(szName);
                 Directory::Remove(szName);
             });
             FAULT_EXPECT(bDone);
             const CFaultPause oPause;
             Directory::Remove(FaultFile("folder-file"));
         }},
        {"FilesAreFound",
         [] {
             FileOfSix("found-1");
             FileOfSix("found-2");
             File::sTOVFindData oRecord = {};
             tHandle hFind = FILE_INVALID_HANDLE;
             int nFound = 0;
             File::eFindResult eResult = File::eFindFailure;
             FAULT_EXPECT(Completes([&] {
                 for (eResult = File::FindFirstEntry(FaultFile("found-*"), &oRecord, &hFind);
                      eResult == File::eFindEntry; eResult = File::FindNextEntry(hFind, &oRecord))
                     ++nFound;
             }));
             FAULT_EXPECT(nFound == 2 || eResult == File::eFindFailure);
             FAULT_EXPECT(nFound != 0 || oRecord.szName[0] == 0);
             File::FindClose(hFind);
         }},
        {"FileObjectIsUsed",
         [] {
             const char* const szFile = FileOfSix("object");
             CTOVFile oFile;
             bool bOpened = false;
             try
             {
                 bOpened = Completes([&] { oFile.Open(szFile, ITOVFile::eFileOpenRead | ITOVFile::eFileOpenWrite); });
             }
             catch (const CTOVFile::FileException&)
             {
             }
             FAULT_EXPECT(oFile.IsOpen() == bOpened);
             if (!bOpened)
                 return;
             char szRead[8] = "";
             FAULT_EXPECT(oFile.Read(szRead, 6) == 0 || std::strcmp(szRead, "abcdef") == 0);
             oFile.GetSize();
             oFile.Seek(0, File::eSeekOriginStart);
             oFile.Write("X", 1);
             oFile.Close();
             FAULT_EXPECT(!oFile.IsOpen());
         }},
        {"FileTableIsMade",
         [] {
             CompletesOrFailsACheck([] { // that of its lock
                 File::CTOVHandleManager oTable(3);
                 FAULT_EXPECT(oTable.FindFreeHandle() == 0);
             });
         }},
        {"ScannerReports",
         [] {
             FileOfSix("scanned-1");
             FileOfSix("scanned-2");
             CTOVFileScanner oScanner;
             int nFiles = 0;
             const bool bAdded = Completes([&] { oScanner.AddScanDirectory(FaultFile("."), "scanned-*"); });
             const bool bRun = Completes([&] { oScanner.Run(&CountFile, reinterpret_cast<std::uintptr_t>(&nFiles)); });
             FAULT_EXPECT(nFiles == 0 || (bAdded && nFiles <= 2)); // a directory that cannot be read looks empty
             FAULT_EXPECT(bRun || nFiles <= 2);
             const CTOVFileScanner oCopy(oScanner);
         }},
        {"ScannerAddsDirectories",
         [] {
             CTOVFileScanner oScanner;
             int nFiles = 0;
             for (int n = 0; n < 5; ++n)
                 Completes([&] { oScanner.AddScanDirectory(FaultFile("missing"), "*"); });
             if (Completes([&] { oScanner.Run(&CountFile, reinterpret_cast<std::uintptr_t>(&nFiles)); }))
                 FAULT_EXPECT(nFiles == 0);
         }},
        {"AssignsAreResolved",
         [] {
             CTOVVirtualFileSystem oSystem;
             const bool bSet = Completes([&] { oSystem.SetAssign("data", "some/directory"); });
             Completes([&] { FAULT_EXPECT(oSystem.GetAssign("data") == (bSet ? "some/directory" : "")); });
             Completes([&] {
                 FAULT_EXPECT(IsPath(oSystem.ResolvePath("data:file"), bSet ? "some/directory\\file" : "data:file"));
             });
             const bool bReset = Completes([&] { oSystem.SetAssign("data", "other"); });
             Completes([&] {
                 const CTOVStringA& sPath = oSystem.GetAssign("data");
                 FAULT_EXPECT(sPath == (bReset ? "other" : bSet ? "some/directory" : ""));
             });
             const CTOVVirtualFileSystem oCopy(oSystem);
         }},
    };
}

tFaultScenarios StreamScenarios()
{
    return {
        {"StreamWritesAndReads",
         [] {
             const char* const szFile = FaultFile("stream");
             bool bWritten = false;
             try
             {
                 bWritten = Completes([&] {
                     CTOVWriteFileStream oStream(szFile);
                     oStream.SerializeBegin(3);
                     oStream << 12;
                     oStream.SerializeEnd();
                 });
                 int nRead = 12;
                 const bool bRead = bWritten && Completes([&] {
                                        CTOVReadFileStream oStream(szFile);
                                        oStream.SerializeBegin(-1);
                                        nRead = 0;
                                        oStream >> nRead;
                                        oStream.SerializeEnd();
                                    });
                 FAULT_EXPECT(!bRead || nRead == 12 || nRead == 0);
             }
             catch (const CTOVException&)
             {
             }
         }},
        {"StreamNestsSections",
         [] {
             FileOfSix("sections");
             CTOVFile oFile;
             try
             {
                 oFile.Open(FaultFile("sections"), ITOVFile::eFileOpenRead);
                 CTOVFileStream oStream(&oFile, ITOVStream::eStreamModeLoading);
                 for (int n = 0; n < 150; ++n)
                     Completes([&] { oStream.SerializeBegin(-1); });
                 const CTOVFileStream oCopy(oStream);
                 for (int n = 0; n < 151; ++n)
                     Completes([&] { oStream.SerializeEnd(); });
                 FAULT_EXPECT(oStream.GetVersion() == -1);
             }
             catch (const CTOVException&)
             {
             }
         }},
        {"StreamWritesText",
         [] {
             CTOVFile oFile;
             try
             {
                 oFile.Open(FaultFile("text"), ITOVFile::eFileOpenWrite);
                 CTOVFileStream oStream(&oFile,
                                        int(ITOVStream::eStreamModeSaving) | int(ITOVStream::eStreamFormatASCII));
                 const bool bDone = Completes([&] { static_cast<ITOVStream&>(oStream) << 123; });
                 FAULT_EXPECT(oFile.Tell() == (bDone ? 3u : 0u) || bDone);
             }
             catch (const CTOVException&)
             {
             }
         }},
    };
}
