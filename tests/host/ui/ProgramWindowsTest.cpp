#include "WindowRig.h"

/// The program with windows, as a user starts and ends it.
class ProgramWindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyWindowEndsCleanly_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("end"); // A key; nothing for the system's request.
        QTest::newRow("gallery") << QStringList() << "GAUGE64"
                                 << "";
        QTest::newRow("help") << QStringList() << "GAUGE64"
                              << "F1";
        QTest::newRow("window") << QStringList{"--window"_q} << "Dashboard"
                                << "";
        QTest::newRow("editor") << QStringList{"--view"_q, "DashboardEditor"_q}
                                << "Dashboard Editor"
                                << "";
        QTest::newRow("last window") << QStringList{"--window"_q} << "Dashboard"
                                     << "Escape";
    }

    void everyWindowEndsCleanly()
    {
        QFETCH(const QStringList, arguments);
        QFETCH(const QString, title);
        QFETCH(const QString, end);
        const TemporaryHome home;
        qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
        QProcess program;
        program.start(QStringLiteral(GAUGE_HOST), arguments);
        QTRY_VERIFY_WITH_TIMEOUT(isShown(title), 60'000);
        if (!end.isEmpty())
            QCOMPARE(QProcess::execute("xdotool"_q, {"key"_q, end}), 0);
        if (end == "F1"_q)
            QTRY_VERIFY_WITH_TIMEOUT(isShown("Help"_q), 60'000);
        if (end != "Escape"_q)
            program.terminate();
        QVERIFY(program.waitForFinished(60'000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QCOMPARE(program.readAllStandardError(), QByteArray());
    }

private:
    static bool isShown(const QString &title)
    {
        return QProcess::execute("xdotool"_q, {"search"_q, "--onlyvisible"_q, "--name"_q,
                                               u'^' + title + u'$'}) == 0;
    }
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<ProgramWindowsTest>(argc, argv);
}

#include "ProgramWindowsTest.moc"
