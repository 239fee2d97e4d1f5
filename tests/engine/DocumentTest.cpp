#include "support/LogCapture.h"
#include "support/RunningEngineRig.h"

#include <QtCore/QDir>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

namespace {

const QString Document = QStringLiteral("/no/such/Dash.qml");

} // namespace

/// How the engine loads its document, and follows the file of it.
class DocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reloadsWheneverADocumentIsSet()
    {
        RunningEngineRig bench;
        const QString load = QStringLiteral("load /no/such/Dash.qml 480x272");
        bench.engine->setDashboardFile(Document);
        bench.tick();
        QCOMPARE(bench.script.calls, QStringList({load})); // Nothing new, so nothing is rendered.
        bench.engine->setDashboardFile(Document);
        bench.engine->setDashboardFile(Document);
        bench.freshTick();
        QCOMPARE(bench.script.calls, QStringList({load, load, QStringLiteral("publish"),
                                                  QStringLiteral("render 4x3")}));

        bench.engine->setDashboardFile(QString());
        QVERIFY(bench.takenToRun());
        bench.ticks(2);
        QCOMPARE(bench.script.calls.size(), 4);
        bench.update(); // Dropped, so it wakes nobody.
        QCOMPARE(bench.wakeUps.count(), 0);
        QCOMPARE(bench.script.destroyed, 0);
    }

    void aFailedLoadIsLoggedOnceAndNotTriedAgain()
    {
        RunningEngineRig bench;
        bench.script.loads = false;
        bench.script.errors = QStringList(
            {QStringLiteral("Dash.qml:3 \"x\" is odd"), QStringLiteral("second  line")});
        const QStringList lines({QStringLiteral("critical: Dashboard: Failed to load: ") +
                                     QDir::toNativeSeparators(QStringLiteral("/a b/Dash.qml")),
                                 QStringLiteral("critical: Dash.qml:3 \"x\" is odd"),
                                 QStringLiteral("critical: second  line")});
        bench.engine->setDashboardFile(QStringLiteral("/a b/Dash.qml"));
        const LogCapture log;
        bench.freshTick();
        QCOMPARE(log.critical(), lines);
        QCOMPARE(bench.script.calls, QStringList({QStringLiteral("load /a b/Dash.qml 480x272")}));

        // Consumers get the renderer's picture of the errors from here on.
        bench.deliverQueued();
        bench.tick();
        bench.freshTick();
        QCOMPARE(log.critical(), lines);
        QCOMPARE(bench.script.count(QStringLiteral("load")), 1);
        QCOMPARE(bench.script.count(QStringLiteral("publish")), 2);
        QCOMPARE(bench.script.count(QStringLiteral("render")), 2);

        bench.engine->setDashboardFile(QStringLiteral("/a b/Dash.qml"));
        bench.tick();
        QCOMPARE(log.critical(), lines + lines);
    }

    void theTimerStandsBeforeAFailedLoadIsLogged()
    {
        RunningEngineRig bench;
        QVERIFY(bench.timer != nullptr);
        bench.script.loads = false;
        bench.script.errors = QStringList(QStringLiteral("odd"));
        bench.engine->setDashboardFile(Document);
        LogCapture log;
        log.whenTaken = [&bench] {
            QVERIFY(!bench.timer->isActive());
            bench.update(); // What comes while it logs wakes the timer again.
        };
        bench.tick();
        QCOMPARE(log.critical().size(), 2);
        QCOMPARE(bench.wakeUps.count(), 2);
    }

    void holdsNoLockWhileADocumentLoadsAndFinishesWithTheOldOne()
    {
        RunningEngineRig bench;
        FakeConsumer another;
        bench.engine->setDashboardFile(QStringLiteral("/first.qml"));
        bench.script.duringLoad = [&] {
            bench.script.duringLoad = nullptr;
            fromAnotherThread([&] {
                bench.engine->setDashboardFile(QStringLiteral("/second.qml"));
                bench.engine->addConsumer(&another);
                bench.update(77);
            });
        };
        bench.tick();
        QCOMPARE(bench.script.publications.back().vehicle.speedKmh, 77.0F);
        QCOMPARE(another.deliveries.size(), 1U);
        bench.tick();
        QCOMPARE(bench.script.calls.filter(QStringLiteral("load")),
                 QStringList({QStringLiteral("load /first.qml 480x272"),
                              QStringLiteral("load /second.qml 480x272")}));
    }

    void reloadsAFileThatWasRewritten()
    {
        const QTemporaryDir directory;
        const QString path = writeDocument(directory, "Dash.qml");
        for (const bool asleep : {false, true}) {
            RunningEngineRig bench;
            bench.engine->setDashboardFile(path);
            bench.tick();
            QCOMPARE(bench.script.count(QStringLiteral("load")), 1);
            if (asleep)
                bench.ticks(51);
            auto *watcher = bench.engine->findChild<QFileSystemWatcher *>();
            QVERIFY(watcher != nullptr);
            QSignalSpy changes(watcher, &QFileSystemWatcher::fileChanged);
            appendTo(path);
            QTRY_COMPARE_WITH_TIMEOUT(changes.count(), 1, 30'000);
            bench.ticks(3);
            QCOMPARE(bench.script.count(QStringLiteral("load")), 2);
        }
    }

    void watchesTheNewestFileAndNoOther()
    {
        const QTemporaryDir directory;
        const QString first = writeDocument(directory, "First.qml");
        const QString second = writeDocument(directory, "Second.qml");
        EngineRig bench;
        auto *watcher = bench.engine->findChild<QFileSystemWatcher *>();
        QVERIFY(watcher != nullptr);
        bench.engine->setDashboardFile(first);
        QCOMPARE(watcher->files(), QStringList(first));
        bench.engine->setDashboardFile(second);
        QCOMPARE(watcher->files(), QStringList(second));
        bench.engine->setDashboardFile(second);
        QCOMPARE(watcher->files(), QStringList(second));
        bench.engine->setDashboardFile(directory.filePath(QStringLiteral("Missing.qml")));
        QCOMPARE(watcher->files(), QStringList());
    }

    void aDirectoryLeavesTheWatcherLikeAFile()
    {
        const QTemporaryDir directory;
        const QString file = writeDocument(directory, "Dash.qml");
        EngineRig bench;
        auto *watcher = bench.engine->findChild<QFileSystemWatcher *>();
        QVERIFY(watcher != nullptr);
        for (const QString &next : {file, QString()}) {
            bench.engine->setDashboardFile(directory.path());
            QCOMPARE(watcher->directories(), QStringList(directory.path()));
            QCOMPARE(watcher->files(), QStringList());
            bench.engine->setDashboardFile(next);
            QCOMPARE(watcher->directories(), QStringList());
            QCOMPARE(watcher->files(), next.isEmpty() ? QStringList() : QStringList(next));
        }
        bench.engine->setDashboardFile(file);
        bench.engine->setDashboardFile(QString());
        QCOMPARE(watcher->files() + watcher->directories(), QStringList());
    }

    void aDocumentSetOnAnotherThreadIsWatchedOnTheEngines()
    {
        const QTemporaryDir directory;
        const QString first = writeDocument(directory, "First.qml");
        const QString second = writeDocument(directory, "Second.qml");
        EngineRig bench;
        FakeConsumer consumer;
        bench.engine->addConsumer(&consumer);
        auto *watcher = bench.engine->findChild<QFileSystemWatcher *>();
        QVERIFY(watcher != nullptr);
        const auto setElsewhere = [&](const QString &path) {
            fromAnotherThread([&] { bench.engine->setDashboardFile(path); });
        };

        setElsewhere(first);
        QCOMPARE(watcher->files(), QStringList());
        bench.freshTick(); // The document itself counts at once.
        QCOMPARE(bench.script.count(QStringLiteral("load %1 ").arg(first)), 1);
        bench.deliverQueued();
        QCOMPARE(watcher->files(), QStringList(first));

        setElsewhere(second);
        setElsewhere(first);
        bench.engine->setDashboardFile(second);
        QCOMPARE(watcher->files(), QStringList(second));
        bench.deliverQueued();
        QCOMPARE(watcher->files(), QStringList(second));

        bench.engine->setDashboardFile(first);
        setElsewhere(second);
        bench.deliverQueued();
        QSignalSpy changes(watcher, &QFileSystemWatcher::fileChanged);
        appendTo(first);
        appendTo(second);
        QTRY_COMPARE_WITH_TIMEOUT(changes.count(), 1, 30'000);
        QCOMPARE(changes[0][0].toString(), second);

        setElsewhere(QString());
        bench.deliverQueued();
        QCOMPARE(watcher->files(), QStringList());
        QVERIFY(bench.takenToRun() && bench.wakeUps.count() == 1); // No document, so dropped.
    }

private:
    static QString writeDocument(const QTemporaryDir &directory, const char *name)
    {
        QString path = directory.filePath(QString::fromLatin1(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write("import QtQuick 2.15\nItem {}\n") < 0)
            qFatal("no document");
        return path;
    }

    /// One write, so one event.
    static void appendTo(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Append) || file.write("// more\n") < 0)
            qFatal("no document");
    }
};

QTEST_MAIN(DocumentTest)
#include "DocumentTest.moc"
