#include <TestSuites/Test_TOVPlatform.h>

#include <TOVPlatform/TOVMemory.h>
#include <Test/TOVTestChecks.h>

constexpr char FILE_NAME[] = "TestSuites\\Test_TOVPlatform";

// Settled: the file name and the lines of the table are given; they are not the places in this source.
// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVPlatformMemoryApiTest, "TOVPlatform Memory API (Windows)", FILE_NAME, 39)
    TOV_TEST_CASE_AT("Alloc & Free", TestAllocAndFree, FILE_NAME, 49)
    TOV_TEST_CASE_AT("Zero & Set", TestZeroAndSet, FILE_NAME, 50)
    TOV_TEST_CASE_AT("Compare & FastCompare", TestCompareAndFastCompare, FILE_NAME, 51)
    TOV_TEST_CASE_AT("Copy & Move", TestCopyAndMove, FILE_NAME, 52)
TOV_TEST_CASES_END

TOV_TEST_CASES_BEGIN_AT(CTOVPlatformAsciiStringApiTest, "TOVPlatform Ascii String API Test (Windows)", FILE_NAME, 157)
    TOV_TEST_CASE_AT("Test Compare", TestCompare, FILE_NAME, 192)
    TOV_TEST_CASE_AT("Test Compare No Case", TestCompareNoCase, FILE_NAME, 193)
    TOV_TEST_CASE_AT("Test Locale Compare", TestLocaleCompare, FILE_NAME, 194)
    TOV_TEST_CASE_AT("Test Locale Compare No Case", TestLocaleCompareNoCase, FILE_NAME, 195)
    TOV_TEST_CASE_AT("Test Length", TestLength, FILE_NAME, 196)
    TOV_TEST_CASE_AT("Test Lower", TestLower, FILE_NAME, 197)
    TOV_TEST_CASE_AT("Test Upper", TestUpper, FILE_NAME, 198)
    TOV_TEST_CASE_AT("Test Reverse", TestReverse, FILE_NAME, 199)
    TOV_TEST_CASE_AT("Test Find Character", TestFindCharacter, FILE_NAME, 200)
    TOV_TEST_CASE_AT("Test Find Last Character", TestFindLastCharacter, FILE_NAME, 201)
    TOV_TEST_CASE_AT("Test Find String", TestFindString, FILE_NAME, 202)
    TOV_TEST_CASE_AT("Test Find One Of", TestFindOneOf, FILE_NAME, 203)
    TOV_TEST_CASE_AT("Test Find Not One Of", TestFindNotOneOf, FILE_NAME, 204)
    TOV_TEST_CASE_AT("Test Find One Of Reverse", TestFindOneOfReverse, FILE_NAME, 205)
    TOV_TEST_CASE_AT("Test Find NotOne Of Reverse", TestFindNotOneOfReverse, FILE_NAME, 206)
    TOV_TEST_CASE_AT("Test SPrintf", TestSPrintf, FILE_NAME, 207)
    TOV_TEST_CASE_AT("Test SNPrintf", TestSNPrintf, FILE_NAME, 208)
    TOV_TEST_CASE_AT("Test VSPrintf", TestVSPrintf, FILE_NAME, 209)
    TOV_TEST_CASE_AT("Test VSNPrintf", TestVSNPrintf, FILE_NAME, 210)
    TOV_TEST_CASE_AT("Test Copy", TestCopy, FILE_NAME, 211)
    TOV_TEST_CASE_AT("Test NCopy", TestNCopy, FILE_NAME, 212)
    TOV_TEST_CASE_AT("Test Concat", TestConcat, FILE_NAME, 213)
    TOV_TEST_CASE_AT("Test NConcat", TestNConcat, FILE_NAME, 214)
    TOV_TEST_CASE_AT("Test Inc", TestInc, FILE_NAME, 215)
    TOV_TEST_CASE_AT("Test NInc", TestNInc, FILE_NAME, 216)
    TOV_TEST_CASE_AT("Test Dec", TestDec, FILE_NAME, 217)
    TOV_TEST_CASE_AT("Test To Long", TestToLong, FILE_NAME, 218)
    TOV_TEST_CASE_AT("Test To Ulong", TestToUlong, FILE_NAME, 219)
    TOV_TEST_CASE_AT("Test To Double", TestToDouble, FILE_NAME, 220)
TOV_TEST_CASES_END

TOV_TEST_CASES_BEGIN_AT(CTOVPlatformUnicodeStringApiTest, "TOVPlatform Unicode String API Test (Windows)", FILE_NAME, 714)
    TOV_TEST_CASE_AT("Test Compare", TestCompare, FILE_NAME, 749)
    TOV_TEST_CASE_AT("Test Compare No Case", TestCompareNoCase, FILE_NAME, 750)
    TOV_TEST_CASE_AT("Test Locale Compare", TestLocaleCompare, FILE_NAME, 751)
    TOV_TEST_CASE_AT("Test Locale Compare No Case", TestLocaleCompareNoCase, FILE_NAME, 752)
    TOV_TEST_CASE_AT("Test Length", TestLength, FILE_NAME, 753)
    TOV_TEST_CASE_AT("Test Lower", TestLower, FILE_NAME, 754)
    TOV_TEST_CASE_AT("Test Upper", TestUpper, FILE_NAME, 755)
    TOV_TEST_CASE_AT("Test Reverse", TestReverse, FILE_NAME, 756)
    TOV_TEST_CASE_AT("Test Find Character", TestFindCharacter, FILE_NAME, 757)
    TOV_TEST_CASE_AT("Test Find Last Character", TestFindLastCharacter, FILE_NAME, 758)
    TOV_TEST_CASE_AT("Test Find String", TestFindString, FILE_NAME, 759)
    TOV_TEST_CASE_AT("Test Find One Of", TestFindOneOf, FILE_NAME, 760)
    TOV_TEST_CASE_AT("Test Find Not One Of", TestFindNotOneOf, FILE_NAME, 761)
    TOV_TEST_CASE_AT("Test Find One Of Reverse", TestFindOneOfReverse, FILE_NAME, 762)
    TOV_TEST_CASE_AT("Test Find NotOne Of Reverse", TestFindNotOneOfReverse, FILE_NAME, 763)
    TOV_TEST_CASE_AT("Test SPrintf", TestSPrintf, FILE_NAME, 764)
    TOV_TEST_CASE_AT("Test SNPrintf", TestSNPrintf, FILE_NAME, 765)
    TOV_TEST_CASE_AT("Test VSPrintf", TestVSPrintf, FILE_NAME, 766)
    TOV_TEST_CASE_AT("Test VSNPrintf", TestVSNPrintf, FILE_NAME, 767)
    TOV_TEST_CASE_AT("Test Copy", TestCopy, FILE_NAME, 768)
    TOV_TEST_CASE_AT("Test NCopy", TestNCopy, FILE_NAME, 769)
    TOV_TEST_CASE_AT("Test Concat", TestConcat, FILE_NAME, 770)
    TOV_TEST_CASE_AT("Test NConcat", TestNConcat, FILE_NAME, 771)
    TOV_TEST_CASE_AT("Test Inc", TestInc, FILE_NAME, 772)
    TOV_TEST_CASE_AT("Test NInc", TestNInc, FILE_NAME, 773)
    TOV_TEST_CASE_AT("Test Dec", TestDec, FILE_NAME, 774)
    TOV_TEST_CASE_AT("Test To Long", TestToLong, FILE_NAME, 775)
    TOV_TEST_CASE_AT("Test To Ulong", TestToUlong, FILE_NAME, 776)
    TOV_TEST_CASE_AT("Test To Double", TestToDouble, FILE_NAME, 777)
TOV_TEST_CASES_END

TOV_TEST_CASES_BEGIN_AT(CTOVPlatformCharApiTest, "TOVPlatform Character API Test (Windows)", FILE_NAME, 1295)
    TOV_TEST_CASE_AT("TODO: ", TestTodo, FILE_NAME, 1304)
TOV_TEST_CASES_END
// clang-format on

namespace Memory = TOVPlatform::TOVMemory;

void CTOVPlatformMemoryApiTest::TestAllocAndFree()
{
    void* pMemory = Memory::Alloc(128);
    TOV_TEST_EQUALS(pMemory == NULL, false);
    pMemory = Memory::Realloc(pMemory, 256);
    TOV_TEST_EQUALS(pMemory == NULL, false);

    // A refused call leaves the block unchanged.
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

    // The functions with plain names take the low 16 bits of a size, and refuse null even with size 0.
    TOV_TEST_THROWS_NOT(TOVMemory_Zero(&dwValue, static_cast<unsigned short>(65536)));
    TOV_TEST_EQUALS(dwValue, 0xFFFFFFFFu);
    TOV_TEST_THROWS(TOVMemory_Zero(NULL, 0));
    TOV_TEST_THROWS(TOVMemory_Set(NULL, 0xFF, 0));
}

void CTOVPlatformMemoryApiTest::TestCompareAndFastCompare()
{
    // Bytes are unsigned, and the first that differs decides, both in a word and in the tail after the words.
    static constexpr tByte aLow[] = {9, 1, 0, 0, 0, 3};
    static constexpr tByte aHigh[] = {9, 0xFF, 0, 0, 0, 2};
    static constexpr tByte aSame[] = {9, 1, 0, 0, 0, 3};
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

    // The function with the plain name returns true if there are no bytes to compare.
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
