#include "render/offscreen/ErrorLog.h"

#include <QtQml/QQmlError>
#include <QtTest/QtTest>

using OVX::ErrorLog;

namespace {

QQmlError errorAt(const QString &path, int line, int number)
{
    QQmlError error;
    error.setUrl(QUrl(QStringLiteral("file://") + path));
    error.setLine(line);
    error.setColumn(3);
    error.setDescription(QStringLiteral("Error: %1").arg(number));
    return error;
}

} // namespace

class ErrorLogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsEachDistinctTextOnceInOrderOfAppearance()
    {
        ErrorLog log;
        QVERIFY(log.isEmpty());
        for (const char *text : {"b", "a", "b", "c", "a"})
            log.append(QLatin1String(text));
        QCOMPARE(log.list(),
                 QStringList({QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")}));
        QVERIFY(!log.isEmpty());
    }

    void closesWithOneLineWhenItIsFull()
    {
        ErrorLog log;
        for (int i = 0; i < 10'000; ++i)
            log.append(QString::number(i));
        QCOMPARE(log.list().size(), ErrorLog::MaximumEntries + 1);
        QCOMPARE(log.list().at(ErrorLog::MaximumEntries - 1),
                 QString::number(ErrorLog::MaximumEntries - 1));
        QVERIFY(log.list().constLast().contains(QLatin1String("not recorded")));
    }

    void aLineThatWarnsInEverNewWordsLeavesRoomForOthers()
    {
        // A path may hold what ends it elsewhere.
        const QString path = QStringLiteral("/my: dash/Dash.qml");
        const QString chatty = QStringLiteral("file:///my: dash/Dash.qml:7:3: ");
        const QString other = QStringLiteral("file:///my: dash/Dash.qml:8:3: Error: 1");
        ErrorLog log;
        for (int i = 0; i < 10'000; ++i)
            log.append(errorAt(path, 7, i));
        log.append(errorAt(path, 8, 1));
        QStringList expected;
        for (int i = 0; i < ErrorLog::MaximumPerLocation; ++i)
            expected += chatty + QStringLiteral("Error: %1").arg(i);
        expected += chatty + QStringLiteral("Further warnings from here are not recorded");
        QCOMPARE(log.list(), expected + QStringList(other));
    }

    void manyLinesTogetherStayBoundedToo()
    {
        ErrorLog log;
        for (int line = 0; line < 1000; ++line) {
            for (int i = 0; i < 10; ++i)
                log.append(errorAt(QStringLiteral("/Dash.qml"), line, i));
        }
        QCOMPARE(log.list().size(), ErrorLog::MaximumEntries + 1);
        QCOMPARE(log.list().filter(QStringLiteral("not recorded")).size(),
                 ErrorLog::MaximumEntries / (ErrorLog::MaximumPerLocation + 1) + 1);
    }

    void aTextSeenBeforeDoesNotFillIt()
    {
        ErrorLog log;
        for (int i = 0; i < ErrorLog::MaximumEntries; ++i)
            log.append(QString::number(i));
        log.append(QStringLiteral("7"));
        QCOMPARE(log.list().size(), ErrorLog::MaximumEntries);
    }

    void cutsOffWhatIsTooLong()
    {
        ErrorLog log;
        log.append(QString(ErrorLog::MaximumLength, QLatin1Char('x')));
        QCOMPARE(log.list().constLast().size(), ErrorLog::MaximumLength);
        QVERIFY(!log.list().constLast().endsWith(QLatin1String("...")));
        log.append(QString(50'000'000, QLatin1Char('x')));
        QCOMPARE(log.list().constLast().size(), ErrorLog::MaximumLength + 3);
        QVERIFY(log.list().constLast().endsWith(QLatin1String("...")));
    }

    void isUsableAgainAfterClearing()
    {
        ErrorLog log;
        for (int i = 0; i < 500; ++i)
            log.append(QString::number(i));
        for (int i = 0; i < 10; ++i) {
            log.clear();
            QVERIFY(log.isEmpty());
            const QString entry = QStringLiteral("Dash.qml:7: %1").arg(i);
            log.append(entry);
            QCOMPARE(log.list(), QStringList(entry));
        }
    }
};

QTEST_GUILESS_MAIN(ErrorLogTest)
#include "ErrorLogTest.moc"
