#include "Support/TOVTerminal.h"

#include <algorithm>

std::vector<std::string> CTerminal::Screen() const
{
    std::vector<std::string> aTexts;
    for (const sShownLine& oLine : ScreenInColours())
        aTexts.push_back(oLine.sText);
    return aTexts;
}

bool CTerminal::WaitUntilItShows(const std::string& sText)
{
    return WaitUntil([&](const std::vector<std::string>& aLines) {
        return std::any_of(aLines.begin(), aLines.end(),
                           [&](const std::string& sLine) { return sLine.find(sText) != std::string::npos; });
    });
}
