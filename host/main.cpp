#include "Program.h"
#include "options/Options.h"
#include "system/Terminal.h"

#include <QtCore/QHash>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

/// Help must work without a display, which a QGuiApplication needs: this application object lives
/// only while the arguments are read.
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
        printError(QStringLiteral("No display. Set DISPLAY, or start gauge-host with xvfb-run."));
        return 1;
    }

    // Subpixel text suits only the screen it was rendered for; frames go anywhere, and upside down.
    if (!qEnvironmentVariableIsSet("QSG_DISTANCEFIELD_ANTIALIASING"))
        qputenv("QSG_DISTANCEFIELD_ANTIALIASING", "gray");

    // Qt renders glyphs from distance fields of one size. Its default gives large digits corners; a
    // much larger one frays small text.
    if (!qEnvironmentVariableIsSet("QT_DISTANCEFIELD_DEFAULT_BASEFONTSIZE"))
        qputenv("QT_DISTANCEFIELD_DEFAULT_BASEFONTSIZE", "96");

#ifdef Q_OS_WIN
    // The system's rasteriser has other ascents and rounds widths, which would move text.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "windows:fontengine=freetype");
#endif

    // A preview must be the same bytes each time, but the order of a hash decides where a glyph
    // lies in its texture, and that changes its edges by a shade.
    if (parsed.options.mode == Options::Mode::Preview)
        qSetGlobalQHashSeed(0);

    const QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName(QStringLiteral("GAUGE64"));
    QGuiApplication::setApplicationName(QStringLiteral("gauge-host"));
    QGuiApplication::setDesktopFileName(QStringLiteral("gauge64"));

    // Full hinting, which the system or its user may have chosen, rounds the widths of glyphs.
    QFont font = QGuiApplication::font();
    font.setHintingPreference(QFont::PreferVerticalHinting);
    QGuiApplication::setFont(font);
    return runProgram(parsed.options);
}
