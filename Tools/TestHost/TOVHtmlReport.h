// A run as a page that stands alone: CTOVHtmlReport.
#pragma once

#include <TestHost/TOVFileReport.h>

namespace TOVTestHost
{
class CTOVHtmlReport : public CTOVFileReport
{
public:
    using CTOVFileReport::CTOVFileReport;

protected:
    std::string Compose(const sTestRecord& oRecord) const override;
};
} // namespace TOVTestHost
