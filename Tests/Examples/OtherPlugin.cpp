// A plug-in that is not one of filters.
#include <TOVDesignPatterns/TOVRefCount.h>

extern "C" TOV_PROGRAM_EXPORT ITOVRefCount* CreatePlugin()
{
    return new CTOVRefCount;
}
