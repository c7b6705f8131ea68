#include "Listeners/ListenerInstruments.h"

#include <algorithm>
#include <regex>
#include <thread>

namespace
{
std::string TextOfThread(int nThread, int nLine)
{
    return std::to_string(nThread) + "-" + std::to_string(nLine) + std::string(static_cast<std::size_t>(nLine), 'x');
}
} // namespace

std::string WithoutTimes(const std::string& sText)
{
    static const std::regex s_oTime("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}( \\[[0-9]+\\])?");
    return std::regex_replace(sText, s_oTime, "TIME");
}

void LogFromThreads(int nThreads, int nLines, int nSeverity)
{
    std::vector<std::thread> aThreads;
    for (int nThread = 0; nThread < nThreads; ++nThread)
        aThreads.emplace_back([=] {
            for (int nLine = 0; nLine < nLines; ++nLine)
                Log(nSeverity, TextOfThread(nThread, nLine));
        });
    for (std::thread& oThread : aThreads)
        oThread.join();
}

tLines TextsOfThreads(int nThreads, int nLines)
{
    tLines aTexts;
    for (int nThread = 0; nThread < nThreads; ++nThread)
        for (int nLine = 0; nLine < nLines; ++nLine)
            aTexts.push_back(TextOfThread(nThread, nLine));
    std::sort(aTexts.begin(), aTexts.end());
    return aTexts;
}
