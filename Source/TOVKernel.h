// Includes the whole library, for applications.
#pragma once

#include <Debug/TOVBase.h>
#include <Debug/TOVDebug.h>
#include <Debug/TOVDebugServer.h>
#include <Debug/TOVException.h>
#include <Debug/TOVFormatCheck.h>
#include <Debug/TOVLogListener.h>
#include <Debug/TOVMSDevLogger.h>

#include <TOVPlatform/TOVFile.h>
#include <TOVPlatform/TOVMemory.h>
#include <TOVPlatform/TOVString.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <TOVPlatform/TOVThread.h>

#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVDesignPatterns/TOVHandle.h>
#include <TOVDesignPatterns/TOVMemento.h>
#include <TOVDesignPatterns/TOVRefCount.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>

#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBitArray.h>
#include <TOVContainers/TOVBuffer.h>
#include <TOVContainers/TOVQueue.h>
#include <TOVContainers/TOVRingBuffer.h>
#include <TOVContainers/TOVSafeQueue.h>
#include <TOVContainers/TOVSorter.h>
#include <TOVContainers/TOVStack.h>

#include <TOVString/TOVCrc.h>
#include <TOVString/TOVFourCC.h>
#include <TOVString/TOVResourceLoader.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringStd.h>
#include <TOVString/TOVStringW.h>

#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>

#include <Path/TOVPath.h>

#include <TOVProcess/TOVCriticalSection.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVEventCondition.h>
#include <TOVProcess/TOVMutex.h>
#include <TOVProcess/TOVSemaphore.h>
#include <TOVProcess/TOVThread.h>

#include <File/TOVFile.h>
#include <File/TOVFileInterface.h>
#include <File/TOVFileScanner.h>
#include <File/TOVVirtualFileSystem.h>

#include <TOVStream/TOVFileStream.h>
#include <TOVStream/TOVReadFileStream.h>
#include <TOVStream/TOVStream.h>
#include <TOVStream/TOVStreamTraits.h>
#include <TOVStream/TOVWriteFileStream.h>

#include <Timer/TOVTimer.h>

#include <Test/TOVCountingTracker.h>
#include <Test/TOVSimpleTestRunner.h>
#include <Test/TOVTestCase.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestDynamicSingleton.h>
#include <Test/TOVTestHooks.h>
#include <Test/TOVTestHost.h>
#include <Test/TOVTestListener.h>
#include <Test/TOVTestRouter.h>
#include <Test/TOVTestRunner.h>
#include <Test/TOVTestSuite.h>
#include <Test/TOVTestSuiteCreator.h>
#include <Test/TOVTestSuiteDefinition.h>
#include <Test/TOVTestSuiteFactory.h>
#include <Test/TOVTestText.h>
#include <Test/TOVTestTracker.h>
#include <Test/TOVTestValue.h>
