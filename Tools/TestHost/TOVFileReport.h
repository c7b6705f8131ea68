// A report that is a file: CTOVFileReport.
#pragma once

#include <TestHost/TOVTestReport.h>

#include <cstdio>

namespace TOVTestHost
{
// The file is opened, and emptied, when the run begins, so that a mistaken name is told before anything is run, and
// written at the end. Both throw std::runtime_error where that fails. Lines end with \n alone on every system.
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
    // All that stands in the file.
    virtual std::string Compose(const sTestRecord& oRecord) const = 0;

private:
    const std::string m_sFile;
    std::FILE* m_pFile;
};
} // namespace TOVTestHost
