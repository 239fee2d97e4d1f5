#include "Terminal.h"

#include <QtCore/QString>

#include <cstdio>

void printLine(const QString &text)
{
    clearLine();
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

void printError(const QString &text)
{
    printLine(QStringLiteral("gauge-host: ") + text);
}

void clearLine()
{
    if (standardErrorIsTerminal())
        std::fputs("\r\033[K", stderr);
}
