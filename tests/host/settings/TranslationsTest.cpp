#include "settings/Translations.h"
#include "support/TestFiles.h"

#include <QtTest/QtTest>

class TranslationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLanguageIsSwitchedAtRunTime()
    {
        Translations translations;
        const auto text = [](int count) {
            return QCoreApplication::translate("DashboardEngine", "Waiting for game data") + " "_q +
                   QCoreApplication::translate("ProfileCard", "%n vehicle(s)", nullptr, count);
        };
        translations.use("de"_q);
        QCOMPARE(text(1), "Warten auf Daten vom Spiel 1 Fahrzeug"_q);
        QCOMPARE(text(2), "Warten auf Daten vom Spiel 2 Fahrzeuge"_q);
        translations.use("en"_q);
        QCOMPARE(text(1), "Waiting for game data 1 vehicle"_q);
        QCOMPARE(text(2), "Waiting for game data 2 vehicles"_q);
    }

    void withoutAChoiceTheSystemDecides_data()
    {
        QTest::addColumn<QString>("used");
        QTest::newRow("de-AT") << "de";
        QTest::newRow("en-GB de") << "en";
        QTest::newRow("fr de-Latn-DE") << "de";
        QTest::newRow("fr den") << "en";
        QTest::newRow("") << "en";
    }

    void withoutAChoiceTheSystemDecides()
    {
        Translations translations(
            QString::fromUtf8(QTest::currentDataTag()).split(QLatin1Char(' ')));
        translations.use({});
        QTEST(translations.language(), "used");
    }
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
