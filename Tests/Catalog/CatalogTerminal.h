// The built program tovcatalog on a terminal of its own: a pseudo-terminal, or a console of Windows.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class CCatalogTerminal
{
public:
    // Starts it with the folder as its current one.
    CCatalogTerminal(const std::vector<std::string>& aArguments, const std::string& sFolder);

    // Ends it if it still runs.
    ~CCatalogTerminal();

    CCatalogTerminal(const CCatalogTerminal&) = delete;
    CCatalogTerminal& operator=(const CCatalogTerminal&) = delete;

    // Waits until the lines on the screen are as wanted, under a deadline. False if the program ended without that.
    bool WaitUntil(const std::function<bool(const std::vector<std::string>&)>& fnWanted);

    // Waits until the text stands on the screen.
    bool WaitUntilItShows(const std::string& sText);

    // What a user does who wants the program to stop: Ctrl and C.
    void PressInterruptKeys();

    // Ends it at once, so that it can do nothing about it.
    void Kill();

    // Waits for its end, under a deadline. Its exit code, or -1 if it was ended from outside.
    int WaitForEnd();

    // The lines that stand there now, without empty ones.
    std::vector<std::string> Screen();

    unsigned long ProcessId() const;

private:
    struct sState;
    const std::unique_ptr<sState> m_pState;
};
