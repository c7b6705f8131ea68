#include <Listeners/TOVFileListener.h>

#include <Listeners/TOVListenerOutput.h>
#include <Listeners/TOVListenerSystem.h>

namespace TOVDebug
{
CTOVFileListener::CTOVFileListener(const char* szPath, bool bAppend)
    : m_sPath(szPath != nullptr ? szPath : ""), m_pFile(nullptr)
{
    Open(bAppend);
}

CTOVFileListener::~CTOVFileListener()
{
    Unregister();
    Close();
}

bool CTOVFileListener::IsOpen() const
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    return m_pFile != nullptr;
}

void CTOVFileListener::Flush()
{
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    if (m_pFile != nullptr && std::fflush(m_pFile) != 0)
        NoteLoss();
}

void CTOVFileListener::OnClosedown()
{
    CTOVLineListener::OnClosedown();
    Flush();
}

void CTOVFileListener::OnLine(const sTOVLogLine& oLine)
{
    const std::string sLine = oLine.Print() + '\n';
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    BeforeWrite(sLine.size());
    const bool bWritten = m_pFile != nullptr && TOVListenerOutput::WriteText(m_pFile, sLine);
    if (!bWritten || (TOVListenerOutput::MustFlush(oLine) && std::fflush(m_pFile) != 0))
        NoteLoss();
}

void CTOVFileListener::BeforeWrite(std::size_t /*nBytes*/)
{
}

bool CTOVFileListener::Open(bool bAppend)
{
    Close();
    m_pFile = TOVListenerSystem::OpenFile(m_sPath, bAppend);
    return m_pFile != nullptr;
}

void CTOVFileListener::Close()
{
    if (m_pFile != nullptr && std::fclose(m_pFile) != 0)
        NoteLoss();
    m_pFile = nullptr;
}
} // namespace TOVDebug
