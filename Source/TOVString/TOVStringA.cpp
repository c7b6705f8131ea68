#include <TOVString/TOVStringA.h>

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/TOVMemory.h>
#include <TOVPlatform/TOVPlainFormat.h>
#include <TOVPlatform/TOVShortNumber.h>
#include <TOVPlatform/TOVText.h>
#include <TOVPlatform/Vector/TOVVectorShortText.h>
#include <TOVPlatform/Vector/TOVVectorText.h>
#include <TOVPlatform/Vector/TOVVectorWide.h>
#include <TOVString/TOVResourceLoader.h>
#include <TOVString/TOVStringId.h>
#include <TOVString/TOVStringW.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>

#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE "TOVString/TOVStringA"

typedef CTOVStringA tString;
typedef CTOVStringW tOtherString;
typedef char tUnit;

namespace
{
// The runtime's own function, without a call in between.
int LengthOf(const char* szText)
{
    return static_cast<int>(std::strlen(szText));
}
} // namespace

#include <TOVString/TOVStringBody.inl>
#include <TOVString/TOVStringEditing.inl>
#include <TOVString/TOVStringSearch.inl>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVStringA>;
template class TOV_TEMPLATE_DEFINE CTOVArray<CTOVStringA>;

// The header has these bodies as well.

CTOVStringA::~CTOVStringA()
{
}

CTOVStringA::CTOVStringA() : m_nStringLength(0)
{
}

CTOVStringA::CTOVStringA(const char* szString) : CTOVStringA(NewText(szString))
{
    if (m_oData.m_lSize == 0)
        *this = szString; // which may be a string id
}

CTOVStringA::CTOVStringA(const CTOVStringW& oOther)
{
    Init();
    Convert(*this, oOther);
}

CTOVStringA::CTOVStringA(char cChar, int nCount)
{
    Init();
    Fill(*this, cChar, nCount);
}

const CTOVStringA& CTOVStringA::operator=(const char* szString)
{
    if (szString == nullptr || IsText(szString))
    {
        AssignText(*this, szString);
        return *this;
    }

    const int nStringId = static_cast<int>(reinterpret_cast<std::uintptr_t>(szString));
    Empty();
    if (LoadStringResource(nStringId))
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "Implicit load of string with id '%d'.", nStringId);
    }
    return *this;
}

bool CTOVStringA::LoadStringResource(long lStringId)
{
    return ITOVResourceLoader::Instance().LoadString(lStringId, *this);
}
