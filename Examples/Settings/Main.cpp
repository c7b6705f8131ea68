// tovsettings shows and changes a file of settings that has versioned sections, and that it can also read in the forms
// of its older releases.
//
//   tovsettings FILE                shows the settings, or the defaults if there is no such file
//   tovsettings FILE NAME VALUE     changes one of them: width, height, tabs or font
//
// Settings.cpp is what a program of your own would take over. Exit status: 0 done, 1 failed, 2 wrong usage.
#include "Settings.h"

#include <Debug/TOVException.h>
#include <Text/TOVShownText.h>
#include <Text/TOVStandardOutput.h>

#include <cstdio>

namespace
{
std::string Shown(const CTOVStringA& oText)
{
    return TOVShownText::Printable(oText.IsEmpty() ? "" : ~oText);
}

void Show(const sSettings& oSettings)
{
    std::printf("width  %d\nheight %d\ntabs   %d\nfont   %s\n", oSettings.oWindow.nWidth, oSettings.oWindow.nHeight,
                oSettings.oEditor.nTabWidth, Shown(oSettings.oEditor.oFont).c_str());
}

int* FindNumber(sSettings& oSettings, const CTOVStringA& oName)
{
    if (oName.Compare("width") == 0)
        return &oSettings.oWindow.nWidth;
    if (oName.Compare("height") == 0)
        return &oSettings.oWindow.nHeight;
    if (oName.Compare("tabs") == 0)
        return &oSettings.oEditor.nTabWidth;
    return nullptr;
}

// Returns false if there is no such setting, or if it cannot have this value.
bool Change(sSettings& oSettings, const CTOVStringA& oName, const CTOVStringA& oValue)
{
    if (oName.Compare("font") == 0)
    {
        oSettings.oEditor.oFont = oValue;
        return true;
    }
    int* const pNumber = FindNumber(oSettings, oName);
    const int nValue = oValue.IsEmpty() ? 0 : oValue.AsInt();
    if (pNumber == nullptr || nValue <= 0)
        return false;
    *pNumber = nValue;
    return true;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 2 && nArguments != 4)
    {
        std::fputs("usage: tovsettings FILE [NAME VALUE]\n", stderr);
        return 2;
    }
    const char* const szFile = aszArguments[1];
    try
    {
        sSettings oSettings;
        if (HasSettings(szFile))
            oSettings = LoadSettings(szFile);
        if (nArguments == 4)
        {
            if (!Change(oSettings, aszArguments[2], aszArguments[3]))
            {
                std::fprintf(stderr, "tovsettings: %s cannot be %s\n", TOVShownText::Printable(aszArguments[2]).c_str(),
                             TOVShownText::Printable(aszArguments[3]).c_str());
                return 2;
            }
            SaveSettings(oSettings, szFile);
        }
        Show(oSettings);
        return TOVShownText::FinishProgram("tovsettings", 0);
    }
    catch (const std::exception& oError)
    {
        std::fprintf(stderr, "tovsettings: %s: %s\n", TOVShownText::Printable(szFile).c_str(), oError.what());
    }
    catch (const CTOVException&)
    {
        std::fprintf(stderr, "tovsettings: %s cannot be opened\n", TOVShownText::Printable(szFile).c_str());
    }
    return 1;
}
