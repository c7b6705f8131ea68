// The mode text that the flags of CTOVFile::Open turn into, as the runtime gets it.
#include "Support/TOVTestSupport.h"
#include "Support/Windows/TOVImportHook.h"

#include <File/TOVFile.h>

#include <cstdio>

namespace
{
std::string s_sMode;

FILE* RememberMode(const char*, const char* szMode)
{
    s_sMode = szMode;
    return nullptr;
}

struct sMode
{
    int nFlags;
    const char* szMode;
};

// Not among them: 'c' and 'n' for a file that only reads, which the platform layer leaves out.
const sMode MODES[] = {
    {0x01, "r"},    {0x11, "rb"},   {0x09, "rt"},   {0x19, "rt"},   // read
    {0x02, "w"},    {0x12, "wb"},   {0x0A, "wt"},   {0x1A, "wt"},   // write
    {0x03, "r+"},   {0x13, "r+b"},  {0x0B, "r+t"},  {0x1B, "r+t"},  // both
    {0x04, "a"},    {0x14, "ab"},   {0x0C, "at"},   {0x1C, "at"},   // append
    {0x06, "a"},    {0x16, "ab"},   {0x05, "a+"},   {0x15, "a+b"},  //
    {0x07, "a+"},   {0x17, "a+b"},  {0x0F, "a+t"},  {0x1F, "a+t"},  //
    {0x22, "wc"},   {0x32, "wbc"},  {0x2A, "wtc"},  {0x3A, "wtc"},  // commit
    {0x62, "wc"},   {0x72, "wbc"},  {0x73, "r+bc"}, {0x7F, "a+tc"}, // over no commit
    {0x42, "wn"},   {0x52, "wbn"},  {0x4A, "wtn"},  {0x5A, "wtn"},  // no commit
    {0x53, "r+bn"}, {0x55, "a+bn"}, {0x44, "an"},   {0x23, "r+c"},
};
} // namespace

TEST(CTOVFileModeTest, IsBuiltOfTheFlags)
{
    CImportHook oHook("fopen", &RememberMode);
    for (const sMode& oMode : MODES)
    {
        CTOVFile oFile;
        EXPECT_THROW(oFile.Open("name", oMode.nFlags), CTOVFile::FileException);
        EXPECT_EQ(oMode.szMode, s_sMode) << oMode.nFlags;
    }
}
