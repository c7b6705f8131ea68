#include <TOVString/TOVStringA.h>

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVMemory.h>
#include <TOVPlatform/TOVText.h>
#include <TOVPlatform/Vector/TOVVectorText.h>
#include <TOVString/TOVResourceLoader.h>
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

#include <TOVString/TOVStringBody.inl>
#include <TOVString/TOVStringEditing.inl>
#include <TOVString/TOVStringSearch.inl>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVStringA>;
template class TOV_TEMPLATE_DEFINE CTOVArray<CTOVStringA>;

namespace
{
// A pointer below this value does not point to text: it carries the id of a text that the resource loader knows.
constexpr std::uintptr_t STRING_ID_END = 0x10000;

bool IsStringId(const char* szString)
{
    return szString != nullptr && reinterpret_cast<std::uintptr_t>(szString) < STRING_ID_END;
}
} // namespace

CTOVStringA::CTOVStringA()
{
    Init();
}

CTOVStringA::CTOVStringA(const char* szString) : m_oData(szString, IsStringId(szString) ? 0 : GetCapacityFor(szString))
{
    m_nStringLength = m_oData.GetSize() > 0 ? static_cast<int>(m_oData.GetSize() - 1) : 0;
    if (IsStringId(szString))
        *this = szString;
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

CTOVStringA::~CTOVStringA() = default;

const CTOVStringA& CTOVStringA::operator=(const char* szString)
{
    if (!IsStringId(szString))
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
