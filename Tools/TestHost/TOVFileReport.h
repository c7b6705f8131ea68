// Declares CTOVFileReport, the base of the reports that are files.
#pragma once

#include <TestHost/TOVTestReport.h>

#include <cstdio>

namespace TOVTestHost
{
// Opens and empties the file when the run begins, so that a wrong name is reported before anything is run, and writes
// it at the end. If the file cannot be opened or written, std::runtime_error is thrown. Lines end with \n on every
// system. The file "-" is standard output.
class CTOVFileReport : public ITOVTestReport
{
public:
    ~CTOVFileReport() override;

    void OnBegin(const sTestRecord& oRecord) override;
    void OnEnd(const sTestRecord& oRecord) override;

    explicit CTOVFileReport(const std::string& sFile);

    CTOVFileReport(const CTOVFileReport&) = delete;
    CTOVFileReport& operator=(const CTOVFileReport&) = delete;

protected:
    // Returns the contents of the file.
    virtual std::string Compose(const sTestRecord& oRecord) const = 0;

private:
    const std::string m_sFile;
    std::FILE* m_pFile;
};
} // namespace TOVTestHost
