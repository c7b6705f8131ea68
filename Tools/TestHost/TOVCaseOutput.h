// Declares CTOVCaseOutput, which shows what the cases write among the lines of a report.
#pragma once

#include <cstdio>
#include <string>

namespace TOVTestHost
{
// It does not own the streams.
class CTOVCaseOutput
{
public:
    CTOVCaseOutput();

    // Writes the text as it is, and flushes the stream.
    void Print(std::FILE* pStream, const std::string& sText);

    // Ends the line in which the last text has stopped, if it has.
    void EndLine();

    bool IsInLine() const;

private:
    std::FILE* m_pInLine; // the stream with an unfinished line, or null
};
} // namespace TOVTestHost
