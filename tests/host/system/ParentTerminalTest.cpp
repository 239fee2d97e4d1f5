#include "system/Terminal.h"
#include "system/Termination.h"

#include <QtCore/QEventLoop>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <array>
#include <cstdio>
#include <windows.h>

namespace {

constexpr int EndedByItself = 7;

constexpr int NotEnded = -1;

/// What a person at the program's console does who presses Ctrl+C.
void pressCtrlC()
{
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
}

void spinUntilRequested()
{
    while (!Termination::requested()) {}
}

/// Never gives control back to the event loop, like a script without an end.
void spin()
{
    for (volatile bool forever = true; forever;) {}
}

int runLoops()
{
    return QCoreApplication::exec() == 0 ? EndedByItself : 1;
}

/// The console's screen, wherever the streams go.
HANDLE openScreen()
{
    return CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                       nullptr, OPEN_EXISTING, 0, nullptr);
}

DWORD screenMode()
{
    DWORD mode = 0;
    GetConsoleMode(openScreen(), &mode);
    return mode;
}

/// Like a program with windows, which has no console of its own.
int useTerminal(const QString &kind)
{
    const ParentTerminal terminal;
    const bool takesSequences = (screenMode() & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    if (kind == QLatin1String("plain"))
        SetConsoleMode(openScreen(), ENABLE_PROCESSED_OUTPUT | ENABLE_WRAP_AT_EOL_OUTPUT);
    std::fputs("[####....] a bar", stderr);
    printLine(QStringLiteral("told"));
    return takesSequences ? EndedByItself : 1;
}

/// Has a console of its own, lets a program use it and prints what stands there then.
int lendTerminal(const QString &kind)
{
    const DWORD before = screenMode();
    QString command =
        QStringLiteral("\"%1\" --child use %2").arg(QCoreApplication::applicationFilePath(), kind);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    // Wine's streams that begin without a handle can't get one later.
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdError = openScreen();
    SetHandleInformation(startup.hStdError, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    PROCESS_INFORMATION started{};
    if (CreateProcessW(nullptr, reinterpret_cast<wchar_t *>(command.data()), nullptr, nullptr, TRUE,
                       DETACHED_PROCESS, nullptr, nullptr, &startup, &started) == 0)
        return 1;
    WaitForSingleObject(started.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(started.hProcess, &code);
    std::array<wchar_t, 40> text{};
    DWORD size = 0;
    ReadConsoleOutputCharacterW(openScreen(), text.data(), static_cast<DWORD>(text.size()), {0, 0},
                                &size);
    std::puts(
        qUtf8Printable(QString::fromWCharArray(text.data(), static_cast<int>(size)).trimmed()));
    std::fflush(stdout);
    return screenMode() == before ? static_cast<int>(code) : 2;
}

/// The process that ends by requests, with a console of its own.
int runChild(const QString &kind, const QString &terminal)
{
    if (kind == QLatin1String("lend"))
        return lendTerminal(terminal);
    if (kind == QLatin1String("use"))
        return useTerminal(terminal);
    SetConsoleCtrlHandler(nullptr, FALSE); // What is ignored here is inherited.
    if (kind == QLatin1String("again") || kind == QLatin1String("after")) {
        const Termination first;
    }
    if (kind == QLatin1String("after")) {
        pressCtrlC();
        spin();
    }
    const Termination termination;
    if (kind == QLatin1String("early")) {
        pressCtrlC();
        spinUntilRequested();
        QCoreApplication::processEvents();
        QCoreApplication::exec();
        return runLoops();
    }
    QTimer::singleShot(0, QCoreApplication::instance(), [kind] {
        if (kind == QLatin1String("busy")) {
            pressCtrlC();
            spinUntilRequested();
            pressCtrlC();
            spin();
        }
        QEventLoop inner;
        QTimer::singleShot(0, &inner, pressCtrlC);
        inner.exec();
    });
    return runLoops();
}

/// The exit code of a child with a console that nobody sees.
int run(const QStringList &words, QByteArray *output = nullptr)
{
    QProcess process;
    process.setCreateProcessArgumentsModifier(
        [](QProcess::CreateProcessArguments *arguments) { arguments->flags |= CREATE_NO_WINDOW; });
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{QStringLiteral("--child")} + words);
    if (process.waitForFinished()) {
        if (output != nullptr)
            *output = process.readAllStandardOutput().trimmed();
        return process.exitCode();
    }
    process.kill();
    process.waitForFinished();
    return NotEnded;
}

} // namespace

class ConsoleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRequestEndsAllLoops()
    {
        QCOMPARE(run({QStringLiteral("nested")}), EndedByItself);
        QCOMPARE(run({QStringLiteral("again")}), EndedByItself);
    }

    void aRequestBeforeTheLoopEndsIt() { QCOMPARE(run({QStringLiteral("early")}), EndedByItself); }

    void theSystemEndsWhatDoesNotEndItself_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("busy at the second request") << QStringLiteral("busy");
        QTest::newRow("request after the object's end") << QStringLiteral("after");
    }

    void theSystemEndsWhatDoesNotEndItself()
    {
        QFETCH(QString, kind);
        // Wine's handler ends a process as if all were well.
        const int code = run({kind});
        QVERIFY2(code == 0 || static_cast<DWORD>(code) == STATUS_CONTROL_C_EXIT,
                 qPrintable(QString::number(code)));
    }

    void theParentsTerminalTakesSequencesUntilTheEnd()
    {
        // Wine's sets the mode, and prints them all the same.
        QCOMPARE(run({QStringLiteral("lend"), QStringLiteral("sequences")}), EndedByItself);
    }

    void aTerminalWithoutSequencesShowsNone()
    {
        QByteArray screen;
        QCOMPARE(run({QStringLiteral("lend"), QStringLiteral("plain")}, &screen), EndedByItself);
        QCOMPARE(screen, QByteArray("told"));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--child"))
        return runChild(arguments.value(2), arguments.value(3));
    // Only those on the sender's console get its requests. There is one already in a command
    // window.
    AllocConsole();
    ConsoleTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ConsoleTest.moc"
