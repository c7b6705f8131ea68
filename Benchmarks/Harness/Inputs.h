// Declares the inputs, which are the same for the library and for each peer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace Inputs
{
constexpr char TEXT3[] = "abc";
constexpr char TEXT24[] = "The quick brown fox runs";
constexpr char OTHER24[] = "and never tires, they sa";
constexpr char UPPER24[] = "THE QUICK BROWN FOX RUNS";
constexpr char NUMBER7[] = "1234567";
constexpr char NUMBER_DOUBLE[] = "3.14159265";
constexpr double NUMBER_FIXED = 1234.5678;
constexpr char PREFIX8[] = "The quic";
constexpr char SUFFIX8[] = "runs The";

// What is found, replaced and split.
constexpr char NEEDLE[] = "needle";
constexpr char NEEDLE_CHARACTER = '#';
constexpr char OLD_WORD[] = "grey";
constexpr char SAME_WORD[] = "blue";
constexpr char LONG_WORD[] = "orange";
constexpr char SEPARATOR = ',';

// A path of six components.
constexpr char PATH6[] = "/home/user/projects/library/source/file.txt";
constexpr char FOLDER[] = "/home/user/projects/library";
constexpr char FILE_NAME[] = "file.txt";

// The elements of the large containers, and of the files.
constexpr int MILLION = 1000000;
constexpr int HUNDRED_THOUSAND = 100000;
constexpr int BITS = 1 << 20;

// The classes of the registry.
constexpr int NUM_CLASSES = 200;

// Numbers below a limit, the same ones on every system.
class CRandom
{
public:
    explicit CRandom(unsigned int uSeed) : m_oEngine(uSeed) {}
    unsigned int Below(unsigned int uLimit) { return static_cast<unsigned int>(m_oEngine() % uLimit); }

private:
    std::mt19937 m_oEngine;
};

// Words of lower-case letters, without the needle.
inline std::string Words(std::size_t nLength)
{
    CRandom oRandom(1);
    std::string sText;
    while (sText.size() < nLength)
    {
        for (unsigned int nLetters = 3 + oRandom.Below(6); nLetters > 0; --nLetters)
            sText += static_cast<char>('a' + oRandom.Below(26));
        sText += ' ';
    }
    sText.resize(nLength);
    return sText;
}

// The text of 24 characters, repeated.
inline std::string Text(std::size_t nLength)
{
    std::string sText;
    while (sText.size() < nLength)
        sText.append(TEXT24).append(" ");
    sText.resize(nLength);
    return sText;
}

inline std::string Text200()
{
    return Text(200);
}

// Has the prefix and the suffix of eight characters.
inline std::string TextWithEnds()
{
    return Text(200 - 8) + SUFFIX8;
}

// The texts hold the needle, or its character, at their end only.
inline std::string TextWithNeedle(std::size_t nLength)
{
    return Words(nLength - 6) + NEEDLE;
}
inline std::string TextWithCharacter(std::size_t nLength)
{
    return Words(nLength - 1) + NEEDLE_CHARACTER;
}

// Every 64th character begins a word that is to be replaced.
inline std::string TextToReplace(std::size_t nLength)
{
    std::string sText = Words(nLength);
    for (std::size_t nPosition = 16; nPosition + 64 <= nLength; nPosition += 64)
        sText.replace(nPosition, 4, OLD_WORD);
    return sText;
}

// Fields of seven characters, with a separator after each but the last.
inline std::string TextToSplit(std::size_t nLength)
{
    std::string sText = Words(nLength - 1);
    for (std::size_t nPosition = 0; nPosition < sText.size(); ++nPosition)
        sText[nPosition] = nPosition % 8 == 7 ? SEPARATOR : (sText[nPosition] == ' ' ? '_' : sText[nPosition]);
    return sText;
}

// Words of which every other one has upper-case letters.
inline std::string MixedText(std::size_t nLength)
{
    std::string sText = Words(nLength);
    for (std::size_t nPosition = 0; nPosition < sText.size(); ++nPosition)
    {
        if (nPosition / 8 % 2 == 0 && sText[nPosition] != ' ')
            sText[nPosition] = static_cast<char>(sText[nPosition] - 'a' + 'A');
    }
    return sText;
}

// Returns the text in units of another type, with a terminator.
template<class TUnit> std::vector<TUnit> Units(const std::string& sText)
{
    std::vector<TUnit> aUnits(sText.begin(), sText.end());
    aUnits.push_back(TUnit());
    return aUnits;
}

inline std::vector<int> RandomNumbers(int nCount)
{
    CRandom oRandom(2);
    std::vector<int> aNumbers(static_cast<std::size_t>(nCount));
    for (int& nNumber : aNumbers)
        nNumber = static_cast<int>(oRandom.Below(0x80000000U));
    return aNumbers;
}

// Indexes below nCount, in random order with repetitions.
inline std::vector<int> RandomIndexes(int nCount)
{
    std::vector<int> aIndexes = RandomNumbers(nCount);
    for (int& nIndex : aIndexes)
        nIndex %= nCount;
    return aIndexes;
}

inline std::vector<unsigned char> RandomBytes(std::size_t nCount)
{
    CRandom oRandom(3);
    std::vector<unsigned char> aBytes(nCount);
    for (std::size_t nByte = 0; nByte < nCount; ++nByte)
    {
        // The bytes repeat after a while, at a length that divides nothing: no checksum is quicker for it.
        aBytes[nByte] = nByte < 65521 ? static_cast<unsigned char>(oRandom.Below(256)) : aBytes[nByte - 65521];
    }
    return aBytes;
}

inline std::vector<std::string> ClassNames(int nCount)
{
    std::vector<std::string> aNames;
    for (int nClass = 0; nClass < nCount; ++nClass)
        aNames.push_back("CBenchmarkedClass" + std::to_string(nClass * 7919 % 100003));
    return aNames;
}
} // namespace Inputs
