// Declares how the classes of this library are exported.
#pragma once

#include <Debug/TOVCompiler.h>

// Stands in front of a class that applications use. The build of the shared library defines it.
#ifndef TOV_LISTENER_EXPORT
#define TOV_LISTENER_EXPORT
#endif
