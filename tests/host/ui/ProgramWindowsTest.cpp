#include "WindowRig.h"

/// The program with windows, as a user starts and ends it.
class ProgramWindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyWindowEndsCleanly()
    {
        // Title, where a dot stands for any character, key and arguments.
        const QVector<QStringList> runs{
            {"GAUGE64"_q, "F1"_q},
            {"Dashboard"_q, "Escape"_q, "--window"_q},
            {"Dashboard"_q, {}, "--window"_q},
            {"Dashboard.Editor"_q, {}, "--view"_q, "DashboardEditor"_q}};
        for (const QStringList &run : runs) {
            const TemporaryHome home;
            qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
            QProcess program;
            program.start(QStringLiteral(GAUGE_HOST), run.mid(2));
            QVERIFY(appears(run[0]));
            if (run[1] == "F1"_q)
                QVERIFY(xdotool("key F1"_q) && appears("Help"_q));
            if (run[1] != "Escape"_q)
                program.terminate();
            QTRY_VERIFY_WITH_TIMEOUT((run[1] != "Escape"_q || xdotool("key Escape"_q)) &&
                                         program.state() == QProcess::NotRunning,
                                     60'000);
            QCOMPARE(program.exitStatus(), QProcess::NormalExit);
            QCOMPARE(program.exitCode(), 0);
            QCOMPARE(program.readAllStandardError(), QByteArray());
        }
    }

private:
    /// Asks only until it is there: a search fails at times while windows come.
    static bool appears(const QString &title)
    {
        const QString search = "search --onlyvisible --name ^%1$"_q.arg(title);
        return QTest::qWaitFor([&] { return xdotool(search); }, 60'000);
    }
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<ProgramWindowsTest>(argc, argv);
}

#include "ProgramWindowsTest.moc"
