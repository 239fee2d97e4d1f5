#include "Terminal.h"

#include <QtCore/QtGlobal>

#include <unistd.h>

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

bool terminalTakesSequences()
{
    return true;
}

ParentTerminal::State ParentTerminal::attach()
{
    return {};
}

void ParentTerminal::detach(const State & /*before*/)
{
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}
