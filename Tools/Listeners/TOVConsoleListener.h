// Log lines for the eye: on standard output or standard error.
#pragma once

#include <Listeners/TOVLineListener.h>

#include <cstdio>

namespace TOVDebug
{
enum eTOVConsoleStream
{
    eConsoleError, // standard error
    eConsoleOutput // standard output
};

// Prints each line as sTOVLogLine::Print has it. Below severity 500 a line may wait in the stream's buffer; graver
// ones, failed checks and panics are flushed, together with all before them, and so is the end.
//
// On a terminal a line has the colour of its severity: grey below 200, yellow from 400, red from 500, bright red from
// 600. There is no colour in a file or pipe, where the variable NO_COLOR is set and not empty, or TERM is "dumb".
class CTOVConsoleListener final : public CTOVLineListener
{
public:
    ~CTOVConsoleListener() override;

    // Flushes.
    void OnClosedown() override;

    // The stream, and whether it shows colours, is settled here.
    explicit CTOVConsoleListener(eTOVConsoleStream eStream = eConsoleError);

protected:
    void OnLine(const sTOVLogLine& oLine) override;

private:
    std::FILE* const m_pStream;
    const bool m_bColours;
};
} // namespace TOVDebug
