// Declares CTOVConsoleListener, which prints log lines on standard output or standard error.
#pragma once

#include <Listeners/TOVLineListener.h>

#include <cstdio>

namespace TOVDebug
{
// Says where CTOVConsoleListener prints.
enum eTOVConsoleStream
{
    eConsoleError,  // standard error
    eConsoleOutput, // standard output
    eConsoleSplit   // standard output below severity 400, standard error from there on
};

// Prints each line in the form of sTOVLogLine::Print. A line below severity 500 may stay in the stream's buffer. More
// severe lines, failed checks and panics are flushed, together with all lines before them, and so is the stream at the
// end of the process.
//
// On a terminal a line has the colour of its severity: grey below 200, yellow from 400, red from 500, bright red from
// 600. There are no colours in a file or pipe, if the variable NO_COLOR is set and not empty, or if TERM is "dumb".
class TOV_LISTENER_EXPORT CTOVConsoleListener final : public CTOVLineListener
{
public:
    ~CTOVConsoleListener() override;

    // Flushes the stream.
    void OnClosedown() override;

    // Chooses the stream, and whether it shows colours, once for all lines.
    explicit CTOVConsoleListener(eTOVConsoleStream eStream = eConsoleError);

protected:
    void OnLine(const sTOVLogLine& oLine) override;

private:
    struct sStream
    {
        explicit sStream(std::FILE* pStream);

        std::FILE* const pFile;
        const bool bColours;
    };

    const sStream m_oQuiet; // for lines below severity 400
    const sStream m_oLoud;
};
} // namespace TOVDebug
