#include "Terminal.h"

#include <QtCore/QtGlobal>

#include <unistd.h>

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

unsigned ParentTerminal::attach()
{
    return 0;
}

void ParentTerminal::detach(unsigned /*codePage*/)
{
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}
