#include <TOVString/TOVStringW.h>

#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/TOVMemory.h>
#include <TOVPlatform/TOVPlainFormat.h>
#include <TOVPlatform/TOVShortNumber.h>
#include <TOVPlatform/TOVText.h>
#include <TOVPlatform/Vector/TOVVectorText.h>
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

CTOVStringW::CTOVStringW()
{
    Init();
}

CTOVStringW::CTOVStringW(const wchar_t* szString) : CTOVStringW(sText{szString, GetSafeStringLength(szString)})
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

CTOVStringW::CTOVStringW(const sText& oText)
    : m_oData(oText.nLength > 0
                  ? tBuffer(tBuffer::sNewBlock{tBuffer::NewText(oText.szText, oText.nLength), oText.nLength + 1L})
                  : tBuffer()),
      m_nStringLength(oText.nLength)
{
}

CTOVStringW::~CTOVStringW() = default;

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
