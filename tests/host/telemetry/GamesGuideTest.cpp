#include "RecordFields.h"
#include "Senders.h"

#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/feeds/KnownFeeds.h"
#include "telemetry/feeds/OutGaugeFeed.h"
#include "telemetry/feeds/RevLimitStore.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <algorithm>

namespace {

QByteArray guide()
{
    QFile file(QStringLiteral(GAMES_GUIDE));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The cells of the rows of the table whose first heading is `heading`, that one first.
QVector<QStringList> tableOf(const QString &heading)
{
    QVector<QStringList> rows;
    const QStringList lines = QString::fromUtf8(guide()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        QStringList cells = line.split(QStringLiteral(" | "));
        cells.first().remove(QStringLiteral("| "));
        cells.last().remove(QStringLiteral(" |"));
        const bool isRow = line.startsWith(QLatin1Char('|'));
        if (rows.isEmpty() ? cells.first() == heading : isRow)
            rows += cells;
        else if (!rows.isEmpty())
            break;
    }
    return rows;
}

} // namespace

class GamesGuideTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatTheFeedsDeliver()
    {
        const QTemporaryDir folder;
        OutGaugeFeed outGauge(
            std::make_unique<RevLimitStore>(folder.filePath(QStringLiteral("cars.ini"))));
        const auto at = [](int ms) { return Feed::TimePoint(std::chrono::milliseconds(ms)); };
        for (const quint32 light : {0U, 1U})
            outGauge.decode(Senders::outGauge().put<quint32>(44, light), at(0));
        DataOutFeed dataOut;
        EgoFeed ego;
        EgoFeed shortEgo;
        for (const int gear : {1, 2, 3, 4})
            shortEgo.decode(Senders::ego(38).reals(116, 1.0).reals(132, gear, 0, 0, 0, 700 / gear),
                            at(20 * gear));
        const std::map<QString, TelemetrySample> samples{
            {QStringLiteral("OutGauge"),
             outGauge.decode(Senders::outGauge().put<quint32>(44, 0x418), at(100))->sample},
            {QStringLiteral("Data Out \"Sled\""),
             dataOut.decode(Senders::dataOut(232, 1), at(100))->sample},
            {QStringLiteral("Data Out \"Dash\", Horizon"),
             dataOut.decode(Senders::dataOut(324, 2), at(100))->sample},
            {QStringLiteral("Data Out \"Dash\" of 2023"),
             dataOut.decode(Senders::dataOut(331, 3), at(100))->sample},
            {QStringLiteral("EGO extradata 3"), ego.decode(Senders::ego(66), at(100))->sample},
            {QStringLiteral("EGO extradata 1"), shortEgo.decode(Senders::ego(38), at(100))->sample},
            {QStringLiteral("F1 2015, 2016"), ego.decode(Senders::ego(70), at(100))->sample},
        };
        const QVector<QStringList> table = tableOf(QStringLiteral("Value"));
        QCOMPARE(table.value(0).size(), int(samples.size()) + 1);
        for (int column = 1; column < table[0].size(); ++column) {
            const auto sample = samples.find(table[0][column]);
            QVERIFY2(sample != samples.end(), qPrintable(table[0][column]));
            for (const RecordField &field : fieldsOf(sample->second)) {
                const bool isThere =
                    field.bit != 0 ? (sample->second.vehicle.availabilityMask & field.bit) != 0
                                   : std::any_of(field.values.begin(), field.values.end(),
                                                 [](double value) { return value != 0; });
                const auto row = std::find_if(table.begin(), table.end(), [&](const auto &cells) {
                    return cells[0] == QLatin1String(field.name);
                });
                const bool isTold = row != table.end() && row->value(column) != QStringLiteral("-");
                QVERIFY2(isTold == isThere, qPrintable(table[0][column] + QStringLiteral(": ") +
                                                       QLatin1String(field.name)));
            }
        }
    }

    void namesPortsThatAreListenedTo()
    {
        QStringList ports;
        for (const auto &feed : makeFeeds()) {
            for (const quint16 port : feed->usualPorts())
                ports += QString::number(port);
        }
        const QVector<QStringList> table = tableOf(QStringLiteral("Game"));
        QVERIFY(table.size() > 5);
        for (int row = 2; row < table.size(); ++row)
            QVERIFY2(ports.contains(table[row].last()), qPrintable(table[row].join(u'|')));
        std::sort(ports.begin(), ports.end(),
                  [](const QString &a, const QString &b) { return a.toInt() < b.toInt(); });
        QVERIFY(guide().contains("ports " + ports.join(QStringLiteral(", ")).toUtf8() + " of"));
    }
};

QTEST_GUILESS_MAIN(GamesGuideTest)
#include "GamesGuideTest.moc"
