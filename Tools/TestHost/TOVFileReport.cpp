#include <TestHost/TOVFileReport.h>

#include <stdexcept>

namespace TOVTestHost
{
CTOVFileReport::CTOVFileReport(const std::string& sFile) : m_sFile(sFile), m_pFile(nullptr)
{
}

CTOVFileReport::~CTOVFileReport()
{
    if (m_pFile != nullptr && m_pFile != stdout)
        std::fclose(m_pFile);
}

void CTOVFileReport::OnBegin(const sTestRecord& /*oRecord*/)
{
    m_pFile = m_sFile == "-" ? stdout : std::fopen(m_sFile.c_str(), "wb");
    if (m_pFile == nullptr)
        throw std::runtime_error("cannot write " + m_sFile);
}

void CTOVFileReport::OnEnd(const sTestRecord& oRecord)
{
    if (m_pFile == nullptr)
        return;
    const std::string sText = Compose(oRecord);
    const bool bWritten = std::fwrite(sText.data(), 1, sText.size(), m_pFile) == sText.size();
    const bool bStandard = m_pFile == stdout;
    const bool bClosed = (bStandard ? std::fflush(m_pFile) : std::fclose(m_pFile)) == 0;
    m_pFile = nullptr;
    if (!bWritten || !bClosed)
        throw std::runtime_error("cannot write all of " + (bStandard ? "standard output" : m_sFile));
}
} // namespace TOVTestHost
