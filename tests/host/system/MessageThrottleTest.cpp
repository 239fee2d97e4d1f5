#include "system/MessageThrottle.h"

#include <QtTest/QtTest>

using Verdict = MessageThrottle::Verdict;

class MessageThrottleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextPassesOnceInAWhile()
    {
        MessageThrottle throttle;
        const QString text = QStringLiteral("in every frame");
        QCOMPARE(throttle.judge(text, 100'000), Verdict::Pass);
        QCOMPARE(throttle.judge(text, 100'040), Verdict::Drop);
        QCOMPARE(throttle.judge(QStringLiteral("another"), 100'040), Verdict::Pass);
        QCOMPARE(throttle.judge(text, 100'000 + MessageThrottle::WindowMs - 1), Verdict::Drop);
        QCOMPARE(throttle.judge(text, 100'000 + MessageThrottle::WindowMs), Verdict::Pass);
    }

    void everNewTextsAreCutOffWithALine()
    {
        MessageThrottle throttle;
        int passed = 0;
        int cut = 0;
        for (int number = 0; number < 1000; ++number) {
            const Verdict verdict = throttle.judge(QString::number(number), 7);
            passed += verdict == Verdict::Pass ? 1 : 0;
            cut += verdict == Verdict::DropTheFirst ? 1 : 0;
        }
        QCOMPARE(passed, MessageThrottle::TextsPerWindow);
        QCOMPARE(cut, 1);
        QCOMPARE(throttle.judge(QStringLiteral("later"), 7 + MessageThrottle::WindowMs),
                 Verdict::Pass);
    }
};

QTEST_GUILESS_MAIN(MessageThrottleTest)
#include "MessageThrottleTest.moc"
