// The exported design is the product: names and slots may be added after those here, and nothing may move.
#include "Exports/TOVDemangled.h"
#include "Support/TOVLibraryImage.h"
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVSafeQueue.h>
#include <TOVContainers/TOVSorter.h>
#include <TOVString/TOVStringA.h>

#include <algorithm>
#include <fstream>

// Templates that the library does not instantiate are looked at in this program, which exports them.
typedef int (*tCompareInts)(const int&, const int&);
template class TOV_PROGRAM_EXPORT CTOVSafeQueue<CTOVStringA>;
template class TOV_PROGRAM_EXPORT ISorter<tCompareInts>;
template class TOV_PROGRAM_EXPORT CTOVArray<int>::CHeapSort<tCompareInts>;

namespace
{
std::string ReplaceAll(std::string sText, const std::string& sOld, const std::string& sNew)
{
    for (std::size_t n = sText.find(sOld); n != std::string::npos; n = sText.find(sOld, n + sNew.size()))
        sText.replace(n, sOld.size(), sNew);
    return sText;
}

// Where a function's parameters begin; brackets can stand inside template arguments as well.
std::size_t FindParameters(const std::string& sFunction)
{
    int nDepth = 0;
    for (std::size_t i = 0; i < sFunction.size(); ++i)
    {
        nDepth += sFunction[i] == '<' ? 1 : sFunction[i] == '>' ? -1 : 0;
        if (nDepth == 0 && sFunction[i] == '(')
            return i;
    }
    return std::string::npos;
}

// A member function without its class: "CTOVFile::Seek(long long)" is "Seek(long long)".
std::string WithoutClass(const std::string& sFunction)
{
    const std::size_t nParameters = FindParameters(sFunction);
    int nDepth = 0;
    std::size_t nStart = 0;
    for (std::size_t i = 0; i + 1 < sFunction.size() && i < nParameters; ++i)
    {
        nDepth += sFunction[i] == '<' ? 1 : sFunction[i] == '>' ? -1 : 0;
        if (nDepth == 0 && sFunction[i] == ':' && sFunction[i + 1] == ':')
            nStart = i + 2;
    }
    return sFunction.substr(nStart);
}

// A function as the tables below write it. A list of variable arguments is another type on each target.
std::string SlotText(const std::string& sName)
{
    const std::string sFunction = WithoutClass(Demangle(sName));
    if (sFunction[0] == '~')
        return "destructor";
    return ReplaceAll(ReplaceAll(sFunction, ", __va_list_tag*)", ", list)"), ", char*)", ", list)");
}

// A slot for the destructor of an abstract class: GCC leaves it empty, and clang fills it. Nobody calls it.
const char ABSTRACT_DESTRUCTOR[] = "destructor of an abstract class";

// What stands in a slot, in the words that were expected where they are among its names.
std::string SlotText(const std::set<std::string>& aNames, const std::string& sExpected)
{
    std::set<std::string> aTexts;
    for (const std::string& sName : aNames)
        aTexts.insert(SlotText(sName));
    if (sExpected == ABSTRACT_DESTRUCTOR && (aTexts.empty() || aTexts.count("destructor") > 0))
        return sExpected;
    if (aTexts.empty())
        return "pure";
    return aTexts.count(sExpected) > 0 ? sExpected : *aTexts.begin();
}

struct sTable
{
    eModule eWhere;
    const char* szTable;
    std::vector<std::string> aSlots;
};

// The tables name a destructor once; it takes two slots, one that ends the object and one that frees it as well.
std::vector<std::string> InSlots(const std::vector<std::string>& aOperations)
{
    std::vector<std::string> aSlots;
    for (const std::string& sOperation : aOperations)
        aSlots.insert(aSlots.end(), sOperation == "destructor" ? 2 : 1, sOperation);
    return aSlots;
}

std::vector<std::string> ReadTable(const sTable& oTable)
{
    const std::vector<std::string> aExpected = InSlots(oTable.aSlots);
    std::vector<std::string> aSlots;
    for (const std::set<std::string>& aNames : TableSlots(oTable.eWhere, oTable.szTable, aExpected.size()))
        aSlots.push_back(SlotText(aNames, aSlots.size() < aExpected.size() ? aExpected[aSlots.size()] : ""));
    return aSlots;
}

std::vector<std::string> OnlyDestructor()
{
    return {"destructor"};
}

const std::vector<std::string> STREAM_SLOTS = {
    "Read(void*, unsigned long long)",
    "Write(void const*, unsigned long long)",
    "Seek(long long, TOVPlatform::TOVFile::eSeekOrigin)",
    "SerializeBegin(int)",
    "SerializeEnd()",
    "GetMode() const",
    "GetFormat() const",
    "IsLoading() const",
    "IsSaving() const",
    "IsStoring() const",
    "Tell() const",
    "SupportsRead() const",
    "SupportsWrite() const",
    "SupportsSeek() const",
    "SupportsVersioning() const",
    "GetSize() const",
    "GetVersion() const",
};

const std::vector<std::string> LISTENER_SLOTS = {
    "OnStartup()",
    "OnClosedown()",
    "OnLog(char const*, unsigned long, eTOVDebugSeverity, char const*, ...)",
    "OnPanic(char const*, unsigned long, eTOVDebugSeverity, char const*, ...)",
    "OnLogV(char const*, unsigned long, eTOVDebugSeverity, char const*, list)",
    "OnAssert(char const*, unsigned long, char const*)",
    "OnPanicV(char const*, unsigned long, char const*, list)",
    "SetApplicationName(char const*)",
};

const std::vector<std::string> RUNTIME_CLASS_SLOTS = {
    "GetRuntimeClass() const",
    "QueryInterface(CTOVClass const&)",
    "IsInstanceOf(CTOVClass const&) const",
    "IsKindOf(CTOVClass const&) const",
};

std::vector<std::string> Join(std::vector<std::string> aFirst, const std::vector<std::string>& aSecond)
{
    aFirst.insert(aFirst.end(), aSecond.begin(), aSecond.end());
    return aFirst;
}

// The slots of an interface: those named stay, the others are pure.
std::vector<std::string> Interface(const std::vector<std::string>& aSlots, const std::vector<std::string>& aImplemented)
{
    std::vector<std::string> aResult;
    for (const std::string& sSlot : aSlots)
    {
        const bool bPure = std::find(aImplemented.begin(), aImplemented.end(), sSlot) == aImplemented.end();
        aResult.push_back(bPure ? "pure" : sSlot);
    }
    return aResult;
}

const std::vector<std::string> COUNT_SLOTS = {"AddRef()", "Release()", "GetRefCount() const"};

const std::vector<std::string> FILE_SLOTS = {
    "Open(char const*, int)",
    "Close()",
    "Read(void*, unsigned long long)",
    "Write(void const*, unsigned long long)",
    "Seek(long long, TOVPlatform::TOVFile::eSeekOrigin)",
    "Flush()",
    "Tell() const",
    "IsOpen() const",
    "IsEof() const",
    "GetSize() const",
};

const std::vector<std::string> FILE_SYSTEM_SLOTS =
    Join(RUNTIME_CLASS_SLOTS, {"SetAssign(CTOVStringA const&, CTOVPath const&)", "GetAssign(CTOVStringA const&) const",
                               "ResolvePath(CTOVPath const&)"});

const std::vector<std::string> TEST_LISTENER_SLOTS = {
    "EnterEnvironment()",
    "LeaveEnvironment()",
    "EnterSuite(TOVTest::CTOVTestSuite const&)",
    "LeaveSuite(TOVTest::CTOVTestSuite const&)",
    "EnterTestCase(TOVTest::CTOVTestCase const&)",
    "LeaveTestCase(TOVTest::CTOVTestCase const&)",
    "Warning(char const*, long, char const*)",
    "FailedTest(char const*, long, char const*)",
    "FailedAssert(char const*, long, char const*)",
    "FailedAssertEquals(char const*, long, char const*, char const*, char const*, char const*)",
    "FailedAssertDelta(char const*, long, char const*, char const*, char const*, char const*, char const*, char "
    "const*)",
    "FailedAssertDiffers(char const*, long, char const*, char const*, char const*)",
    "FailedAssertLessThan(char const*, long, char const*, char const*, char const*, char const*)",
    "FailedAssertThrows(char const*, long, char const*, char const*, bool)",
    "FailedAssertThrowsNot(char const*, long, char const*)",
};

const std::vector<std::string> TEST_ROUTER_SLOTS =
    Join(TEST_LISTENER_SLOTS,
         {"destructor", "AddListener(TOVTest::CTOVTestListener&)", "RemoveListener(TOVTest::CTOVTestListener&)"});

const std::vector<std::string> TEST_TRACKER_SLOTS = {
    "HasTestFailed() const",          "HasSuiteFailed() const",         "HasEnvironmentFailed() const",
    "GetNumFailedAsserts() const",    "GetNumFailedSuiteTests() const", "GetNumFailedSuites() const",
    "GetNumTotalFailedTests() const", "GetCurrentTestCase() const",     "GetCurrentTestSuite() const",
};

const sTable TABLES[] = {
    {eModuleLibrary, "_ZTV13CTOVException", {"GetClass()", "GetCode() const"}},
    {eModuleLibrary, "_ZTV19CTOVMemoryException", {"GetClass()", "GetCode() const"}},
    {eModuleLibrary, "_ZTVN8TOVDebug19CTOVAssertExceptionE", {"GetClass()", "GetCode() const"}},
    {eModuleLibrary, "_ZTVN8TOVDebug15ITOVLogListenerE",
     Interface(LISTENER_SLOTS, {LISTENER_SLOTS[2], LISTENER_SLOTS[3]})},
    {eModuleLibrary, "_ZTVN8TOVDebug15CTOVDebugServerE", Join(LISTENER_SLOTS, {"destructor"})},
    {eModuleLibrary, "_ZTVN8TOVDebug15CTOVMSDevLoggerE", Join(LISTENER_SLOTS, {"destructor"})},

    {eModuleLibrary, "_ZTV12ITOVRefCount", Join(RUNTIME_CLASS_SLOTS, {"pure", "pure", "pure"})},
    {eModuleLibrary, "_ZTV12CTOVRefCount", Join(Join(RUNTIME_CLASS_SLOTS, COUNT_SLOTS), {"destructor"})},
    {eModuleLibrary, "_ZTV18CTOVRefCountObjectIcE", Join(Join(RUNTIME_CLASS_SLOTS, COUNT_SLOTS), {"destructor"})},
    {eModuleLibrary, "_ZTV9CTOVClass", OnlyDestructor()},
    {eModuleLibrary, "_ZTV15CTOVClassServer", OnlyDestructor()},
    {eModuleLibrary, "_ZTV20CTOVDynamicSingletonI8CTOVPathE", OnlyDestructor()},
    {eModuleLibrary, "_ZTV10CTOVHandle", OnlyDestructor()},
    {eModuleLibrary, "_ZTV18ITOVHandleDatabase", {"pure", "pure", "NewHandle(long, ITOVRefCount*)", "pure"}},
    {eModuleLibrary, "_ZTV11ITOVMemento", {"pure", "pure"}}, // its destructor, as told of CTOVThread
    {eModuleLibrary, "_ZTV18ITOVMementoCreator", {"pure", "pure", "pure"}},

    {eModuleLibrary,
     "_ZTV10CTOVBufferIcE",
     {"destructor", "SetElements(long, char const*, long)", "GetElements(long, char*, long) const",
      "operator=(CTOVBuffer<char> const&)", "Assign(char const*, long)", "Append(CTOVBuffer<char> const&)",
      "Append(char const*, long)", "Zero()", "Resize(long, bool)", "Free()", "SetSize(long, bool)", "IsValid() const",
      "GetSize() const", "GetBuffer()", "GetBuffer() const", "Swap(long, long)"}},
    {eModuleLibrary,
     "_ZTV9CTOVArrayIiE",
     {"destructor", "Add(int const&)", "InsertAt(long, int const&)", "Append(int const*, long)",
      "SetAt(long, int const&)", "RemoveAt(long)", "RemoveAll()", "Resize(long)", "GetAt(long) const",
      "ElementAt(long)", "GetSize() const", "GetCount() const", "IsEmpty() const",
      "Append(CTOVArray<int> const&, long, long)", "operator[](long) const", "operator[](long)", "Swap(long, long)"}},
    {eModuleLibrary, "_ZTV9CTOVStackIiE", OnlyDestructor()},
    {eModuleLibrary, "_ZTV9CTOVQueueIiE", OnlyDestructor()},
    {eModuleLibrary,
     "_ZTV14CTOVRingBufferIiE",
     {"destructor", "Write(int const&)", "Read(int&)", "Clear()", "SetCapacity(long, bool)", "GetCapacity() const",
      "GetCount() const", "GetSize() const", "IsEmpty() const", "IsFull() const"}},
    {eModuleLibrary, "_ZTV12CTOVBitArray", OnlyDestructor()},
    {eModuleProgram, "_ZTV13CTOVSafeQueueI11CTOVStringAE", {"IsEmpty() const", "GetCount() const", "GetSize() const"}},
    {eModuleProgram, "_ZTV7ISorterIPFiRKiS1_EE", {"pure"}},
    {eModuleProgram, "_ZTVN9CTOVArrayIiE9CHeapSortIPFiRKiS3_EEE", {"Sort(int (*)(int const&, int const&))"}},

    {eModuleLibrary, "_ZTV11CTOVStringA", OnlyDestructor()},
    {eModuleLibrary, "_ZTV11CTOVStringW", OnlyDestructor()},
    {eModuleLibrary, "_ZTV10CTOVFourCC", OnlyDestructor()},
    {eModuleLibrary, "_ZTV18ITOVResourceLoader", {"pure"}},
    {eModuleLibrary, "_ZTV8CTOVPath", OnlyDestructor()},

    {eModuleLibrary, "_ZTV9CTOVEvent", OnlyDestructor()},
    {eModuleLibrary, "_ZTV9CTOVMutex", OnlyDestructor()},
    {eModuleLibrary, "_ZTV19CTOVCriticalSection", OnlyDestructor()},
    {eModuleLibrary, "_ZTV13CTOVSemaphore", OnlyDestructor()},
    {eModuleLibrary, "_ZTV18CTOVEventCondition", OnlyDestructor()},
    {eModuleLibrary,
     "_ZTV10CTOVThread",
     {ABSTRACT_DESTRUCTOR, ABSTRACT_DESTRUCTOR, "InitInstance()", "ExitInstance()",
      "Start(unsigned long, TOVPlatform::TOVThread::eThreadPriority)", "Stop(bool, unsigned long)", "pure",
      "IsStopPending() const", "IsRunning() const"}},

    {eModuleLibrary, "_ZTVN11TOVPlatform7TOVFile17CTOVHandleManagerE", OnlyDestructor()},
    {eModuleLibrary, "_ZTV8ITOVFile", Interface(FILE_SLOTS, {})},
    {eModuleLibrary, "_ZTV8CTOVFile", Join(FILE_SLOTS, {"destructor"})},
    {eModuleLibrary, "_ZTV21ITOVVirtualFileSystem", Interface(FILE_SYSTEM_SLOTS, RUNTIME_CLASS_SLOTS)},
    {eModuleLibrary, "_ZTV21CTOVVirtualFileSystem", Join(FILE_SYSTEM_SLOTS, {"destructor"})},
    {eModuleLibrary,
     "_ZTV15CTOVFileScanner",
     {"destructor",
      "Run(CTOVFileScanner::eScannerControl (*)(CTOVFileScanner::eScannerMode, CTOVFileScanner::sTOVFileDescriptor*, "
      "unsigned long long), unsigned long long)",
      "SetIncludeSubDirs(bool)"}},

    {eModuleLibrary, "_ZTV10ITOVStream",
     Interface(STREAM_SLOTS, {STREAM_SLOTS[6], STREAM_SLOTS[7], STREAM_SLOTS[8], STREAM_SLOTS[9]})},
    {eModuleLibrary, "_ZTV14CTOVFileStream", Join(STREAM_SLOTS, {"destructor"})},
    {eModuleLibrary, "_ZTV18CTOVReadFileStream", Join(STREAM_SLOTS, {"destructor"})},
    {eModuleLibrary, "_ZTV19CTOVWriteFileStream", Join(STREAM_SLOTS, {"destructor"})},

    {eModuleLibrary, "_ZTV9CTOVTimer", OnlyDestructor()},

    {eModuleLibrary,
     "_ZTVN7TOVTest13CTOVTestSuiteE",
     {"destructor", "Startup()", "Closedown()", "GetNumTestCases() const", "GetTestCase(long) const",
      "GetDescription() const", "GetFileName() const", "GetLine() const"}},
    {eModuleLibrary, "_ZTVN7TOVTest20ITOVTestSuiteCreatorE", {"pure"}},
    {eModuleLibrary,
     "_ZTVN7TOVTest24CTOVTestDynamicSingletonISt3mapIPKcPNS_20ITOVTestSuiteCreatorESt4lessIS3_ESaISt4pairIKS3_S5_EEEEE",
     OnlyDestructor()},
    {eModuleLibrary, "_ZTVN7TOVTest16CTOVTestListenerE", TEST_LISTENER_SLOTS},
    {eModuleLibrary, "_ZTVN7TOVTest14CTOVTestRouterE", TEST_ROUTER_SLOTS},
    {eModuleLibrary, "_ZTVN7TOVTest20CTOVSimpleTestRunnerE", Join(TEST_ROUTER_SLOTS, {"Run()"})},
    {eModuleLibrary, "_ZTVN7TOVTest15CTOVTestTrackerE", TEST_TRACKER_SLOTS},
    {eModuleLibrary, "_ZTVN7TOVTest19CTOVCountingTrackerE",
     Join(Join(TEST_LISTENER_SLOTS,
               {"GetCurrentTestSuite()", "GetCurrentTestCase()", "GetNumFailedAsserts() const",
                "GetNumFailedSuiteTests() const", "GetNumFailedSuites() const", "GetNumTotalFailedTests() const",
                // To the second base's part: its place in the object and the type's information stand in front.
                "pure", "CTOVCountingTracker"}),
          TEST_TRACKER_SLOTS)},
};

std::ostream& operator<<(std::ostream& oOutput, const sTable& oTable)
{
    return oOutput << oTable.szTable;
}

class TOVSlotOrderTest : public testing::TestWithParam<sTable>
{
};

std::string TestName(const testing::TestParamInfo<sTable>& oInfo)
{
    std::string sName = oInfo.param.szTable + 4; // after "_ZTV"
    for (char& cCharacter : sName)
    {
        if (!std::isalnum(static_cast<unsigned char>(cCharacter)))
            cCharacter = '_';
    }
    return sName;
}

// Exported names of the library's own things; what its headers instantiate of the standard library does not count.
std::set<std::string> OwnNames()
{
    std::set<std::string> aNames;
    for (const std::string& sName : ExportedNames(eModuleLibrary))
    {
        const std::string sDemangled = Demangle(sName);
        const std::size_t nParameters = sDemangled.find('(');
        const std::string sQualified = sDemangled.substr(0, nParameters);
        const bool bFunction = sName.rfind("_Z", 0) == 0 && nParameters != std::string::npos;
        if (bFunction && sQualified.find("std::") == std::string::npos &&
            sQualified.find("__gnu_cxx") == std::string::npos && sQualified.find(" for ") == std::string::npos)
            aNames.insert(sQualified);
    }
    return aNames;
}
} // namespace

TEST_P(TOVSlotOrderTest, StandsAsItIsWritten)
{
    EXPECT_EQ(InSlots(GetParam().aSlots), ReadTable(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Classes, TOVSlotOrderTest, testing::ValuesIn(TABLES), TestName);

TEST(TOVExportedNamesTest, HoldExactlyThesePlainNames)
{
    std::set<std::string> aPlain;
    for (const std::string& sName : ExportedNames(eModuleLibrary))
    {
        const bool bDecorated = sName.rfind("_Z", 0) == 0;
        const bool bOfCompiler = sName.rfind("__", 0) == 0;
        if (!bDecorated && !bOfCompiler)
            aPlain.insert(sName);
    }

    const std::set<std::string> aExpected = {
        "GetCreatorMapDirect", "GetListener",    "GetNull",  "SetListener",    "CRC16Generate",
        "CRC32Generate",       "IsAlphanumeric", "IsSpace",  "TOVMemory_Cmp",  "TOVMemory_Copy",
        "TOVMemory_Set",       "TOVMemory_Zero", "TOVPanic", "TOVString_CopyN"};
    EXPECT_EQ(aExpected, aPlain);
}

// exported-names.txt holds the qualified name of every exported function, one a line. Behind "used " stands one of a
// template that the library uses and does not own, or of a class inside a template: either target may export it.
TEST(TOVExportedNamesTest, HoldExactlyTheListedFunctions)
{
    const std::string USED = "used ";
    std::set<std::string> aMayBeAbsent;
    std::set<std::string> aListed;
    std::ifstream oList(TOV_EXPORTED_NAMES);
    ASSERT_TRUE(oList.is_open()) << TOV_EXPORTED_NAMES;
    for (std::string sLine; std::getline(oList, sLine);)
    {
        const bool bUsed = sLine.rfind(USED, 0) == 0;
        sLine.erase(0, bUsed ? USED.size() : 0);
        aListed.insert(sLine);
        if (bUsed)
            aMayBeAbsent.insert(sLine);
    }

    const std::set<std::string> aExported = OwnNames();
#if defined(NDEBUG)
    // A build that is not optimised makes functions, and so exports, of much more that headers define.
    for (const std::string& sName : aExported)
        EXPECT_EQ(1u, aListed.count(sName)) << "exported, but not listed: " << sName;
#endif
    for (const std::string& sName : aListed)
    {
        EXPECT_TRUE(aMayBeAbsent.count(sName) > 0 || aExported.count(sName) > 0)
            << "listed, but not exported: " << sName;
    }
}
