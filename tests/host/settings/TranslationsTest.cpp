#include "settings/Translations.h"

#include <QtCore/QCoreApplication>
#include <QtTest/QtTest>

namespace {

QString waiting()
{
    return QCoreApplication::translate("DashboardEngine", "Waiting for game data");
}

} // namespace

class TranslationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLanguageIsSwitchedAtRunTime()
    {
        Translations translations;
        translations.use(QStringLiteral("de"));
        QCOMPARE(translations.language(), QStringLiteral("de"));
        QCOMPARE(waiting(), QStringLiteral("Warten auf Daten vom Spiel"));
        translations.use(QStringLiteral("en"));
        QCOMPARE(waiting(), QStringLiteral("Waiting for game data"));
    }

    void withoutAChoiceTheSystemDecides_data()
    {
        QTest::addColumn<QString>("system");
        QTest::addColumn<QString>("used");
        QTest::newRow("Austrian") << "de-AT"
                                  << "de";
        QTest::newRow("first of two") << "en-GB de"
                                      << "en";
        QTest::newRow("second of two") << "fr de-Latn-DE"
                                       << "de";
        QTest::newRow("none of ours") << "fr den"
                                      << "en";
        QTest::newRow("nothing") << ""
                                 << "en";
    }

    void withoutAChoiceTheSystemDecides()
    {
        QFETCH(QString, system);
        QFETCH(QString, used);
        Translations translations(system.split(QLatin1Char(' ')));
        translations.use({});
        QCOMPARE(translations.language(), used);
    }
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
