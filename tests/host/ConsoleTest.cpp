#include "Termination.h"

#include <QtCore/QEventLoop>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

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

/// The process that ends by requests, with a console of its own.
int runChild(const QString &kind)
{
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
int run(const QString &kind)
{
    QProcess process;
    process.setCreateProcessArgumentsModifier(
        [](QProcess::CreateProcessArguments *arguments) { arguments->flags |= CREATE_NO_WINDOW; });
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child"), kind});
    if (process.waitForFinished())
        return process.exitCode();
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
        QCOMPARE(run(QStringLiteral("nested")), EndedByItself);
        QCOMPARE(run(QStringLiteral("again")), EndedByItself);
    }

    void aRequestBeforeTheLoopEndsIt() { QCOMPARE(run(QStringLiteral("early")), EndedByItself); }

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
        const int code = run(kind);
        QVERIFY2(code == 0 || static_cast<DWORD>(code) == STATUS_CONTROL_C_EXIT,
                 qPrintable(QString::number(code)));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--child"))
        return runChild(arguments.value(2));
    // Only those on the sender's console get its requests. There is one already in a command
    // window.
    AllocConsole();
    ConsoleTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ConsoleTest.moc"
