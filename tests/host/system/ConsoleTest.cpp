#include "support/TestFiles.h"
#include "system/MessageThrottle.h"
#include "system/Terminal.h"
#include "system/Termination.h"

#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <csignal>
#include <cstdio>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

constexpr int EndedByItself = 7;
constexpr int EndedBySystem = 0; ///< Or a crash. Wine ends it as if all were well.

#ifdef Q_OS_WIN

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

/// A program with windows, which has no console of its own.
int useTerminal()
{
    const ParentTerminal terminal;
    const bool takesSequences = (screenMode() & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    SetConsoleMode(openScreen(), ENABLE_PROCESSED_OUTPUT | ENABLE_WRAP_AT_EOL_OUTPUT);
    std::fputs("[####....] a bar", stderr);
    printLine("told"_q); // Over the bar, without sequences.
    SetConsoleMode(openScreen(), screenMode() | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    return takesSequences ? EndedByItself : 1;
}

/// Its parent, which has a console: fails unless it looks and works as it should afterwards.
int lendTerminal()
{
    const DWORD before = screenMode();
    QProcess program;
    program.setCreateProcessArgumentsModifier([](auto *arguments) {
        arguments->flags = DETACHED_PROCESS | CREATE_UNICODE_ENVIRONMENT;
        // Wine's streams that begin without a handle can't get one later.
        arguments->startupInfo->hStdError = openScreen();
        SetHandleInformation(arguments->startupInfo->hStdError, HANDLE_FLAG_INHERIT,
                             HANDLE_FLAG_INHERIT);
    });
    program.start(QCoreApplication::applicationFilePath(), {"--child"_q, "use"_q, "0"_q});
    program.waitForFinished();
    wchar_t text[40] = {};
    DWORD size = 0;
    ReadConsoleOutputCharacterW(openScreen(), text, 40, {0, 0}, &size);
    const bool good =
        screenMode() == before && QString::fromWCharArray(text, int(size)).trimmed() == "told"_q;
    return good ? program.exitCode() : 1;
}

/// Ctrl+C on the console, which the system tells on a thread of its own.
void request(int /*signal*/)
{
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
}

#else

void request(int signal)
{
    std::raise(signal);
}

#endif

int runChild(const QString &kind, int signal)
{
#ifdef Q_OS_WIN
    if (kind == "lend"_q)
        return lendTerminal();
    if (kind == "use"_q)
        return useTerminal();
    SetConsoleCtrlHandler(nullptr, FALSE); // Ignoring Ctrl+C is inherited.
#endif
    if (kind == "ignored"_q)
        std::signal(signal, SIG_IGN);
    const Termination termination;
    if (kind == "running"_q) {
        QTimer::singleShot(0, QCoreApplication::instance(), [signal] { request(signal); });
        return QCoreApplication::exec() == 0 ? EndedByItself : 1;
    }
    request(signal);
    if (kind == "ignored"_q)
        return Termination::requested() ? 1 : EndedByItself;
    while (!Termination::requested()) {}
    if (kind == "twice"_q) {
        request(signal);
        for (volatile bool busy = true; busy;) {}
    }
    QCoreApplication::exec();
    return QCoreApplication::exec() == 0 ? EndedByItself : 1;
}

} // namespace

/// Starts itself as a program that is asked to end, or that uses its parent's terminal.
class ConsoleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aProgramEndsAsItShould_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<int>("end");
        QTest::newRow("running") << SIGINT << EndedByItself;
        QTest::newRow("early") << SIGTERM << EndedByItself;
        QTest::newRow("twice") << SIGTERM << EndedBySystem;
#ifdef Q_OS_WIN
        QTest::newRow("lend") << 0 << EndedByItself;
#else
        QTest::newRow("running") << SIGHUP << EndedByItself;
        QTest::newRow("ignored") << SIGHUP << EndedByItself;
#endif
    }

    void aProgramEndsAsItShould()
    {
        QFETCH(int, signal);
        QProcess process;
#ifdef Q_OS_WIN
        process.setCreateProcessArgumentsModifier(
            [](auto *arguments) { arguments->flags |= CREATE_NO_WINDOW; });
#endif
        process.start(
            QCoreApplication::applicationFilePath(),
            {"--child"_q, QString::fromUtf8(QTest::currentDataTag()), QString::number(signal)});
        QVERIFY(process.waitForFinished());
        const bool ended = process.exitStatus() == QProcess::NormalExit;
        QTEST(ended ? process.exitCode() : EndedBySystem, "end");
    }

    void eachTextPassesOnceInAWhileAndNotTooMany()
    {
        using Verdict = MessageThrottle::Verdict;
        MessageThrottle throttle;
        for (const qint64 begin : {qint64{7}, 7 + MessageThrottle::WindowMs}) {
            const qint64 end = begin + MessageThrottle::WindowMs - 1;
            for (int i = 0; i < MessageThrottle::TextsPerWindow; ++i)
                QCOMPARE(throttle.judge(QString::number(i), begin + i), Verdict::Pass);
            QCOMPARE(throttle.judge(QString::number(0), end), Verdict::Drop);
            QCOMPARE(throttle.judge(QStringLiteral("one too many"), end), Verdict::DropTheFirst);
            QCOMPARE(throttle.judge(QStringLiteral("and another"), end), Verdict::Drop);
        }
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--child"_q)
        return runChild(arguments[2], arguments[3].toInt());
    ConsoleTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ConsoleTest.moc"
