// The exit codes of worker threads, which only Windows keeps.
#include "TOVProcess/TOVScriptedThread.h"

#include <windows.h>

namespace
{
DWORD ExitCodeOf(const CScriptedThread& oThread)
{
    EXPECT_TRUE(oThread.Ends());
    DWORD dwCode = 12345;
    EXPECT_TRUE(::GetExitCodeThread(reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(oThread.Handle())), &dwCode));
    return dwCode;
}
} // namespace

TEST(CTOVThreadExitCodeTest, IsZeroWhateverRunGives)
{
    for (const unsigned long ulResult : {0ul, 7ul, 0xFFFFFFFFul})
    {
        CScriptedThread oThread;
        oThread.m_ulRunResult = ulResult;
        ASSERT_TRUE(oThread.StartNormally());
        EXPECT_EQ(0u, ExitCodeOf(oThread)) << ulResult;
    }
}

TEST(CTOVThreadExitCodeTest, IsMinusOneWhenInitInstanceIsFalse)
{
    CScriptedThread oThread;
    oThread.m_fnInit = [] { return false; };

    ASSERT_TRUE(oThread.StartNormally());

    EXPECT_EQ(0xFFFFFFFFu, ExitCodeOf(oThread));
}
