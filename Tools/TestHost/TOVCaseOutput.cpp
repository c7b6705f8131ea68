#include <TestHost/TOVCaseOutput.h>

namespace TOVTestHost
{
CTOVCaseOutput::CTOVCaseOutput() : m_pInLine(nullptr)
{
}

void CTOVCaseOutput::Print(std::FILE* pStream, const std::string& sText)
{
    if (sText.empty())
        return;
    std::fwrite(sText.data(), 1, sText.size(), pStream);
    std::fflush(pStream);
    m_pInLine = sText.back() != '\n' ? pStream : nullptr;
}

void CTOVCaseOutput::EndLine()
{
    if (m_pInLine != nullptr)
        Print(m_pInLine, "\n");
}

bool CTOVCaseOutput::IsInLine() const
{
    return m_pInLine != nullptr;
}
} // namespace TOVTestHost
