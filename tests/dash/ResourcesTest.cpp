#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>
#include <QtTest/QtTest>

class ResourcesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void documentsAreThereWithoutAnyCall_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("editor") << QStringLiteral(":/dash/qml/DashboardEditor.qml");
        QTest::newRow("window") << QStringLiteral(":/dash/qml/DashboardWindow.qml");
        QTest::newRow("panel") << QStringLiteral(":/dash/qml/DashboardSysPanel.qml");
    }

    void documentsAreThereWithoutAnyCall()
    {
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("import Qt"));
    }

    void theDrawingHasItsViewBox()
    {
        QFile file(QStringLiteral(":/dash/Dashboards_Idea"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader reader(&file);
        QVERIFY(reader.readNextStartElement());
        QCOMPARE(reader.name().toString(), QStringLiteral("svg"));
        QCOMPARE(reader.attributes().value(QLatin1String("viewBox")).toString(),
                 QStringLiteral("0 0 900 300"));
        while (!reader.atEnd())
            reader.readNext();
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    }
};

QTEST_GUILESS_MAIN(ResourcesTest)
#include "ResourcesTest.moc"
