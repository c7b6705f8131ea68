#include "Settings.h"

#include "SettingsSystem.h"

#include <TOVPlatform/TOVFile.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <cstdio>

// The file in version 2 of both sections; every number takes four bytes:
//
//   MARK | 2 width height | 2 tab-width length-of-font font | END
//
// A stream does not tell that its file has ended: what it cannot read keeps its value. Therefore the file begins and
// ends with a number that a missing one cannot equal.
namespace
{
constexpr int MARK = 0x31544553; // "SET1"
constexpr int END = 0x21444E45;  // "END!"
constexpr int LONGEST_TEXT = 1000;
constexpr int PIXELS_OF_A_CHARACTER = 8;

// A value goes in the direction of its stream, so that one function describes both reading and writing.
void Transfer(ITOVStream& oStream, int& nValue)
{
    if (oStream.IsSaving())
        oStream << nValue;
    else
        oStream >> nValue;
}

void Transfer(ITOVStream& oStream, CTOVStringA& oText)
{
    int nLength = static_cast<int>(oText.GetLength());
    Transfer(oStream, nLength);
    if (nLength < 0 || nLength > LONGEST_TEXT)
        throw CSettingsError("the file is damaged, or a text is too long");
    if (oStream.IsSaving())
    {
        oStream.Write(~oText, static_cast<unsigned long long>(nLength));
        return;
    }
    const std::string sRead(static_cast<std::size_t>(nLength), '\0');
    oText.Empty();
    oText.AssignCopy(nLength, sRead.c_str());
    oStream.Read(oText.GetString(), static_cast<unsigned long long>(nLength));
}

void TransferMark(ITOVStream& oStream, int nMark)
{
    int nFound = oStream.IsSaving() ? nMark : 0;
    Transfer(oStream, nFound);
    if (nFound != nMark)
        throw CSettingsError(nMark == END ? "the file is cut off" : "this is no file of settings");
}

// A section lasts as long as this object. It is written in its newest version.
class CSection
{
public:
    CSection(ITOVStream& oStream, int nNewest) : m_oStream(oStream)
    {
        oStream.SerializeBegin(oStream.IsSaving() ? nNewest : -1);
        m_nVersion = oStream.IsSaving() ? nNewest : oStream.GetVersion();
        if (m_nVersion > nNewest)
            throw CSettingsError("a newer release has written the file");
        if (m_nVersion < 1)
            throw CSettingsError("the file is cut off");
    }
    ~CSection() { m_oStream.SerializeEnd(); }
    CSection(const CSection&) = delete;
    CSection& operator=(const CSection&) = delete;

    int GetVersion() const { return m_nVersion; }

private:
    ITOVStream& m_oStream;
    int m_nVersion;
};

void Transfer(ITOVStream& oStream, sSettings& oSettings)
{
    TransferMark(oStream, MARK);
    oSettings.oWindow.Transfer(oStream);
    oSettings.oEditor.Transfer(oStream);
    TransferMark(oStream, END);
}

// A new file that shall replace another one. The destructor removes it if it has not done so.
class CReplacement
{
public:
    explicit CReplacement(const std::string& sFile) : m_sFile(sFile)
    {
        constexpr int MAX_NAMES = 100;
        SettingsSystem::eCreation eResult = SettingsSystem::eTaken;
        for (int i = 0; i < MAX_NAMES && eResult == SettingsSystem::eTaken; ++i)
        {
            m_sNew = sFile + (i > 0 ? "." + std::to_string(i) : "") + ".new";
            eResult = SettingsSystem::Create(m_sNew.c_str(), sFile.c_str());
        }
        if (eResult != SettingsSystem::eCreated)
            throw CSettingsError("no new file can be made beside it");
    }
    ~CReplacement()
    {
        if (!m_bInPlace)
            std::remove(m_sNew.c_str());
    }
    CReplacement(const CReplacement&) = delete;
    CReplacement& operator=(const CReplacement&) = delete;

    const char* GetName() const { return m_sNew.c_str(); }

    void PutInPlace()
    {
        m_bInPlace = SettingsSystem::Replace(m_sNew.c_str(), m_sFile.c_str());
        if (!m_bInPlace)
            throw CSettingsError("it cannot be replaced");
    }

private:
    const std::string m_sFile;
    std::string m_sNew;
    bool m_bInPlace = false;
};

// A stream does not tell that the disk is full.
void ReadBack(const char* szNewFile)
{
    try
    {
        LoadSettings(szNewFile);
    }
    catch (const CSettingsError&)
    {
        throw CSettingsError("the new file cannot be written");
    }
}
} // namespace

void sWindowSettings::Transfer(ITOVStream& oStream)
{
    const CSection oSection(oStream, 2);
    ::Transfer(oStream, nWidth);
    if (oSection.GetVersion() >= 2)
        ::Transfer(oStream, nHeight);
    else
        nWidth *= PIXELS_OF_A_CHARACTER;
}

void sEditorSettings::Transfer(ITOVStream& oStream)
{
    const CSection oSection(oStream, 2);
    ::Transfer(oStream, nTabWidth);
    if (oSection.GetVersion() >= 2)
        ::Transfer(oStream, oFont);
}

sSettings LoadSettings(const std::string& sFile)
{
    sSettings oSettings;
    CTOVReadFileStream oStream(sFile.c_str());
    Transfer(oStream, oSettings);
    return oSettings;
}

bool HasSettings(const std::string& sFile)
{
    return TOVPlatform::TOVFile::DoesExist(sFile.c_str()) || !SettingsSystem::IsAbsent(sFile.c_str());
}

void SaveSettings(const sSettings& oSettings, const std::string& sFile)
{
    CReplacement oNew(SettingsSystem::TargetOf(sFile));
    {
        sSettings oWritten = oSettings;
        CTOVWriteFileStream oStream(oNew.GetName());
        Transfer(oStream, oWritten);
    }
    ReadBack(oNew.GetName());
    oNew.PutInPlace();
}
