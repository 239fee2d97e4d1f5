#include "Terminal.h"

#include <cstdio>
#include <io.h>

bool standardErrorIsTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

bool hasDisplay()
{
    return true;
}
