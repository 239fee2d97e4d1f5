#include "system/MessageThrottle.h"

#include <QtTest/QtTest>

using Verdict = MessageThrottle::Verdict;

class MessageThrottleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachTextPassesOnceInAWhileAndNotTooMany()
    {
        MessageThrottle throttle;
        const QString text = QStringLiteral("in every frame");
        for (qint64 begin : {7, 7 + int(MessageThrottle::WindowMs)}) {
            QCOMPARE(throttle.judge(text, begin), Verdict::Pass);
            for (int number = 1; number < MessageThrottle::TextsPerWindow; ++number)
                QCOMPARE(throttle.judge(QString::number(number), begin + number), Verdict::Pass);
            const qint64 end = begin + MessageThrottle::WindowMs - 1;
            QCOMPARE(throttle.judge(text, end), Verdict::Drop);
            QCOMPARE(throttle.judge(QStringLiteral("one too many"), end), Verdict::DropTheFirst);
            QCOMPARE(throttle.judge(QStringLiteral("and another"), end), Verdict::Drop);
        }
    }
};

QTEST_GUILESS_MAIN(MessageThrottleTest)
#include "MessageThrottleTest.moc"
