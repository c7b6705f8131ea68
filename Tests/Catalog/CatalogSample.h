// A catalogue of an older format, and the files that it lists.
#pragma once

#include "Catalog/CatalogInstruments.h"

class CatalogSampleTest : public CatalogTest
{
protected:
    // szSample is the name of a file in Data.
    explicit CatalogSampleTest(const char* szSample) : m_sSample(szSample)
    {
        std::string sAllBytes;
        for (int nByte = 0; nByte < 256; ++nByte)
            sAllBytes += static_cast<char>(nByte);
        Write("tree/all-bytes", sAllBytes);
        Write("tree/empty", "");
        Write("tree/sub/hello.txt", "hello\n");
        Write("c.cat", Sample());
    }

    std::string Sample() const { return ReadWholeFile(PathBesideThisProgram("CatalogSamples/" + m_sSample)); }

    static std::vector<sCatalogFile> Files()
    {
        return {{0, "all-bytes", 256, 0x29058c73}, {0, "empty", 0, 0}, {0, "sub/hello.txt", 6, 0x363a3020}};
    }

private:
    const std::string m_sSample;
};
