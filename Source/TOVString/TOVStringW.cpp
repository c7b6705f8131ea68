#include <TOVString/TOVStringW.h>

#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/TOVMemory.h>
#include <TOVPlatform/TOVPlainFormat.h>
#include <TOVPlatform/TOVShortNumber.h>
#include <TOVPlatform/TOVText.h>
#include <TOVPlatform/Vector/TOVVectorShortText.h>
#include <TOVPlatform/Vector/TOVVectorText.h>
#include <TOVPlatform/Vector/TOVVectorWide.h>
#include <TOVString/TOVStringA.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>

#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE "TOVString/TOVStringW"

typedef CTOVStringW tString;
typedef CTOVStringA tOtherString;
typedef wchar_t tUnit;

namespace
{
bool IsText(const wchar_t* szText)
{
    return szText != nullptr;
}

int LengthOf(const wchar_t* szText)
{
    return TOVText::Length(szText);
}
} // namespace

#include <TOVString/TOVStringBody.inl>
#include <TOVString/TOVStringEditing.inl>
#include <TOVString/TOVStringSearch.inl>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVStringW>;
template class TOV_TEMPLATE_DEFINE CTOVArray<CTOVStringW>;

// The header has these bodies as well.

CTOVStringW::~CTOVStringW()
{
}

CTOVStringW::CTOVStringW() : m_nStringLength(0)
{
}

CTOVStringW::CTOVStringW(const wchar_t* szString) : CTOVStringW(NewText(szString))
{
}

CTOVStringW::CTOVStringW(const CTOVStringA& oOther)
{
    Init();
    Convert(*this, oOther);
}

CTOVStringW::CTOVStringW(wchar_t cChar, int nCount)
{
    Init();
    Fill(*this, cChar, nCount);
}

// Settled: wide text has no string ids.
const CTOVStringW& CTOVStringW::operator=(const wchar_t* szString)
{
    AssignText(*this, szString);
    return *this;
}

// Settled: wide text never comes from the resource loader.
bool CTOVStringW::LoadStringResource(long)
{
    return false;
}
