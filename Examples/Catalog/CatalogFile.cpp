#include "CatalogFile.h"

#include "Archive.h"
#include "CatalogSystem.h"
#include "Console.h"
#include "UnfinishedCatalog.h"

#include <File/TOVFile.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <cerrno>
#include <cstring>
#include <system_error>

// The file has this format. All numbers have 4 bytes in the host's order; a text is its length and its bytes:
//
//   "TOVCATLG"
//   section, version 3
//     section, version 1:  number of directories, each a text; number of patterns, each a text
//     number of files, each a section, version 2:  directory, path, size low, size high, CRC-32
//     CRC-32 of all bytes so far and a zero byte after them
//
// A catalogue that holds more has the next versions of these sections: the first also has the number of excludes, each
// a text, and the sum of eKept values. With any of them, the files' sections, version 3, also have what they stand for.
//
// Version 2 ends in the CRC-32 of all bytes so far. All files that end in their own CRC-32 have the same CRC-32, so
// that one such catalogue could replace another one of the same size unnoticed.
//
// Version 1 has one directory and no patterns. Its file sections (version 1) have neither a directory nor a high size
// word, and there is no CRC-32 at the end.

namespace
{
constexpr int CATALOG_VERSION = 3;
constexpr int SELECTION_VERSION = 2;
constexpr int RECORD_VERSION = 3;

// What the records have besides size and CRC-32.
enum eKept
{
    eKeptTimes = 1,
    eKeptSha256 = 2
};

// The smallest numbers of bytes: a text has a length and a byte; a record has such a text and its numbers.
constexpr int SMALLEST_TEXT = 5;
constexpr int SMALLEST_RECORD = SMALLEST_TEXT + 20;
constexpr int SMALLEST_RECORD_OF_VERSION_1 = SMALLEST_TEXT + 12;
constexpr int TIME_SIZE = 8;
constexpr int SHA256_SIZE = static_cast<int>(std::tuple_size<tSha256>::value);

constexpr char ASSIGN[] = "catalog";

// Transfers the elements of an array one by one, and returns their number. Unless bKeep, the elements are not kept, so
// that checking a file needs no memory, however large a damaged count is.
template<class T, class TPass>
int PassEach(CArchive& oArchive, CTOVArray<T>& aElements, int nSmallest, bool bKeep, TPass fnPass)
{
    int nCount = static_cast<int>(aElements.GetSize());
    oArchive.Count(nCount, nSmallest);
    if (bKeep)
        aElements.Resize(nCount);
    T oDropped;
    for (int i = 0; i < nCount; ++i)
        fnPass(bKeep ? aElements[i] : oDropped);
    return nCount;
}

// Writes the names of a list. If it is empty, reads them, and keeps them if bKeep. Returns their number.
int SerializeNames(CArchive& oArchive, CNameList& aNames, bool bKeep)
{
    const int nHeld = static_cast<int>(aNames.GetSize());
    int nCount = nHeld;
    oArchive.Count(nCount, SMALLEST_TEXT);
    if (bKeep)
        aNames.Reserve(nCount);
    CTOVStringA oName;
    for (int i = 0; i < nCount; ++i)
    {
        if (i < nHeld)
            oName = aNames[i];
        const char* const szName = oArchive.Text(~oName);
        if (i >= nHeld && bKeep)
            aNames.Add(szName);
    }
    return nCount;
}

// Returns the number of directories.
int SerializeSelection(CArchive& oArchive, int nCatalogVersion, sCatalog& oCatalog, bool bKeep)
{
    const bool bPlain = oCatalog.aExcludes.IsEmpty() && !oCatalog.bTimes && !oCatalog.bSha256;
    const int nVersion = oArchive.Begin(nCatalogVersion >= 3 ? SELECTION_VERSION : 1, bPlain ? 1 : SELECTION_VERSION);
    const int nDirectories = SerializeNames(oArchive, oCatalog.aDirectories, bKeep);
    SerializeNames(oArchive, oCatalog.aPatterns, bKeep);
    if (nVersion >= 2)
    {
        SerializeNames(oArchive, oCatalog.aExcludes, bKeep);
        int nKept = (oCatalog.bTimes ? eKeptTimes : 0) + (oCatalog.bSha256 ? eKeptSha256 : 0);
        oArchive.Number(nKept);
        if ((nKept & ~(eKeptTimes | eKeptSha256)) != 0)
            throw CCatalogError("was written by a newer version of this program");
        oCatalog.bTimes = (nKept & eKeptTimes) != 0;
        oCatalog.bSha256 = (nKept & eKeptSha256) != 0;
    }
    return nDirectories;
}

int SerializeOnlyDirectory(CArchive& oArchive, sCatalog& oCatalog)
{
    oCatalog.aDirectories.Add(oArchive.Text(""));
    return 1;
}

// Returns the version of all records: the second version of catalogues and that of records came together, with
// directories and sizes of 64 bits.
int RecordVersion(int nCatalogVersion, const sCatalog& oCatalog)
{
    if (nCatalogVersion < 2)
        return 1;
    return oCatalog.bTimes || oCatalog.bSha256 ? RECORD_VERSION : 2;
}

int SmallestRecord(int nVersion, const sCatalog& oCatalog)
{
    if (nVersion < 2)
        return SMALLEST_RECORD_OF_VERSION_1;
    return SMALLEST_RECORD + (oCatalog.bTimes ? TIME_SIZE : 0) + (oCatalog.bSha256 ? SHA256_SIZE : 0);
}

void LongNumber(CArchive& oArchive, unsigned long long& ullValue)
{
    tDword dwLow = static_cast<tDword>(ullValue);
    tDword dwHigh = static_cast<tDword>(ullValue >> 32);
    oArchive.Word(dwLow);
    oArchive.Word(dwHigh);
    ullValue = static_cast<unsigned long long>(dwHigh) << 32 | dwLow;
}

void SerializeRecord(CArchive& oArchive, int nExpectedVersion, const sCatalog& oCatalog, sFileRecord& oRecord)
{
    const int nVersion = oArchive.Begin(RECORD_VERSION, nExpectedVersion);
    if (nVersion != nExpectedVersion)
        throw CCatalogError("is damaged: it describes a file as another version does");
    if (nVersion >= 2)
        oArchive.Number(oRecord.nDirectory);

    oRecord.szPath = oArchive.Text(oRecord.szPath);

    if (nVersion >= 2)
        LongNumber(oArchive, oRecord.ullSize);
    else
    {
        tDword dwSize = static_cast<tDword>(oRecord.ullSize);
        oArchive.Word(dwSize);
        oRecord.ullSize = dwSize;
    }

    oArchive.Word(oRecord.dwCrc);
    if (oCatalog.bTimes)
        LongNumber(oArchive, oRecord.oDetails.Make().ullTime);
    if (oCatalog.bSha256)
        oArchive.Bytes(oRecord.oDetails.Make().oSha256.Make().data(), SHA256_SIZE, "is truncated");
}

// Writes or reads a catalogue by one sequence of calls. Each record that is not kept is passed to fnVisit.
void Serialize(CArchive& oArchive, sCatalog& oCatalog, bool bKeepSelection, bool bKeepRecords,
               const tRecordVisitor& fnVisit)
{
    char szMagic[sizeof(CATALOG_MAGIC)];
    std::memcpy(szMagic, CATALOG_MAGIC, sizeof(CATALOG_MAGIC));
    oArchive.Bytes(szMagic, sizeof(szMagic), "is no catalogue");
    if (std::memcmp(szMagic, CATALOG_MAGIC, sizeof(CATALOG_MAGIC)) != 0)
        throw CCatalogError("is no catalogue");

    const int nVersion = oArchive.Begin(CATALOG_VERSION);
    const int nDirectories = nVersion >= 2 ? SerializeSelection(oArchive, nVersion, oCatalog, bKeepSelection)
                                           : SerializeOnlyDirectory(oArchive, oCatalog);
    const int nRecordVersion = RecordVersion(nVersion, oCatalog);
    const int nSmallest = SmallestRecord(nRecordVersion, oCatalog);
    PassEach(oArchive, oCatalog.aFiles, nSmallest, bKeepRecords, [&](sFileRecord& oRecord) {
        SerializeRecord(oArchive, nRecordVersion, oCatalog, oRecord);
        if (oRecord.nDirectory < 0 || oRecord.nDirectory >= nDirectories)
            throw CCatalogError("is damaged: it names a file without a place");
        if (!bKeepRecords)
            fnVisit(oCatalog, oRecord);
        else if (!oArchive.IsStoring())
            oRecord.szPath = oCatalog.pPaths->Add(oRecord.szPath);
    });

    if (nVersion >= 2)
    {
        const tDword dwExpected = nVersion >= 3 ? oArchive.GetCrcWithZero() : oArchive.GetCrc();
        tDword dwCrc = dwExpected;
        oArchive.Word(dwCrc);
        if (dwCrc != dwExpected)
            throw CCatalogError("is damaged: its checksum is wrong");
    }
    oArchive.Finish();
}

// Assigns the catalogue's directory, and returns the name below the assign.
CTOVStringA AssignDirectoryOf(const CTOVStringA& oName)
{
    CTOVPath oPath(~oName);
    CTOVStringA oFile(~oName);
    CTOVPath oDirectory(".");
    if (oName.FindOneOf("\\/") >= 0)
    {
        oFile = oPath.GetFileName(true);
        oDirectory = oPath.GetPath();
        if (oDirectory.IsEmpty())
            oDirectory = "/";
    }
    CTOVVirtualFileSystem::Instance().SetAssign(ASSIGN, oDirectory);

    CTOVStringA oAssigned(ASSIGN);
    oAssigned += ':';
    oAssigned += oFile;
    return oAssigned;
}

CCatalogError About(const CTOVStringA& oName, const char* szWhat)
{
    return CCatalogError(std::string(~Printable(oName)) + " " + szWhat);
}

// Returns whether an existing entry is a file. Pipes and devices have no attributes.
bool IsFile(const CTOVStringA& oName)
{
    const unsigned long ulAttributes = TOVPlatform::TOVFile::GetAttributes(~oName);
    return ulAttributes != 0 && (ulAttributes & TOVPlatform::TOVFile::eFileAttributeDirectory) == 0;
}

unsigned long long SizeOf(const CTOVStringA& oAssigned)
{
    CTOVFile oFile;
    oFile.Open(~oAssigned, ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
    return oFile.GetSize();
}

// The system says of some files that it cannot read that their size is 0, so that none of their bytes would be missed.
void RequireReadable(const CTOVStringA& oName)
{
    CInputFile oFile(~oName);
    char cFirst;
    errno = 0;
    if (oFile.IsOpen())
        oFile.Read(&cFirst, sizeof(cFirst));
    const int nError = errno;
    if (oFile.HasFailed())
        throw CCatalogError("cannot be read" + (nError != 0 ? ": " + std::generic_category().message(nError) : ""));
}

void IgnoreRecord(const sCatalog&, const sFileRecord&)
{
}

// Reads the file once. What is not kept is checked all the same.
void Read(const CTOVStringA& oAssigned, sCatalog& oCatalog, bool bKeepSelection, bool bKeepRecords,
          const tRecordVisitor& fnVisit)
{
    const unsigned long long ullSize = SizeOf(oAssigned);
    CTOVReadFileStream oStream(~oAssigned, 0);
    CArchive oArchive(oStream, ullSize);
    Serialize(oArchive, oCatalog, bKeepSelection, bKeepRecords, fnVisit);
}

void Check(const CTOVStringA& oAssigned)
{
    sCatalog oNothing;
    Read(oAssigned, oNothing, false, false, &IgnoreRecord);
}

sCatalog Load(const CTOVStringA& oAssigned, bool bKeepRecords, const tRecordVisitor& fnVisit)
{
    Check(oAssigned);
    sCatalog oCatalog;
    Read(oAssigned, oCatalog, true, bKeepRecords, fnVisit);
    return oCatalog;
}

sCatalog LoadNamed(const CTOVStringA& oName, bool bKeepRecords, const tRecordVisitor& fnVisit)
{
    if (!CTOVPath(oName).DoesExist())
        throw About(oName, IsMissing(oName) ? "does not exist" : "cannot be opened");
    if (CTOVPath(oName).IsDirectory())
        throw About(oName, "is a directory, not a catalogue");
    // Opening a pipe would wait for another process.
    if (!IsFile(oName))
        throw About(oName, "is no catalogue");
    try
    {
        RequireReadable(oName);
        return Load(AssignDirectoryOf(oName), bKeepRecords, fnVisit);
    }
    catch (const CCatalogError& oError)
    {
        throw About(oName, oError.what());
    }
    catch (const CTOVException&)
    {
        throw About(oName, "cannot be opened");
    }
}
} // namespace

sCatalog LoadCatalog(const CTOVStringA& oName)
{
    return LoadNamed(oName, true, &IgnoreRecord);
}

sCatalog VisitCatalog(const CTOVStringA& oName, const tRecordVisitor& fnVisit)
{
    return LoadNamed(oName, false, fnVisit);
}

void RequireReplaceable(const CTOVStringA& oName)
{
    if (IsMissing(oName))
        return;
    // A name that cannot be looked up may be that of a file which must not be replaced.
    if (!CTOVPath(oName).DoesExist())
    {
        TargetOf(oName); // throws if it is a link that cannot be followed
        throw About(oName, "cannot be written");
    }
    // Otherwise a device would be replaced by a file.
    if (!IsFile(oName))
        throw About(oName, "cannot be written: it is no file");
    if ((TOVPlatform::TOVFile::GetAttributes(~oName) & TOVPlatform::TOVFile::eFileAttributeReadOnly) != 0)
        throw About(oName, "cannot be written: it is read-only");
}

void SaveCatalog(const CTOVStringA& oName, sCatalog& oCatalog)
{
    RequireReplaceable(oName);
    try
    {
        CUnfinishedCatalog oUnfinished(TargetOf(oName));
        const CTOVStringA oAssigned = AssignDirectoryOf(oUnfinished.GetName());
        {
            CTOVWriteFileStream oStream(~oAssigned, false, 0);
            CArchive oArchive(oStream);
            Serialize(oArchive, oCatalog, true, true, &IgnoreRecord);
        }
        Check(oAssigned); // finds a full disk, since a stream's writes do not report it
        oUnfinished.PutInPlace();
    }
    catch (const std::exception&)
    {
        throw About(oName, "cannot be written");
    }
    catch (const CTOVException&)
    {
        throw About(oName, "cannot be written");
    }
}
