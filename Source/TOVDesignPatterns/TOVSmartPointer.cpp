#include <TOVDesignPatterns/TOVSmartPointer.h>

template class TOV_EXPORT CTOVRefCountObject<tByte>;
template class TOV_EXPORT CTOVRefCountObject<char>;
template class TOV_EXPORT CTOVRefCountObject<wchar_t>;

template class TOV_EXPORT CTOVSmartPointer<tByte>;
template class TOV_EXPORT CTOVSmartPointer<char>;
template class TOV_EXPORT CTOVSmartPointer<wchar_t>;
