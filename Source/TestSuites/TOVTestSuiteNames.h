// Internal. Defines the keys under which the library's own suites are registered in the factory.
#pragma once

// The factory orders its keys by their addresses. The members of one structure have ascending addresses in every build,
// so that a run visits the suites in this order, which is also the order of their registration.
struct sTOVTestSuiteNames
{
    char szContainers[20] = "CTOVContainersTest";
    char szDebug[20] = "CTOVDebugTest";
    char szDesignPatterns[28] = "CTOVDesignPatternsTest";
    char szException[20] = "CTOVExceptionTest";
    char szPlatformMemoryApi[36] = "CTOVPlatformMemoryApiTest";
    char szPlatformAsciiStringApi[36] = "CTOVPlatformAsciiStringApiTest";
    char szPlatformUnicodeStringApi[36] = "CTOVPlatformUnicodeStringApiTest";
    char szPlatformCharApi[36] = "CTOVPlatformCharApiTest";
    char szProcess[20] = "CTOVProcessTest";
    char szRtti[20] = "CTOVRttiTest";
    char szString[20] = "CTOVStringTest";
    char szSystem[20] = "CTOVSystemTest";
};

inline constexpr sTOVTestSuiteNames s_oTestSuiteNames;
