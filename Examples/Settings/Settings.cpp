#include "Settings.h"

#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <filesystem>

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

void SaveSettings(const sSettings& oSettings, const std::string& sFile)
{
    const std::string sNewFile = sFile + ".new";
    {
        sSettings oWritten = oSettings;
        CTOVWriteFileStream oStream(sNewFile.c_str());
        Transfer(oStream, oWritten);
    }
    LoadSettings(sNewFile); // throws if the disk was full
    std::filesystem::rename(sNewFile, sFile);
}
