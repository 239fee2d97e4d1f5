#include "Terminal.h"

#include <QtCore/QtGlobal>

#include <unistd.h>

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

ParentTerminal::ParentTerminal() = default;
ParentTerminal::~ParentTerminal() = default;

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}
