#include <TOVDesignPatterns/TOVSmartPointer.h>

// Each of the two templates mentions the other, so that both are declared first.
extern template class TOV_TEMPLATE_DECLARE CTOVRefCountObject<tByte>;
extern template class TOV_TEMPLATE_DECLARE CTOVRefCountObject<char>;
extern template class TOV_TEMPLATE_DECLARE CTOVRefCountObject<wchar_t>;
extern template class TOV_TEMPLATE_DECLARE CTOVSmartPointer<tByte>;
extern template class TOV_TEMPLATE_DECLARE CTOVSmartPointer<char>;
extern template class TOV_TEMPLATE_DECLARE CTOVSmartPointer<wchar_t>;

template class TOV_TEMPLATE_DEFINE CTOVRefCountObject<tByte>;
template class TOV_TEMPLATE_DEFINE CTOVRefCountObject<char>;
template class TOV_TEMPLATE_DEFINE CTOVRefCountObject<wchar_t>;
template class TOV_TEMPLATE_DEFINE CTOVSmartPointer<tByte>;
template class TOV_TEMPLATE_DEFINE CTOVSmartPointer<char>;
template class TOV_TEMPLATE_DEFINE CTOVSmartPointer<wchar_t>;
