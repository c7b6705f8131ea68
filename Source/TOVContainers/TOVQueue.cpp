#include <TOVContainers/TOVQueue.h>

template class TOV_EXPORT CTOVQueue<int>;
