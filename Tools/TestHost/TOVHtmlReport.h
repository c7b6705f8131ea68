// Declares CTOVHtmlReport, which shows a run as a page for a browser.
#pragma once

#include <TestHost/TOVFileReport.h>

namespace TOVTestHost
{
// Writes one page that needs no other files.
class CTOVHtmlReport : public CTOVFileReport
{
public:
    using CTOVFileReport::CTOVFileReport;

protected:
    std::string Compose(const sTestRecord& oRecord) const override;
};
} // namespace TOVTestHost
