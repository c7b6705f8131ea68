// A library that ends the process when it is loaded.
#include <cstdlib>

namespace
{
struct sEnd
{
    sEnd() { std::_Exit(7); }
} s_oEnd;
} // namespace
