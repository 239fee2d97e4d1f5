#include "Terminal.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QString>

#include <algorithm>
#include <cstdio>

namespace {

bool isHarmless(QChar character)
{
    // Some scripts and emoji need these two.
    constexpr ushort NonJoiner = 0x200c;
    constexpr ushort Joiner = 0x200d;
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    case QChar::Other_Format:
        return character == QChar(NonJoiner) || character == QChar(Joiner);
    default:
        return true;
    }
}

QByteArray harmless(QString text, const QString &allowed = {})
{
    std::replace_if(
        text.begin(), text.end(), [&](QChar c) { return !isHarmless(c) && !allowed.contains(c); },
        QLatin1Char('?'));
    return text.toUtf8();
}

} // namespace

void printOutput(const QString &line)
{
    std::printf("%s\n", harmless(line).constData());
}

void printOutput(const QJsonDocument &json)
{
    QString text;
    const QString written = QString::fromUtf8(json.toJson());
    for (const QChar character : written) {
        if (isHarmless(character) || character == QLatin1Char('\n'))
            text += character;
        else
            text += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
    std::fputs(text.toUtf8().constData(), stdout);
}

void printLine(const QString &text)
{
    clearLine();
    std::fprintf(stderr, "%s\n", harmless(text, QStringLiteral("\n\t")).constData());
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
        std::fprintf(stderr, "\r%79s", "\r"); // The 80th character would start a new line.
}
