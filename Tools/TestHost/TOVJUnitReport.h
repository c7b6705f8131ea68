// Declares CTOVJUnitReport, which writes a run in an XML format for other programs.
#pragma once

#include <TestHost/TOVFileReport.h>

namespace TOVTestHost
{
// Writes a file in the widely used format of JUnit.
class CTOVJUnitReport : public CTOVFileReport
{
public:
    using CTOVFileReport::CTOVFileReport;

protected:
    std::string Compose(const sTestRecord& oRecord) const override;
};
} // namespace TOVTestHost
