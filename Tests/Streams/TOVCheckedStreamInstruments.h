// What the tests of the checked stream share.
#pragma once

#include "TOVStream/TOVStreamInstruments.h"

#include <Streams/TOVCheckedStream.h>

typedef CTOVCheckedStream::CheckedStreamException CheckedStreamException;

// The size of the blocks in which the other stream is used.
constexpr int BLOCK = 65536;

// Bytes that differ from their neighbours, and from those a block further.
inline std::string ManyBytes(std::size_t nSize)
{
    std::string sBytes(nSize, '\0');
    for (std::size_t i = 0; i < nSize; ++i)
        sBytes[i] = static_cast<char>(i * 7 + i / 251);
    return sBytes;
}

// What the statement says when it throws; nothing if it does not.
template<class TStatement> std::string TextOfFailure(const TStatement& fnStatement)
{
    try
    {
        fnStatement();
    }
    catch (const CheckedStreamException& oFailure)
    {
        return oFailure.what();
    }
    return "";
}

class CCheckedStreamFixture : public testing::Test
{
protected:
    CCheckedStreamFixture() : m_sFile(m_oFolder.File("checked.dat")) {}

    const char* Containing(const std::string& sContents)
    {
        WriteWholeFile(m_sFile, sContents);
        return m_sFile.c_str();
    }

    const CTempFolder m_oFolder;
    const std::string m_sFile;
};
