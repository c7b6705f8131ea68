// The listener in memory, and what all listeners share: how an event becomes a line.
#include "Listeners/ListenerInstruments.h"

#include <Listeners/TOVMemoryListener.h>

#include <algorithm>
#include <clocale>

using namespace TOVDebug;

namespace
{
// The text of a log line of this format.
template<class... TArguments> std::string Formatted(const char* szFormat, TArguments... oArguments)
{
    CTOVMemoryListener oMemory;
    oMemory.Register();
    EXPECT_NO_CHECK(_Log("Folder/File.cpp", 148, 0x1, eSeverityInfo, szFormat, oArguments...));
    const std::vector<sTOVLogLine> aLines = oMemory.GetLines();
    return aLines.size() == 1 ? aLines[0].sText : "<" + std::to_string(aLines.size()) + " lines>";
}

void ExpectLine(const sTOVLogLine& oLine, eTOVLogKind eKind, unsigned long ulLine, int nSeverity,
                const std::string& sText)
{
    EXPECT_EQ(eKind, oLine.eKind);
    EXPECT_EQ("Folder/File.cpp", oLine.sFile);
    EXPECT_EQ(ulLine, oLine.ulLine);
    EXPECT_EQ(nSeverity, static_cast<int>(oLine.eSeverity));
    EXPECT_EQ(sText, oLine.sText);
}
} // namespace

TEST(CTOVMemoryListenerTest, KeepsFileLineSeverityAndTextOfALogLine)
{
    CTOVMemoryListener oMemory;
    oMemory.Register();

    _Log("Folder/File.cpp", 4294967295ul, 0x1, eSeverityWarning, "%s of %d and %.1f", "text", 7, 8.5);

    ASSERT_EQ(1u, oMemory.GetLines().size());
    ExpectLine(oMemory.GetLines()[0], eLogMessage, 4294967295ul, 400, "text of 7 and 8.5");
}

TEST(CTOVMemoryListenerTest, KeepsFailedChecksAndPanics)
{
    CTOVMemoryListener oMemory;
    oMemory.Register();

    FailCheck("100% > nCount");
    oMemory.OnPanic("Folder/File.cpp", 9, eSeverityTrace, "%d%%", 50);

    ASSERT_EQ(2u, oMemory.GetLines().size());
    ExpectLine(oMemory.GetLines()[0], eLogCheck, 12, 500, "100% > nCount");
    ExpectLine(oMemory.GetLines()[1], eLogPanic, 9, 600, "50%");
}

TEST(CTOVMemoryListenerTest, KeepsTheTime)
{
    CTOVMemoryListener oMemory;
    oMemory.Register();

    const auto oBefore = std::chrono::system_clock::now();
    Log(200, "text");
    const auto oAfter = std::chrono::system_clock::now();

    ASSERT_EQ(1u, oMemory.GetLines().size());
    EXPECT_LE(oBefore, oMemory.GetLines()[0].oTime);
    EXPECT_GE(oAfter, oMemory.GetLines()[0].oTime);
}

TEST(CTOVMemoryListenerTest, KeepsTheLastLines)
{
    for (const auto& [lCapacity, aKept] :
         {std::pair<long, tLines>(3, {"3", "4", "5"}), std::pair<long, tLines>(1, {"5"}),
          std::pair<long, tLines>(5, {"1", "2", "3", "4", "5"}), std::pair<long, tLines>(0, {}),
          std::pair<long, tLines>(-1, {})})
    {
        CTOVMemoryListener oMemory(lCapacity);
        oMemory.Register();
        for (const char* szText : {"1", "2", "3", "4", "5"})
            Log(200, szText);

        EXPECT_EQ(aKept, TextsOf(oMemory.GetLines())) << lCapacity;
        EXPECT_FALSE(oMemory.HasLostLines());
    }
}

TEST(CTOVMemoryListenerTest, IsEmptyAfterAClearAndGoesOn)
{
    CTOVMemoryListener oMemory(2);
    oMemory.Register();
    Log(200, "1");
    Log(200, "2");

    oMemory.Clear();
    EXPECT_TRUE(oMemory.GetLines().empty());
    Log(200, "3");
    EXPECT_EQ(tLines{"3"}, TextsOf(oMemory.GetLines()));
}

TEST(CTOVMemoryListenerTest, KeepsAllLinesOfAllThreads)
{
    CTOVMemoryListener oMemory(800);
    oMemory.Register();

    LogFromThreads(8, 100, 200);

    tLines aTexts = TextsOf(oMemory.GetLines());
    std::sort(aTexts.begin(), aTexts.end());
    EXPECT_EQ(TextsOfThreads(8, 100), aTexts);
}

TEST(CTOVLineListenerTest, FormatsTextsOfAnyLength)
{
    for (const std::size_t nLength : {0, 1, 1022, 1023, 1024, 1025, 2047, 2048, 2049, 5000000})
    {
        const std::string sText(nLength, 'x');
        EXPECT_TRUE(sText == Formatted("%s", sText.c_str())) << nLength;
    }
}

TEST(CTOVLineListenerTest, FormatsByTheRulesOfTheLibrary)
{
    EXPECT_EQ("9007199254740993", Formatted("%I64d", 9007199254740993LL));
    EXPECT_EQ("wide", Formatted("%S", Wide("wide").data()));
    EXPECT_EQ("100% %s %n", Formatted("%s", "100% %s %n"));
    EXPECT_EQ("50%", Formatted("%d%%", 50));
    EXPECT_EQ(std::string("a\0b", 3), Formatted("a%cb", 0));
    EXPECT_EQ("(null)", Formatted("%s", static_cast<const char*>(nullptr)));
}

TEST(CTOVLineListenerTest, ShowsTheFormatOfATextWithoutANarrowForm)
{
    const wchar_t aText[] = {'a', 0x20ac, 0};
    ASSERT_STREQ("C", std::setlocale(LC_CTYPE, nullptr));

    EXPECT_EQ("price: %S", Formatted("price: %S", aText));
    EXPECT_EQ("%s: %S", Formatted("%s: %S", std::string(3000, 'x').c_str(), aText));
}

TEST(CTOVLineListenerTest, ShowsNullTextsAsSuch)
{
    CTOVMemoryListener oMemory;

    EXPECT_NO_CHECK(LogTwiceFromOneList(oMemory, nullptr));
    EXPECT_NO_CHECK(oMemory.OnAssert(nullptr, 7, nullptr));

    EXPECT_EQ((tLines{"(null)", "(null)", "(null)"}), TextsOf(oMemory.GetLines()));
    EXPECT_EQ("(null)", oMemory.GetLines()[2].sFile);
    EXPECT_FALSE(oMemory.HasLostLines());
}

TEST(CTOVLineListenerTest, LeavesTheArgumentListToItsCaller)
{
    CTOVMemoryListener oMemory;

    LogTwiceFromOneList(oMemory, "%s %d %.1f %s %I64d", "one", 2, 3.5, "four", 5LL);

    EXPECT_EQ((tLines{"one 2 3.5 four 5", "one 2 3.5 four 5"}), TextsOf(oMemory.GetLines()));
}

namespace
{
class CThrowingListener : public CTOVLineListener
{
public:
    ~CThrowingListener() override { Unregister(); }

protected:
    void OnLine(const sTOVLogLine&) override { throw 7; }
};
} // namespace

TEST(CTOVLineListenerTest, CountsAnExceptionAsALostLine)
{
    CThrowingListener oLog;
    CThrowingListener oCheck;

    EXPECT_NO_THROW(oLog.OnLog("File", 1, eSeverityInfo, "text"));
    EXPECT_NO_THROW(oCheck.OnAssert("File", 1, "text"));

    EXPECT_TRUE(oLog.HasLostLines());
    EXPECT_TRUE(oCheck.HasLostLines());
}
