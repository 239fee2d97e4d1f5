#include "WindowRig.h"

/// The program with windows, as a user starts and ends it.
class ProgramWindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyWindowEndsCleanly()
    {
        struct Run
        {
            QStringList arguments;
            QString title; // A dot stands for any character.
            QString key;
        };
        for (const Run &run :
             {Run{{}, "GAUGE64"_q, "F1"_q}, Run{{"--window"_q}, "Dashboard"_q, "Escape"_q},
              Run{{"--window"_q}, "Dashboard"_q, {}},
              Run{{"--view"_q, "DashboardEditor"_q}, "Dashboard.Editor"_q, {}}}) {
            const TemporaryHome home;
            qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
            QProcess program;
            program.start(QStringLiteral(GAUGE_HOST), run.arguments);
            QTRY_VERIFY_WITH_TIMEOUT(isShown(run.title), 60'000);
            if (run.key == "F1"_q)
                QTRY_VERIFY_WITH_TIMEOUT((Desktop::act("key F1"_q), isShown("Help"_q)), 60'000);
            if (run.key != "Escape"_q)
                program.terminate();
            QTRY_VERIFY_WITH_TIMEOUT((run.key != "Escape"_q || Desktop::act("key Escape"_q)) &&
                                         program.state() == QProcess::NotRunning,
                                     60'000);
            QCOMPARE(program.exitStatus(), QProcess::NormalExit);
            QCOMPARE(program.exitCode(), 0);
            QCOMPARE(program.readAllStandardError(), QByteArray());
        }
    }

private:
    static bool isShown(const QString &title)
    {
        return Desktop::act("search --onlyvisible --name ^%1$"_q.arg(title));
    }
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<ProgramWindowsTest>(argc, argv);
}

#include "ProgramWindowsTest.moc"
