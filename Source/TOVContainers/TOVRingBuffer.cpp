#include <TOVContainers/TOVRingBuffer.h>

template class TOV_EXPORT CTOVRingBuffer<int>;
