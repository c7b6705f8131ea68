// The library comes to life here: every static of it that needs construction stands in this file, in the order in which
// they depend on each other. The language constructs them from top to bottom when the library is loaded, and destroys
// them from bottom to top at the end. The debug server, made on first need, is never destroyed.

#include <Debug/TOVMSDevLogger.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>
#include <Timer/TOVTimer.h>
#include <Test/TOVTestDynamicSingleton.h>
#include <Test/TOVTestSuite.h>

// 1. Diagnostics from the first moment on. The constructor makes the debug server.
const TOVDebug::CTOVMSDevLogger TOVDebug::CTOVMSDevLogger::_m_this;

// 2. The invalid class, then the holder of the class server, which the invalid class has made.
const CTOVClass CTOVClass::_s_oInvalid("<invalid class>");
static const CTOVDynamicSingleton<CTOVClassServer> s_oClassServerHolder;

// 3. The shared empty values.
static const CTOVDynamicSingleton<CTOVStringA> s_oNullStringAHolder;
static const CTOVDynamicSingleton<CTOVStringW> s_oNullStringWHolder;
static const CTOVDynamicSingleton<CTOVPath> s_oNullPathHolder;

// 4. The virtual file system: its class, which makes the interface's first, then the object.
CTOVClass CTOVVirtualFileSystem::_s_oClass("CTOVVirtualFileSystem", &ITOVVirtualFileSystem::GetClass());
static const CTOVDynamicSingleton<CTOVVirtualFileSystem> s_oVirtualFileSystemHolder;

// 5. The timer.
static const CTOVDynamicSingleton<CTOVTimer> s_oTimerHolder;

// 6. The test framework: the null suite, and the holder of the creator map. The map itself is as old as the first
// creator.
TOVTest::CTOVTestSuite TOVTest::CTOVTestSuite::m_oNull;
static const TOVTest::CTOVTestDynamicSingleton<TOVTest::tCreatorMap> s_oCreatorMapHolder;

// 7. Last, the file handle table. Nothing above may open a file.
static const CTOVDynamicSingleton<TOVPlatform::TOVFile::CTOVHandleManager> s_oHandleManagerHolder;
