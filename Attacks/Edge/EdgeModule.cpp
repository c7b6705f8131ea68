// The other module: it makes, releases, throws and catches by its own code.
#include "EdgeKinds.h"

const sEdgeKind* GetEdgeKinds()
{
    return EDGE_KINDS;
}

const sEdgeException* GetEdgeExceptions()
{
    return EDGE_EXCEPTIONS;
}
