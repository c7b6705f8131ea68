#include "CatalogFile.h"

#include "Archive.h"

#include <File/TOVFile.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <cstring>
#include <filesystem>

// The file, all numbers with 4 bytes in the host's order, a text as its length and its bytes:
//
//   "TOVCATLG"
//   section, version 2
//     section, version 1:  number of directories, each a text; number of patterns, each a text
//     number of files, each a section, version 2:  directory, path, size low, size high, CRC-32
//     CRC-32 of all bytes so far
//
// Version 1 had one directory and no patterns, no directory and no high size word in its file sections (version 1),
// and no CRC at the end.

namespace
{
const char MAGIC[] = {'T', 'O', 'V', 'C', 'A', 'T', 'L', 'G'};
const int CATALOG_VERSION = 2;
const int SELECTION_VERSION = 1;
const int RECORD_VERSION = 2;

const char ASSIGN[] = "catalog";

void Serialize(CArchive& oArchive, CTOVArray<CTOVStringA>& aTexts)
{
    int nCount = static_cast<int>(aTexts.GetSize());
    oArchive.Count(nCount);
    aTexts.Resize(nCount);
    for (int i = 0; i < nCount; ++i)
        oArchive.Text(aTexts[i]);
}

void SerializeSelection(CArchive& oArchive, sCatalog& oCatalog)
{
    oArchive.Begin(SELECTION_VERSION);
    Serialize(oArchive, oCatalog.aDirectories);
    Serialize(oArchive, oCatalog.aPatterns);
    oArchive.End();
}

void SerializeRecord(CArchive& oArchive, sFileRecord& oRecord)
{
    const int nVersion = oArchive.Begin(RECORD_VERSION);
    int nDirectory = static_cast<int>(oRecord.lDirectory);
    if (nVersion >= 2)
        oArchive.Number(nDirectory);
    oRecord.lDirectory = nDirectory;

    oArchive.Text(oRecord.oPath);

    tDword dwLow = static_cast<tDword>(oRecord.ullSize);
    tDword dwHigh = static_cast<tDword>(oRecord.ullSize >> 32);
    oArchive.Word(dwLow);
    if (nVersion >= 2)
        oArchive.Word(dwHigh);
    oRecord.ullSize = static_cast<unsigned long long>(dwHigh) << 32 | dwLow;

    oArchive.Word(oRecord.dwCrc);
    oArchive.End();
}

void CheckRecord(const sCatalog& oCatalog, const sFileRecord& oRecord)
{
    if (oRecord.lDirectory < 0 || oRecord.lDirectory >= oCatalog.aDirectories.GetSize() || oRecord.oPath.IsEmpty())
        throw CCatalogError("is damaged: it names a file without a place");
}

// One calling sequence for both directions.
void Serialize(CArchive& oArchive, sCatalog& oCatalog)
{
    char szMagic[sizeof(MAGIC)];
    std::memcpy(szMagic, MAGIC, sizeof(MAGIC));
    oArchive.Bytes(szMagic, sizeof(szMagic), "is no catalogue");
    if (std::memcmp(szMagic, MAGIC, sizeof(MAGIC)) != 0)
        throw CCatalogError("is no catalogue");

    const int nVersion = oArchive.Begin(CATALOG_VERSION);
    if (nVersion >= 2)
    {
        SerializeSelection(oArchive, oCatalog);
    }
    else
    {
        oCatalog.aDirectories.Resize(1);
        oArchive.Text(oCatalog.aDirectories[0]);
    }

    int nFiles = static_cast<int>(oCatalog.aFiles.GetSize());
    oArchive.Count(nFiles);
    oCatalog.aFiles.Resize(nFiles);
    for (int i = 0; i < nFiles; ++i)
    {
        SerializeRecord(oArchive, oCatalog.aFiles[i]);
        CheckRecord(oCatalog, oCatalog.aFiles[i]);
    }

    if (nVersion >= 2)
    {
        const tDword dwExpected = oArchive.GetCrc();
        tDword dwCrc = dwExpected;
        oArchive.Word(dwCrc);
        if (dwCrc != dwExpected)
            throw CCatalogError("is damaged: its checksum is wrong");
    }
    oArchive.End();
    oArchive.ExpectEnd();
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
    return CCatalogError(std::string(~oName) + " " + szWhat);
}

// Of something that is there. Pipes and devices have no attribute.
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

sCatalog Load(const CTOVStringA& oAssigned)
{
    const unsigned long long ullSize = SizeOf(oAssigned);
    CTOVReadFileStream oStream(~oAssigned, 0);
    CArchive oArchive(oStream, ullSize);
    sCatalog oCatalog;
    Serialize(oArchive, oCatalog);
    return oCatalog;
}
} // namespace

sCatalog LoadCatalog(const CTOVStringA& oName)
{
    if (!CTOVPath(oName).DoesExist())
        throw About(oName, "does not exist");
    if (CTOVPath(oName).IsDirectory())
        throw About(oName, "is a directory, not a catalogue");
    // A pipe would be waited for.
    if (!IsFile(oName))
        throw About(oName, "is no catalogue");
    try
    {
        return Load(AssignDirectoryOf(oName));
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

void SaveCatalog(const CTOVStringA& oName, const sCatalog& oCatalog)
{
    // Else a device would be gone afterwards, and a file in its place.
    if (CTOVPath(oName).DoesExist() && !IsFile(oName))
        throw About(oName, "cannot be written: it is no file");

    CTOVStringA oTemporary(~oName);
    oTemporary += ".new";
    try
    {
        const CTOVStringA oAssigned = AssignDirectoryOf(oTemporary);
        {
            sCatalog oCopy = oCatalog;
            CTOVWriteFileStream oStream(~oAssigned, false, 0);
            CArchive oArchive(oStream);
            Serialize(oArchive, oCopy);
        }
        Load(oAssigned); // a full disk shows here: a stream's writes report nothing
        std::filesystem::rename(SystemPath(oTemporary), SystemPath(oName));
    }
    catch (const std::exception&)
    {
        TOVPlatform::TOVFile::Delete(~oTemporary);
        throw About(oName, "cannot be written");
    }
    catch (const CTOVException&)
    {
        TOVPlatform::TOVFile::Delete(~oTemporary);
        throw About(oName, "cannot be written");
    }
}
