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
    if (!standardErrorIsTerminal())
        return;
    if (terminalTakesSequences())
        std::fputs("\r\033[K", stderr);
    else
        std::fprintf(stderr, "\r%79s", "\r"); // A letter in the last column would begin a new line.
}
