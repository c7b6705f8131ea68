// tovfilter sends a text through plug-ins, which it loads at run time.
//
//   tovfilter TEXT PLUGIN...
//
// Filter.h is what the author of a plug-in needs, and PluginDatabase.cpp what a program of your own would take over.
// Exit status: 0 done, 1 a plug-in cannot be used, or the result cannot be written, 2 wrong usage.
#include "PluginDatabase.h"

#include <Text/TOVShownText.h>
#include <Text/TOVStandardOutput.h>

#include <cstdio>
#include <vector>

namespace
{
// Plug-ins find this descriptor by its name, so that it must be there before the first of them.
const CTOVClass s_oFilterClass("IFilter", &CTOVRefCount::GetClass());

std::string Shown(const CTOVStringA& oText)
{
    return TOVShownText::Printable(oText.IsEmpty() ? "" : ~oText);
}

// Loads all plug-ins, then sends the text through one after the other. They are unloaded at the end.
void SendThrough(CPluginDatabase& oDatabase, CTOVStringA oText, const std::vector<const char*>& aszFiles)
{
    std::vector<CTOVHandle> aPlugins;
    for (const char* szFile : aszFiles)
    {
        try
        {
            aPlugins.push_back(oDatabase.Load(szFile));
        }
        catch (const CPluginError& oError)
        {
            throw CPluginError(TOVShownText::Printable(szFile) + " " + oError.what());
        }
    }
    for (const CTOVHandle& oPlugin : aPlugins)
    {
        const IFilter& oFilter = FilterOf(oPlugin);
        oText = oFilter.Apply(oText);
        std::printf("%-15s %s\n", oFilter.GetRuntimeClass().GetName(), Shown(oText).c_str());
    }
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments < 3)
    {
        std::fputs("usage: tovfilter TEXT PLUGIN...\n", stderr);
        return 2;
    }
    int nStatus = 0;
    CPluginDatabase oDatabase;
    try
    {
        SendThrough(oDatabase, aszArguments[1], {aszArguments + 2, aszArguments + nArguments});
    }
    catch (const std::exception& oError)
    {
        std::fprintf(stderr, "tovfilter: %s\n", oError.what());
        nStatus = 1;
    }
    std::printf("%d plug-ins are still loaded\n", oDatabase.GetNumPlugins());
    return TOVShownText::FinishProgram("tovfilter", nStatus);
}
