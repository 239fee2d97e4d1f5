#include "Program.h"
#include "options/Options.h"
#include "system/Terminal.h"

#include <QtCore/QHash>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

/// The GUI's application object needs a display, and help must not: this one lives for the
/// arguments alone.
ParsedOptions readArguments(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return parseOptions(QCoreApplication::arguments());
}

} // namespace

int main(int argc, char *argv[])
{
    const ParentTerminal terminal;
    const ParsedOptions parsed = readArguments(argc, argv);
    switch (parsed.outcome) {
    case ParsedOptions::Outcome::Print:
        std::fputs(qUtf8Printable(parsed.text), stdout);
        return 0;
    case ParsedOptions::Outcome::Fail:
        printError(parsed.text + QStringLiteral(" See gauge-host --help."));
        return 2;
    case ParsedOptions::Outcome::Run:
        break;
    }
    if (parsed.options.mode == Options::Mode::Profile ||
        parsed.options.mode == Options::Mode::Record) {
        const QCoreApplication application(argc, argv);
        return runProgram(parsed.options);
    }
    if (!hasDisplay()) {
        printError(QStringLiteral("There is no display. Set DISPLAY, or start it under xvfb-run."));
        return 1;
    }

    // Text with coloured edges suits only the screen that it was smoothed for; frames go anywhere,
    // and upside down.
    if (!qEnvironmentVariableIsSet("QSG_DISTANCEFIELD_ANTIALIASING"))
        qputenv("QSG_DISTANCEFIELD_ANTIALIASING", "gray");

    // Text is drawn from fields of one size. Qt's usual one gives large digits corners, a much
    // larger one frays small words.
    if (!qEnvironmentVariableIsSet("QT_DISTANCEFIELD_DEFAULT_BASEFONTSIZE"))
        qputenv("QT_DISTANCEFIELD_DEFAULT_BASEFONTSIZE", "96");

#ifdef Q_OS_WIN
    // The system's own rasteriser has other ascents and whole widths: text would move in its place.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "windows:fontengine=freetype");
#endif

    // Where a glyph lies in its texture goes by the order of a hash and tints its edges by a shade;
    // a preview is the same bytes each time.
    if (parsed.options.mode == Options::Mode::Preview)
        qSetGlobalQHashSeed(0);

    const QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName(QStringLiteral("GAUGE64"));
    QGuiApplication::setApplicationName(QStringLiteral("gauge-host"));
    QGuiApplication::setDesktopFileName(QStringLiteral("gauge64"));

    // Full hinting, a choice of the system's or of its user's, rounds the widths of letters.
    QFont font = QGuiApplication::font();
    font.setHintingPreference(QFont::PreferVerticalHinting);
    QGuiApplication::setFont(font);
    return runProgram(parsed.options);
}
