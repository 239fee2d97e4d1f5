#include "ViewBench.h"
#include "support/TemporaryHome.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

namespace {

constexpr char Dashboard[] = "import QtQuick 2.15\nRectangle { width: 480; height: 272 }\n";

/// The program with windows, as a user starts it.
class Program
{
public:
    explicit Program(const QStringList &arguments)
    {
        process.start(QStringLiteral(GAUGE_HOST), arguments);
    }

    /// Waits until a window of this title can be seen.
    static bool shows(const QString &title)
    {
        // A window that is closed while xdotool looks at it ends the search with an X error.
        for (const QDeadlineTimer limit(60'000); !limit.hasExpired();) {
            const QString seconds = QString::number(limit.remainingTime() / 1000 + 1);
            if (QProcess::execute(QStringLiteral("timeout"),
                                  {seconds, QStringLiteral("xdotool"), QStringLiteral("search"),
                                   QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
                                   QStringLiteral("--name"),
                                   QLatin1Char('^') + title + QLatin1Char('$')}) == 0)
                return true;
        }
        return false;
    }

    static bool key(const QString &name)
    {
        return QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), name}) == 0;
    }

    /// The exit code; -1 if it doesn't end or ends in another way.
    int askToEnd()
    {
        process.terminate();
        return exitCode();
    }

    int exitCode()
    {
        const bool ended =
            process.waitForFinished(60'000) || process.state() == QProcess::NotRunning;
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QString errors() { return QString::fromUtf8(process.readAllStandardError()); }

private:
    QProcess process;
};

} // namespace

class ProgramWindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        home = std::make_unique<TemporaryHome>();
        qputenv("XDG_RUNTIME_DIR", home->path().toLocal8Bit());
    }

    void cleanup() { home.reset(); }

    void everyWindowEndsCleanlyWhenTheSystemAsks_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("title");
        QTest::newRow("gallery") << QStringList() << QStringLiteral("GAUGE64");
        QTest::newRow("window") << QStringList{QStringLiteral("--window")}
                                << QStringLiteral("Dashboard");
        QTest::newRow("editor") << QStringList{QStringLiteral("--view"),
                                               QStringLiteral("DashboardEditor"),
                                               QStringLiteral("--path"), QStringLiteral("%1")}
                                << QStringLiteral("Dashboard Editor");
    }

    void everyWindowEndsCleanlyWhenTheSystemAsks()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, title);
        arguments.replaceInStrings(QStringLiteral("%1"), makeDashboard(QStringLiteral("Mine")));
        Program program(arguments);
        QVERIFY(Program::shows(title));
        QCOMPARE(program.askToEnd(), 0);
        QCOMPARE(program.errors(), QString());
    }

    void theGalleryOpensTheOthersByKeysAndAllEndTogether()
    {
        makeDashboard(QStringLiteral("Mine"));
        Program program({});
        QVERIFY(Program::shows(QStringLiteral("GAUGE64")));
        QVERIFY(Program::key(QStringLiteral("F1")));
        QVERIFY(Program::shows(QStringLiteral("Help.*")));
        QCOMPARE(program.askToEnd(), 0);
        QCOMPARE(program.errors(), QString());
    }

    void theLastWindowEndsTheProgram()
    {
        Program program({QStringLiteral("--window")});
        QVERIFY(Program::shows(QStringLiteral("Dashboard")));
        QVERIFY(Program::key(QStringLiteral("Escape")));
        QCOMPARE(program.exitCode(), 0);
        QCOMPARE(program.errors(), QString());
    }

private:
    /// A dashboard of the user's; the path of its document.
    QString makeDashboard(const QString &name) const
    {
        const QDir folder(home->data("/Dashboards/") + name);
        QFile document(folder.filePath(QStringLiteral("Dash.qml")));
        QFile preview(folder.filePath(QStringLiteral("preview.png")));
        if (!folder.mkpath(QStringLiteral(".")) || !document.open(QIODevice::WriteOnly) ||
            !preview.open(QIODevice::WriteOnly))
            qFatal("no dashboard");
        document.write(Dashboard);
        return document.fileName();
    }

    WindowManager windowManager;
    std::unique_ptr<TemporaryHome> home;
};

QTEST_MAIN(ProgramWindowsTest)
#include "ProgramWindowsTest.moc"
