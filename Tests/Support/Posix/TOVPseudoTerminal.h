// A pseudo-terminal, seen from the side of the user.
#pragma once

#include "Support/Posix/TOVStartedProgram.h"

class CPseudoTerminal
{
public:
    // Throws std::runtime_error if the system has none to give.
    explicit CPseudoTerminal(int nColumns = 80);

    // The name under which a program opens its side.
    const std::string& Name() const { return m_sName; }

    // What the program writes can be read from this descriptor. Its end comes when no process has the other side open.
    int Descriptor() const { return m_oUser.Get(); }

    // Presses these keys. Returns false if the terminal does not take them.
    bool Press(const std::string& sKeys);

private:
    CDescriptor m_oUser;
    std::string m_sName;
};
