#include "CodeEditor.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtGui/QDesktopServices>

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// VISUAL often names an editor that needs a terminal; started from a window, nobody would see it.
bool needsTerminal(const QString &program)
{
    constexpr std::array names{"vi",    "vim",    "nvim", "nano", "pico",  "ed",
                               "micro", "mcedit", "joe",  "ne",   "helix", "hx"};
    const QString name = QFileInfo(program).completeBaseName();
    return std::any_of(names.begin(), names.end(), [&name](const char *terminalEditor) {
        return name == QLatin1String(terminalEditor);
    });
}

bool start(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    // The editor must neither write to our output nor read our input.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

QString visualStudioCode()
{
    QString found = QStandardPaths::findExecutable(QStringLiteral("code"));
    // On Windows this is a script, which would pass file names through a shell; the program
    // lies one folder up.
    const QFileInfo script(found);
    if (script.suffix() == QLatin1String("cmd")) {
        const QFileInfo program(script.absolutePath() + QStringLiteral("/../Code.exe"));
        return program.isFile() ? program.canonicalFilePath() : QString();
    }
    return found;
}

/// Whether the editor that VISUAL names has started.
bool startVisual(const QString &file)
{
    QStringList words = QProcess::splitCommand(qEnvironmentVariable("VISUAL"));
    if (words.isEmpty() || needsTerminal(words.constFirst()))
        return false;
    const QString program = words.takeFirst();
    return start(program, words + QStringList(file));
}

} // namespace

CodeEditor::CodeEditor()
    : CodeEditor(&QDesktopServices::openUrl)
{
}

CodeEditor::CodeEditor(Desktop desktop)
    : desktop(std::move(desktop))
{
}

void CodeEditor::open(const QVariant &argument)
{
    const QVariantMap map = argument.toMap();
    const QString path = map.value(QStringLiteral("path")).toString();
    const QFileInfo info(path);
    if (path.isEmpty() || !info.exists()) {
        Q_EMIT failed(tr("The file '%1' does not exist.").arg(QDir::toNativeSeparators(path)));
        return;
    }
    // An absolute name can't be taken for an option.
    const QString file = info.absoluteFilePath();
    const QString named = map.value(QStringLiteral("dir")).toString();
    const QString folder =
        named.isEmpty() ? info.absolutePath() : QFileInfo(named).absoluteFilePath();

    const QString code = visualStudioCode();
    if (!code.isEmpty() && start(code, {folder, file}))
        return;
    if (startVisual(file) || desktop(QUrl::fromLocalFile(file)))
        return;
    Q_EMIT failed(tr("No editor could be started. Install Visual Studio Code, or set the "
                     "environment variable VISUAL to the command of your editor."));
}
