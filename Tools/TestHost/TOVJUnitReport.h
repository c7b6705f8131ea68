// A run as a file in the widely used XML format of JUnit: CTOVJUnitReport.
#pragma once

#include <TestHost/TOVFileReport.h>

namespace TOVTestHost
{
class CTOVJUnitReport : public CTOVFileReport
{
public:
    using CTOVFileReport::CTOVFileReport;

protected:
    std::string Compose(const sTestRecord& oRecord) const override;
};
} // namespace TOVTestHost
