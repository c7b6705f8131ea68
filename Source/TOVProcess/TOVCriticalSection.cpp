#include <TOVProcess/TOVCriticalSection.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/TOVSynchronization.h>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;

CTOVCriticalSection::~CTOVCriticalSection()
{
    TOV_TELL_TEXT(m_hCriticalSection != 0, "m_hCriticalSection != NULL");

    CriticalSection::Destroy(m_hCriticalSection);
}

CTOVCriticalSection::CTOVCriticalSection(unsigned long ulSpinCount)
    : m_hCriticalSection(CriticalSection::Create(ulSpinCount))
{
    TOV_ASSERT_TEXT(m_hCriticalSection != 0, "m_hCriticalSection != NULL");
}

CTOVCriticalSection::CTOVCriticalSection(const CTOVCriticalSection& oOther) = default;

CTOVCriticalSection& CTOVCriticalSection::operator=(const CTOVCriticalSection& oOther) = default;

void CTOVCriticalSection::Enter() const
{
    TOV_ASSERT_TEXT(m_hCriticalSection != 0, "m_hCriticalSection != NULL");

    CriticalSection::Enter(m_hCriticalSection);
}

void CTOVCriticalSection::Leave() const
{
    TOV_ASSERT_TEXT(m_hCriticalSection != 0, "m_hCriticalSection != NULL");

    CriticalSection::Leave(m_hCriticalSection);
}
