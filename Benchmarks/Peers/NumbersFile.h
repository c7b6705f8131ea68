// Declares the file of numbers that the rows of files read.
#pragma once

#include <BenchFile.h>
#include <Inputs.h>

#include <cstdio>

// A file of numbers in the machine's own form, which is there as long as the object.
class CNumbersFile
{
public:
    CNumbersFile(const char* szName, int nCount) : m_sName(BenchFile(szName))
    {
        const std::vector<int> aNumbers = Inputs::RandomNumbers(nCount);
        std::FILE* const pFile = std::fopen(GetName(), "wb");
        if (pFile != nullptr)
        {
            std::fwrite(aNumbers.data(), sizeof(int), aNumbers.size(), pFile);
            std::fclose(pFile);
        }
    }
    ~CNumbersFile() { std::remove(GetName()); }
    CNumbersFile(const CNumbersFile&) = delete;
    CNumbersFile& operator=(const CNumbersFile&) = delete;

    const char* GetName() const { return m_sName.c_str(); }

private:
    std::string m_sName;
};
