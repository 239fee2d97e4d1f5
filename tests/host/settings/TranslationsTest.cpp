#include "settings/Translations.h"

#include <QtCore/QCoreApplication>
#include <QtTest/QtTest>

namespace {

QString waiting()
{
    return QCoreApplication::translate("DashboardEngine", "Waiting for game data");
}

QString vehicles(int count)
{
    return QCoreApplication::translate("ProfileCard", "%n vehicle(s)", nullptr, count);
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

    void countedThingsHaveTheirPlurals()
    {
        Translations translations;
        for (const char *language : {"en", "de"}) {
            const bool english = qstrcmp(language, "en") == 0;
            translations.use(QLatin1String(language));
            QCOMPARE(vehicles(1),
                     english ? QStringLiteral("1 vehicle") : QStringLiteral("1 Fahrzeug"));
            QCOMPARE(vehicles(2),
                     english ? QStringLiteral("2 vehicles") : QStringLiteral("2 Fahrzeuge"));
        }
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
