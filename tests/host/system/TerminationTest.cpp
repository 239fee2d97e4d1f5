#include "system/Termination.h"
#include "support/TestFiles.h"

#include <QtCore/QEventLoop>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <csignal>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

constexpr int EndedByItself = 7;

/// Requests the end of this process, on Windows as Ctrl+C on its console does.
void request(int signal)
{
#ifdef Q_OS_WIN
    Q_UNUSED(signal)
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0); // Comes on a thread of the system's.
#else
    std::raise(signal);
#endif
}

int runChild(const QString &kind, int signal)
{
#ifdef Q_OS_WIN
    SetConsoleCtrlHandler(nullptr, FALSE); // Ignoring Ctrl+C is inherited.
#endif
    if (kind == "ignored"_q)
        std::signal(signal, SIG_IGN);
    auto termination = std::make_unique<Termination>();
    termination.reset();
    if (kind != "after"_q)
        termination = std::make_unique<Termination>();
    if (kind == "nested"_q) {
        QTimer::singleShot(0, QCoreApplication::instance(), [signal] {
            QEventLoop inner;
            QTimer::singleShot(0, &inner, [signal] { request(signal); });
            inner.exec();
        });
        return QCoreApplication::exec() == 0 ? EndedByItself : 1;
    }
    request(signal);
    if (kind == "ignored"_q)
        return Termination::requested() ? 1 : EndedByItself;
    while (!Termination::requested()) {} // Without an object it ends here.
    if (kind == "twice"_q) {
        request(signal);
        for (volatile bool busy = true; busy;) {}
    }
    QCoreApplication::exec();
    return QCoreApplication::exec() == 0 ? EndedByItself : 1;
}

} // namespace

class TerminationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRequestEndsTheProgram_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("bySystem");
        QTest::newRow("nested loops") << "nested" << SIGTERM << false;
        QTest::newRow("before the loop") << "early" << SIGINT << false;
        QTest::newRow("twice while busy") << "twice" << SIGTERM << true;
        QTest::newRow("after the object's end") << "after" << SIGTERM << true;
#ifndef Q_OS_WIN
        QTest::newRow("the terminal closes") << "nested" << SIGHUP << false;
        QTest::newRow("the parent ignores it") << "ignored" << SIGHUP << false;
#endif
    }

    void aRequestEndsTheProgram()
    {
        QFETCH(QString, kind);
        QFETCH(int, signal);
        QProcess process;
#ifdef Q_OS_WIN
        process.setCreateProcessArgumentsModifier(
            [](auto *arguments) { arguments->flags |= CREATE_NO_WINDOW; });
#endif
        process.start(QCoreApplication::applicationFilePath(),
                      {"--child"_q, kind, QString::number(signal)});
        QVERIFY(process.waitForFinished());
        bool bySystem = process.exitStatus() == QProcess::CrashExit;
#ifdef Q_OS_WIN
        // Wine's handler ends a process as if all were well.
        bySystem = bySystem || process.exitCode() == 0;
#endif
        QTEST(bySystem, "bySystem");
        if (!bySystem)
            QCOMPARE(process.exitCode(), EndedByItself);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--child"_q)
        return runChild(arguments.value(2), arguments.value(3).toInt());
    TerminationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TerminationTest.moc"
