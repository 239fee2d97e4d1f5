#include "render/offscreen/ErrorLog.h"

#include <QtTest/QtTest>

using OVX::ErrorLog;

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
        log.clear();
        QVERIFY(log.isEmpty());
        log.append(QStringLiteral("7"));
        QCOMPARE(log.list(), QStringList(QStringLiteral("7")));
    }
};

QTEST_GUILESS_MAIN(ErrorLogTest)
#include "ErrorLogTest.moc"
