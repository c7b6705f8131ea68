#include <TOVContainers/TOVArray.h>

template class TOV_EXPORT CTOVArray<int>;
