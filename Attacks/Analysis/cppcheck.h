// cppcheck reads this before every source. It sees that a failed check does not return only where nothing stands
// between
// [[noreturn]] and the function.
#include <Debug/TOVCompiler.h>
#undef TOV_EXPORT
#define TOV_EXPORT
