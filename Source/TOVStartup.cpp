// The library starts here: this file defines every static object of the library that needs construction, in the order
// in which they depend on each other. The language constructs them from top to bottom when the library is loaded, and
// destroys them from bottom to top at the end. The debug server, which its first user creates, is never destroyed.
// In a static program all this comes before the program's own static objects are constructed, and after they are
// destroyed.

#include <Debug/TOVMSDevLogger.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVPlatform/Backend/TOVSystem.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>
#include <Test/TOVTestDynamicSingleton.h>
#include <Test/TOVTestSuite.h>
#include <TestSuites/Test_TOVContainers.h>
#include <TestSuites/Test_TOVDebug.h>
#include <TestSuites/Test_TOVDesignPatterns.h>
#include <TestSuites/Test_TOVException.h>
#include <TestSuites/Test_TOVPlatform.h>
#include <TestSuites/Test_TOVProcess.h>
#include <TestSuites/Test_TOVRtti.h>
#include <TestSuites/Test_TOVRttiClasses.h>
#include <TestSuites/Test_TOVString.h>
#include <TestSuites/Test_TOVSystem.h>
#include <Timer/TOVTimer.h>

TOV_STARTUP_MARK

// 0. The backend prepares the process: what it registers with the system is in force from here on.
struct sBackend
{
    sBackend() { TOVPlatform::Backend::PrepareProcess(); }
};
TOV_CONSTRUCTED_FIRST static const sBackend s_oBackend;

// 1. The library's own suites are registered. Each has a creator, whose destructor unregisters it, and a registration.
// The first of them creates the factory's map. What follows each other is one object, so that the C library notes one
// destructor for it: for more than some 30 in a process it takes memory.
template<class TCreator> struct sSuite
{
    explicit sSuite(const char* szName) : oRegistration(szName, &oCreator) {}

    TCreator oCreator;
    TOVTest::sTestRegistration oRegistration;
};
struct sFirstSuites
{
    sSuite<CTOVCreator_CTOVContainersTest> oContainers{s_oTestSuiteNames.szContainers};
    sSuite<CTOVCreator_CTOVDebugTest> oDebug{s_oTestSuiteNames.szDebug};
    sSuite<CTOVCreator_CTOVDesignPatternsTest> oDesignPatterns{s_oTestSuiteNames.szDesignPatterns};
    sSuite<CTOVCreator_CTOVExceptionTest> oException{s_oTestSuiteNames.szException};
    sSuite<CTOVCreator_CTOVPlatformMemoryApiTest> oMemoryApi{s_oTestSuiteNames.szPlatformMemoryApi};
    sSuite<CTOVCreator_CTOVPlatformAsciiStringApiTest> oAsciiStringApi{s_oTestSuiteNames.szPlatformAsciiStringApi};
    sSuite<CTOVCreator_CTOVPlatformUnicodeStringApiTest> oUnicodeApi{s_oTestSuiteNames.szPlatformUnicodeStringApi};
    sSuite<CTOVCreator_CTOVPlatformCharApiTest> oCharApi{s_oTestSuiteNames.szPlatformCharApi};
    sSuite<CTOVCreator_CTOVProcessTest> oProcess{s_oTestSuiteNames.szProcess};
};
TOV_CONSTRUCTED_FIRST static sFirstSuites s_oFirstSuites;

// The next suite examines these classes. The first of them creates the debug server and the class server.
TOV_CONSTRUCTED_FIRST const CTOVClass TOVRttiTest::CBase::_s_oClass("CBase");
TOV_CONSTRUCTED_FIRST const CTOVClass TOVRttiTest::CClass::_s_oClass("CClass", &CBase::_s_oClass,
                                                                     &IInterface::GetClass());
struct sLastSuites
{
    sSuite<CTOVCreator_CTOVRttiTest> oRtti{s_oTestSuiteNames.szRtti};
    sSuite<CTOVCreator_CTOVStringTest> oString{s_oTestSuiteNames.szString};
    sSuite<CTOVCreator_CTOVSystemTest> oSystem{s_oTestSuiteNames.szSystem};
};
TOV_CONSTRUCTED_FIRST static sLastSuites s_oLastSuites;

// 2. The logger is registered: from here on, a debugger receives what the library logs.
TOV_CONSTRUCTED_FIRST const TOVDebug::CTOVMSDevLogger TOVDebug::CTOVMSDevLogger::_m_this;

// 3. The invalid class is constructed, then the holder of the class server, which the first class has created.
TOV_CONSTRUCTED_FIRST const CTOVClass CTOVClass::_s_oInvalid("<invalid class>");
TOV_CONSTRUCTED_FIRST static const CTOVDynamicSingleton<CTOVClassServer> s_oClassServerHolder;

// 4. The shared empty values are constructed.
TOV_CONSTRUCTED_FIRST static const CTOVDynamicSingleton<CTOVStringA> s_oNullStringAHolder;
TOV_CONSTRUCTED_FIRST static const CTOVDynamicSingleton<CTOVStringW> s_oNullStringWHolder;
TOV_CONSTRUCTED_FIRST static const CTOVDynamicSingleton<CTOVPath> s_oNullPathHolder;

// 5. The class of the virtual file system is constructed, after that of its interface; then the object is.
TOV_CONSTRUCTED_FIRST CTOVClass CTOVVirtualFileSystem::_s_oClass("CTOVVirtualFileSystem",
                                                                 &ITOVVirtualFileSystem::GetClass());
TOV_CONSTRUCTED_FIRST static const CTOVDynamicSingleton<CTOVVirtualFileSystem> s_oVirtualFileSystemHolder;

// 6. The timer is constructed.
TOV_CONSTRUCTED_FIRST static const CTOVDynamicSingleton<CTOVTimer> s_oTimerHolder;

// 7. The test framework follows: the null suite, and the holder of the creator map, which the first suite has created.
TOV_CONSTRUCTED_FIRST TOVTest::CTOVTestSuite TOVTest::CTOVTestSuite::m_oNull;
TOV_CONSTRUCTED_FIRST static const TOVTest::CTOVTestDynamicSingleton<TOVTest::tCreatorMap> s_oCreatorMapHolder;

// 8. The file handle table comes last. Nothing above may open a file.
TOV_CONSTRUCTED_FIRST static const CTOVDynamicSingleton<TOVPlatform::TOVFile::CTOVHandleManager> s_oHandleManagerHolder;
