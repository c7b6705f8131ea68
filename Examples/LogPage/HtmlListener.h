// Declares CHtmlListener, which shows log lines in a browser.
#pragma once

#include <Listeners/TOVLineListener.h>

#include <fstream>
#include <mutex>
#include <string>

// Writes a page with a row for each line, and above them what one needs to look through many: a box that searches for
// text, and a list that leaves out the less severe ones. Rows appear in the file at once, so that the page can be
// reloaded while the program runs, and is complete after a crash.
class CHtmlListener final : public TOVDebug::CTOVLineListener
{
public:
    ~CHtmlListener() override;

    // Replaces the file.
    explicit CHtmlListener(const std::string& sFile);

    bool IsOpen() const { return m_oPage.is_open(); }

protected:
    void OnLine(const TOVDebug::sTOVLogLine& oLine) override;

private:
    std::mutex m_oMutex;
    std::ofstream m_oPage;
};
