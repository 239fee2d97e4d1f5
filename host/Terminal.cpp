#include "Terminal.h"

#include <QtCore/QString>

#include <cstdio>

void printError(const QString &text)
{
    std::fprintf(stderr, "gauge-host: %s\n", qUtf8Printable(text));
}
