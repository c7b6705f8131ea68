#include <TOVDesignPatterns/TOVMemento.h>

ITOVMemento::~ITOVMemento()
{
}

ITOVMemento::ITOVMemento() = default;

ITOVMemento::ITOVMemento(const ITOVMemento& oOther) = default;

ITOVMemento& ITOVMemento::operator=(const ITOVMemento& oOther) = default;

ITOVMementoCreator::ITOVMementoCreator() = default;

ITOVMementoCreator::ITOVMementoCreator(const ITOVMementoCreator& oOther) = default;

ITOVMementoCreator& ITOVMementoCreator::operator=(const ITOVMementoCreator& oOther) = default;
