// A plug-in that writes a text backwards.
#include "Filter.h"

class CReverseFilter final : public IFilter
{
public:
    CTOVStringA Apply(const CTOVStringA& oText) const override
    {
        CTOVStringA oResult(~oText); // characters of its own, since a copy would share them
        oResult.Reverse();
        return oResult;
    }

    const CTOVClass& GetRuntimeClass() const override
    {
        static const CTOVClass s_oClass("CReverseFilter", &GetClass());
        return s_oClass;
    }
};

ITOVRefCount* CreatePlugin()
{
    return new CReverseFilter;
}
