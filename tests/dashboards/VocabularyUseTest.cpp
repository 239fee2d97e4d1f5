#include "Stage.h"
#include "commands/SourceTokens.h"
#include "render/TelemetryPublisher.h"

#include <QtCore/QDirIterator>
#include <QtTest/QtTest>

class VocabularyUseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// A name that no dashboard shows is one that nobody sees working.
    void everyPublishedNameIsShownSomewhere()
    {
        QSet<QString> unused;
        TelemetryPublisher publisher(
            [&unused](const QString &name, const QVariant &) { unused.insert(name); });
        publisher.publish({{}, {}, {}, {}, {}});
        QVERIFY(!unused.isEmpty());

        const QStringList dashboards = dashboardNames();
        for (const QString &dashboard : dashboards) {
            QDirIterator files(builtDashboards().filePath(dashboard), {QStringLiteral("*.qml")},
                               QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                QFile file(files.next());
                QVERIFY(file.open(QIODevice::ReadOnly));
                for (const SourceToken &token : sourceTokens(QString::fromUtf8(file.readAll())))
                    unused.remove(token.text);
            }
        }
        QStringList missing = unused.values();
        missing.sort();
        if (!missing.isEmpty())
            QFAIL("No dashboard reads " + missing.join(QStringLiteral(", ")).toUtf8());
    }
};

QTEST_GUILESS_MAIN(VocabularyUseTest)
#include "VocabularyUseTest.moc"
