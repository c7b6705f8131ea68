// tovlogpage writes a log that is read in a browser. It shows a listener of one's own.
//
//   tovlogpage PAGE.html
//
// HtmlListener.cpp is what a program of your own would take over. Exit status: 0 done, 1 the page or the result cannot
// be written, 2 wrong usage.
#include "HtmlListener.h"

#include <Debug/TOVBase.h>
#include <Text/TOVShownText.h>
#include <Text/TOVStandardOutput.h>

#include <cstdio>

namespace
{
// What a program might have to say.
void Work()
{
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityTrace, "reading %s", "cities.dat");
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "%d cities", 3);
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityWarning, "%d cities have no name, %s has two", 2,
                   "<\"Bonn\" & Beuel>");
    try
    {
        const int nPopulation = -1;
        TOV_ASSERT(nPopulation >= 0);
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x11, eSeverityError, "the population of one city is unknown");
    }
    TOVDebug::_Log(__FILE__, __LINE__, 0x11, eSeverityFatal, "no city can be shown");
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 2)
    {
        std::fputs("usage: tovlogpage PAGE.html\n", stderr);
        return 2;
    }
    CHtmlListener oListener(aszArguments[1]);
    oListener.Register();
    Work();
    const std::string sPage = TOVShownText::Printable(aszArguments[1]);
    if (!oListener.IsOpen() || oListener.HasLostLines())
    {
        std::fprintf(stderr, "tovlogpage: %s cannot be written\n", sPage.c_str());
        return 1;
    }
    std::printf("Open %s in a browser.\n", sPage.c_str());
    return TOVShownText::FinishProgram("tovlogpage", 0);
}
