#include "Terminal.h"

#include <QtCore/QtGlobal>

#include <unistd.h>

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

bool hasDisplay()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}
