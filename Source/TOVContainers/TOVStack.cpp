#include <TOVContainers/TOVStack.h>

template class TOV_EXPORT CTOVStack<int>;
