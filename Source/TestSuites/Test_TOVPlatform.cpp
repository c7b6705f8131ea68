#include <TestSuites/Test_TOVPlatform.h>

#include <TOVPlatform/TOVMemory.h>
#include <Test/TOVTestChecks.h>

static const char s_szFile[] = "TestSuites\\Test_TOVPlatform";

// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVPlatformMemoryApiTest, "TOVPlatform Memory API (Windows)", s_szFile, 39)
    TOV_TEST_CASE_AT("Alloc & Free", TestAllocAndFree, s_szFile, 49)
    TOV_TEST_CASE_AT("Zero & Set", TestZeroAndSet, s_szFile, 50)
    TOV_TEST_CASE_AT("Compare & FastCompare", TestCompareAndFastCompare, s_szFile, 51)
    TOV_TEST_CASE_AT("Copy & Move", TestCopyAndMove, s_szFile, 52)
TOV_TEST_CASES_END

TOV_TEST_CASES_BEGIN_AT(CTOVPlatformAsciiStringApiTest, "TOVPlatform Ascii String API Test (Windows)", s_szFile, 157)
    TOV_TEST_CASE_AT("Test Compare", TestCompare, s_szFile, 192)
    TOV_TEST_CASE_AT("Test Compare No Case", TestCompareNoCase, s_szFile, 193)
    TOV_TEST_CASE_AT("Test Locale Compare", TestLocaleCompare, s_szFile, 194)
    TOV_TEST_CASE_AT("Test Locale Compare No Case", TestLocaleCompareNoCase, s_szFile, 195)
    TOV_TEST_CASE_AT("Test Length", TestLength, s_szFile, 196)
    TOV_TEST_CASE_AT("Test Lower", TestLower, s_szFile, 197)
    TOV_TEST_CASE_AT("Test Upper", TestUpper, s_szFile, 198)
    TOV_TEST_CASE_AT("Test Reverse", TestReverse, s_szFile, 199)
    TOV_TEST_CASE_AT("Test Find Character", TestFindCharacter, s_szFile, 200)
    TOV_TEST_CASE_AT("Test Find Last Character", TestFindLastCharacter, s_szFile, 201)
    TOV_TEST_CASE_AT("Test Find String", TestFindString, s_szFile, 202)
    TOV_TEST_CASE_AT("Test Find One Of", TestFindOneOf, s_szFile, 203)
    TOV_TEST_CASE_AT("Test Find Not One Of", TestFindNotOneOf, s_szFile, 204)
    TOV_TEST_CASE_AT("Test Find One Of Reverse", TestFindOneOfReverse, s_szFile, 205)
    TOV_TEST_CASE_AT("Test Find NotOne Of Reverse", TestFindNotOneOfReverse, s_szFile, 206)
    TOV_TEST_CASE_AT("Test SPrintf", TestSPrintf, s_szFile, 207)
    TOV_TEST_CASE_AT("Test SNPrintf", TestSNPrintf, s_szFile, 208)
    TOV_TEST_CASE_AT("Test VSPrintf", TestVSPrintf, s_szFile, 209)
    TOV_TEST_CASE_AT("Test VSNPrintf", TestVSNPrintf, s_szFile, 210)
    TOV_TEST_CASE_AT("Test Copy", TestCopy, s_szFile, 211)
    TOV_TEST_CASE_AT("Test NCopy", TestNCopy, s_szFile, 212)
    TOV_TEST_CASE_AT("Test Concat", TestConcat, s_szFile, 213)
    TOV_TEST_CASE_AT("Test NConcat", TestNConcat, s_szFile, 214)
    TOV_TEST_CASE_AT("Test Inc", TestInc, s_szFile, 215)
    TOV_TEST_CASE_AT("Test NInc", TestNInc, s_szFile, 216)
    TOV_TEST_CASE_AT("Test Dec", TestDec, s_szFile, 217)
    TOV_TEST_CASE_AT("Test To Long", TestToLong, s_szFile, 218)
    TOV_TEST_CASE_AT("Test To Ulong", TestToUlong, s_szFile, 219)
    TOV_TEST_CASE_AT("Test To Double", TestToDouble, s_szFile, 220)
TOV_TEST_CASES_END

TOV_TEST_CASES_BEGIN_AT(CTOVPlatformUnicodeStringApiTest, "TOVPlatform Unicode String API Test (Windows)", s_szFile, 714)
    TOV_TEST_CASE_AT("Test Compare", TestCompare, s_szFile, 749)
    TOV_TEST_CASE_AT("Test Compare No Case", TestCompareNoCase, s_szFile, 750)
    TOV_TEST_CASE_AT("Test Locale Compare", TestLocaleCompare, s_szFile, 751)
    TOV_TEST_CASE_AT("Test Locale Compare No Case", TestLocaleCompareNoCase, s_szFile, 752)
    TOV_TEST_CASE_AT("Test Length", TestLength, s_szFile, 753)
    TOV_TEST_CASE_AT("Test Lower", TestLower, s_szFile, 754)
    TOV_TEST_CASE_AT("Test Upper", TestUpper, s_szFile, 755)
    TOV_TEST_CASE_AT("Test Reverse", TestReverse, s_szFile, 756)
    TOV_TEST_CASE_AT("Test Find Character", TestFindCharacter, s_szFile, 757)
    TOV_TEST_CASE_AT("Test Find Last Character", TestFindLastCharacter, s_szFile, 758)
    TOV_TEST_CASE_AT("Test Find String", TestFindString, s_szFile, 759)
    TOV_TEST_CASE_AT("Test Find One Of", TestFindOneOf, s_szFile, 760)
    TOV_TEST_CASE_AT("Test Find Not One Of", TestFindNotOneOf, s_szFile, 761)
    TOV_TEST_CASE_AT("Test Find One Of Reverse", TestFindOneOfReverse, s_szFile, 762)
    TOV_TEST_CASE_AT("Test Find NotOne Of Reverse", TestFindNotOneOfReverse, s_szFile, 763)
    TOV_TEST_CASE_AT("Test SPrintf", TestSPrintf, s_szFile, 764)
    TOV_TEST_CASE_AT("Test SNPrintf", TestSNPrintf, s_szFile, 765)
    TOV_TEST_CASE_AT("Test VSPrintf", TestVSPrintf, s_szFile, 766)
    TOV_TEST_CASE_AT("Test VSNPrintf", TestVSNPrintf, s_szFile, 767)
    TOV_TEST_CASE_AT("Test Copy", TestCopy, s_szFile, 768)
    TOV_TEST_CASE_AT("Test NCopy", TestNCopy, s_szFile, 769)
    TOV_TEST_CASE_AT("Test Concat", TestConcat, s_szFile, 770)
    TOV_TEST_CASE_AT("Test NConcat", TestNConcat, s_szFile, 771)
    TOV_TEST_CASE_AT("Test Inc", TestInc, s_szFile, 772)
    TOV_TEST_CASE_AT("Test NInc", TestNInc, s_szFile, 773)
    TOV_TEST_CASE_AT("Test Dec", TestDec, s_szFile, 774)
    TOV_TEST_CASE_AT("Test To Long", TestToLong, s_szFile, 775)
    TOV_TEST_CASE_AT("Test To Ulong", TestToUlong, s_szFile, 776)
    TOV_TEST_CASE_AT("Test To Double", TestToDouble, s_szFile, 777)
TOV_TEST_CASES_END

TOV_TEST_CASES_BEGIN_AT(CTOVPlatformCharApiTest, "TOVPlatform Character API Test (Windows)", s_szFile, 1295)
    TOV_TEST_CASE_AT("TODO: ", TestTodo, s_szFile, 1304)
TOV_TEST_CASES_END
// clang-format on

namespace Memory = TOVPlatform::TOVMemory;

void CTOVPlatformMemoryApiTest::TestAllocAndFree()
{
    void* pMemory = Memory::Alloc(128);
    TOV_TEST_EQUALS(pMemory == NULL, false);
    pMemory = Memory::Realloc(pMemory, 256);
    TOV_TEST_EQUALS(pMemory == NULL, false);

    // A refused call leaves the block as it is.
    TOV_TEST_THROWS(Memory::Realloc(pMemory, 0));
    TOV_TEST_THROWS_NOT(Memory::Free(pMemory));

    TOV_TEST_THROWS(Memory::Alloc(0));
    TOV_TEST_THROWS(Memory::Realloc(NULL, 0));
    TOV_TEST_THROWS(Memory::Free(NULL));
}

void CTOVPlatformMemoryApiTest::TestZeroAndSet()
{
    tDword dwValue = 0x12345678;
    Memory::Zero(&dwValue, 4);
    TOV_TEST_EQUALS(dwValue, 0u);
    Memory::Set(&dwValue, 0xFF, 4);
    TOV_TEST_EQUALS(dwValue, 0xFFFFFFFFu);

    TOV_TEST_THROWS(Memory::Zero(NULL, 4));
    TOV_TEST_THROWS(Memory::Zero(&dwValue, 0));
    TOV_TEST_THROWS(Memory::Set(NULL, 0xFF, 4));
    TOV_TEST_THROWS(Memory::Set(&dwValue, 0xFF, 0));

    // The loose functions take the low 16 bits of a size, and refuse NULL even at size 0.
    TOV_TEST_THROWS_NOT(TOVMemory_Zero(&dwValue, static_cast<unsigned short>(65536)));
    TOV_TEST_EQUALS(dwValue, 0xFFFFFFFFu);
    TOV_TEST_THROWS(TOVMemory_Zero(NULL, 0));
    TOV_TEST_THROWS(TOVMemory_Set(NULL, 0xFF, 0));
}

void CTOVPlatformMemoryApiTest::TestCompareAndFastCompare()
{
    // Bytes are unsigned, and the first that differs decides: in a word as in the tail behind the words.
    static const tByte aLow[] = {9, 1, 0, 0, 0, 3};
    static const tByte aHigh[] = {9, 0xFF, 0, 0, 0, 2};
    static const tByte aSame[] = {9, 1, 0, 0, 0, 3};
    TOV_TEST_EQUALS(Memory::Compare(aLow, aSame, 6), 0);
    TOV_TEST_EQUALS(Memory::Compare(aLow, aHigh, 6), -1);
    TOV_TEST_EQUALS(Memory::Compare(aHigh, aLow, 6), 1);
    TOV_TEST_EQUALS(Memory::Compare(aLow + 2, aHigh + 2, 4), 1);
    TOV_TEST_EQUALS(Memory::Compare(aHigh + 5, aLow + 5, 1), -1);
    TOV_TEST_THROWS(Memory::Compare(aLow, aHigh, 0));
    TOV_TEST_THROWS(Memory::Compare(NULL, aHigh, 4));
    TOV_TEST_THROWS(Memory::Compare(aLow, NULL, 4));

    TOV_TEST_EQUALS(Memory::FastCompare(aLow, aSame, 4), true);
    TOV_TEST_EQUALS(Memory::FastCompare(aLow, aHigh, 4), false);
    TOV_TEST_THROWS(Memory::FastCompare(aLow, aSame, 0));
    TOV_TEST_THROWS(Memory::FastCompare(aLow, aSame, 3));

    // The loose function takes no bytes as equal.
    TOV_TEST_EQUALS(TOVMemory_Cmp(aLow, aHigh, 0), true);
}

void CTOVPlatformMemoryApiTest::TestCopyAndMove()
{
    const tDword dwSource = 0x12345678;
    tDword dwDestination = 0;
    Memory::Copy(&dwDestination, &dwSource, 4);
    TOV_TEST_EQUALS(dwDestination, dwSource);
    dwDestination = 0;
    Memory::Move(&dwDestination, &dwSource, 4);
    TOV_TEST_EQUALS(dwDestination, dwSource);

    TOV_TEST_THROWS(Memory::Copy(NULL, &dwSource, 4));
    TOV_TEST_THROWS(Memory::Copy(&dwDestination, NULL, 4));
    TOV_TEST_THROWS(Memory::Copy(&dwDestination, NULL, 0));
    TOV_TEST_THROWS(Memory::Copy(&dwDestination, &dwSource, 0));
    TOV_TEST_THROWS(Memory::Move(NULL, &dwSource, 4));
    TOV_TEST_THROWS(Memory::Move(&dwDestination, NULL, 4));
    TOV_TEST_THROWS(Memory::Move(&dwDestination, &dwSource, 0));
}

void CTOVPlatformCharApiTest::TestTodo()
{
    TOV_TEST_WARNING("TODO: Implement character api tests!");
}
