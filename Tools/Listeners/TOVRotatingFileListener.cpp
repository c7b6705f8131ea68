#include <Listeners/TOVRotatingFileListener.h>

#include <Listeners/TOVListenerSystem.h>

namespace TOVDebug
{
namespace
{
bool Move(const std::string& sFrom, const std::string& sTo)
{
    return std::rename(sFrom.c_str(), sTo.c_str()) == 0;
}
} // namespace

CTOVRotatingFileListener::CTOVRotatingFileListener(const char* szPath, unsigned long long ullMaxSize, int nKeptFiles)
    : CTOVFileListener(szPath, true), m_ullMaxSize(ullMaxSize), m_nKeptFiles(nKeptFiles), m_bOpened(IsOpen()),
      m_ullSize(m_bOpened ? TOVListenerSystem::SizeOf(m_pFile) : 0)
{
}

CTOVRotatingFileListener::~CTOVRotatingFileListener()
{
    Unregister();
}

void CTOVRotatingFileListener::BeforeWrite(std::size_t nBytes)
{
    if (!m_bOpened)
        return;
    if (m_pFile == nullptr && Open(true))
        m_ullSize = TOVListenerSystem::SizeOf(m_pFile);
    // Without an open file nothing is rotated: otherwise each lost line would move the kept files.
    if (m_pFile != nullptr && m_ullSize > 0 && m_ullSize + nBytes > m_ullMaxSize)
        Rotate();
    m_ullSize += nBytes;
}

void CTOVRotatingFileListener::Rotate()
{
    // The file is closed first, since some systems cannot move an open file.
    Close();
    const bool bKeeps = m_nKeptFiles > 0;
    if (bKeeps && FreeName(1))
        Move(m_sPath, Name(1));
    Open(bKeeps);
    m_ullSize = 0;
}

// Moves the file with this number to the next number, if it exists; the last one is removed. Returns false if the file
// still exists, or may still exist: moving another file to its name would overwrite it on some systems.
bool CTOVRotatingFileListener::FreeName(int nNumber)
{
    const std::string sName = Name(nNumber);
    const TOVListenerSystem::ePresence eKept = TOVListenerSystem::PresenceOf(sName);
    if (eKept != TOVListenerSystem::ePresent)
        return eKept == TOVListenerSystem::eAbsent;
    if (nNumber >= m_nKeptFiles)
        return std::remove(sName.c_str()) == 0;
    return FreeName(nNumber + 1) && Move(sName, Name(nNumber + 1));
}

std::string CTOVRotatingFileListener::Name(int nNumber) const
{
    return m_sPath + '.' + std::to_string(nNumber);
}
} // namespace TOVDebug
