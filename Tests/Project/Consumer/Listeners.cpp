#include <Listeners/TOVMemoryListener.h>
#include <Listeners/TOVSeverityFilter.h>

#include <cstdio>

int main()
{
    TOVDebug::CTOVMemoryListener oMemory;
    TOVDebug::CTOVSeverityFilter oFilter(oMemory, eSeverityWarning);
    oFilter.Register();
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "%s", "kept away");
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityWarning, "%s, %d", "listeners", 32);
    for (const TOVDebug::sTOVLogLine& oLine : oMemory.GetLines())
        std::puts(oLine.sText.c_str());
    return 0;
}
