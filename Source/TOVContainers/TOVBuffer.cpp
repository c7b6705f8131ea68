#include <TOVContainers/TOVBuffer.h>

template class TOV_EXPORT CTOVBuffer<tByte>;
template class TOV_EXPORT CTOVBuffer<char>;
template class TOV_EXPORT CTOVBuffer<wchar_t>;
