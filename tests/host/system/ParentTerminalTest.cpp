#include "support/TestFiles.h"
#include "system/Terminal.h"

#include <QtCore/QProcess>
#include <QtTest/QtTest>

#include <array>
#include <cstdio>
#include <windows.h>

namespace {

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

/// A program with windows, which has no console of its own: 0 if the parent's takes sequences.
int useTerminal(bool plain)
{
    const ParentTerminal terminal;
    const bool takesSequences = (screenMode() & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    if (plain)
        SetConsoleMode(openScreen(), ENABLE_PROCESSED_OUTPUT | ENABLE_WRAP_AT_EOL_OUTPUT);
    std::fputs("[####....] a bar", stderr);
    printLine("told"_q);
    return takesSequences ? 0 : 1;
}

/// The program's parent, with a console of its own: prints what stands on it after the program's
/// end. 0 if all went well and the console's mode is what it was.
int lendTerminal(const QString &kind)
{
    const DWORD before = screenMode();
    QString command = "\"%1\" --use %2"_q.arg(QCoreApplication::applicationFilePath(), kind);
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
    DWORD code = 1;
    GetExitCodeProcess(started.hProcess, &code);
    std::array<wchar_t, 40> text{};
    DWORD size = 0;
    ReadConsoleOutputCharacterW(openScreen(), text.data(), DWORD(text.size()), {0, 0}, &size);
    std::puts(qUtf8Printable(QString::fromWCharArray(text.data(), int(size)).trimmed()));
    std::fflush(stdout);
    return screenMode() == before ? static_cast<int>(code) : 2;
}

} // namespace

class ParentTerminalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsUsedAndGivenBack_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("with sequences") << "sequences";
        QTest::newRow("without") << "plain";
    }

    void itIsUsedAndGivenBack()
    {
        QFETCH(QString, kind);
        QProcess process;
        process.setCreateProcessArgumentsModifier(
            [](auto *arguments) { arguments->flags |= CREATE_NO_WINDOW; });
        process.start(QCoreApplication::applicationFilePath(), {"--lend"_q, kind});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        // Wine's terminal sets the mode for sequences, and prints them all the same.
        if (kind == "plain"_q)
            QCOMPARE(process.readAllStandardOutput().trimmed(), QByteArray("told"));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--lend"_q)
        return lendTerminal(arguments.value(2));
    if (arguments.value(1) == "--use"_q)
        return useTerminal(arguments.value(2) == "plain"_q);
    ParentTerminalTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ParentTerminalTest.moc"
