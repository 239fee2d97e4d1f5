#include "system/Termination.h"

#include <QtCore/QEventLoop>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <csignal>
#include <cstdio>

namespace {

constexpr int EndedByItself = 7;

void say(const char *word)
{
    std::puts(word);
    std::fflush(stdout);
}

/// Never gives control back to the event loop, like a script without an end.
void spin()
{
    say("ready");
    while (!Termination::requested()) {}
    say("asked");
    for (volatile bool forever = true; forever;) {}
}

/// The process that the tests send signals to.
int runChild(const QString &kind)
{
    if (kind == QLatin1String("nohup"))
        std::signal(SIGHUP, SIG_IGN);
    const Termination termination;
    if (kind == QLatin1String("nohup")) {
        std::raise(SIGHUP);
        return Termination::requested() ? 1 : EndedByItself;
    }
    if (kind == QLatin1String("early")) {
        std::raise(SIGTERM);
        QCoreApplication::processEvents();
        QCoreApplication::exec();
        return QCoreApplication::exec() == 0 ? EndedByItself : 1;
    }
    QTimer::singleShot(0, QCoreApplication::instance(), [kind] {
        if (kind == QLatin1String("busy"))
            spin();
        QEventLoop inner;
        QTimer::singleShot(0, &inner, [] { say("ready"); });
        inner.exec();
    });
    return QCoreApplication::exec() == 0 ? EndedByItself : 1;
}

class Child
{
public:
    explicit Child(const QString &kind)
    {
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child"), kind});
    }

    bool says(const QByteArray &word)
    {
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead())
                return false;
        }
        return process.readLine().trimmed() == word;
    }

    void send(int signal) const { kill(static_cast<pid_t>(process.processId()), signal); }

    int exitCode()
    {
        if (!process.waitForFinished())
            return -1;
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    }

private:
    QProcess process;
};

} // namespace

class TerminationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSignalEndsAllLoops_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void aSignalEndsAllLoops()
    {
        QFETCH(int, signal);
        Child child(QStringLiteral("nested"));
        QVERIFY(child.says("ready"));
        child.send(signal);
        QCOMPARE(child.exitCode(), EndedByItself);
    }

    void aSignalBeforeTheLoopEndsIt()
    {
        QCOMPARE(Child(QStringLiteral("early")).exitCode(), EndedByItself);
    }

    void aSecondSignalEndsAProgramThatIsBusy()
    {
        Child child(QStringLiteral("busy"));
        QVERIFY(child.says("ready"));
        child.send(SIGTERM);
        QVERIFY(child.says("asked"));
        child.send(SIGINT);
        QCOMPARE(child.exitCode(), -2);
    }

    void whatTheParentIgnoresStaysIgnored()
    {
        QCOMPARE(Child(QStringLiteral("nohup")).exitCode(), EndedByItself);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--child"))
        return runChild(arguments.value(2));
    TerminationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TerminationTest.moc"
