// A plug-in that writes a text in capital letters.
#include "Filter.h"

class CUpperFilter final : public IFilter
{
public:
    CTOVStringA Apply(const CTOVStringA& oText) const override
    {
        CTOVStringA oResult(~oText); // characters of its own, since a copy would share them
        oResult.MakeUpper();
        return oResult;
    }

    const CTOVClass& GetRuntimeClass() const override
    {
        static const CTOVClass s_oClass("CUpperFilter", &GetClass());
        return s_oClass;
    }
};

ITOVRefCount* CreatePlugin()
{
    return new CUpperFilter;
}
