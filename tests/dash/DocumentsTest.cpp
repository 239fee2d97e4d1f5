#include "dash/HostedDocument.h"
#include "render/DashboardFadeInOut.h"
#include "render/TelemetryPublisher.h"
#include "support/Shouter.h"
#include "views/DashboardWindowVM.h"
#include "views/EditorRig.h"

#include <QtGui/QMouseEvent>
#include <QtTest/QtTest>

namespace {

/// The window's document with a simulated mouse.
struct WindowDocument
{
    FakeEngine engine;
    DashboardWindowVM model{&engine};
    HostedDocument document{"qrc:/dash/qml/DashboardWindow.qml"_q, model};
    QQuickWindow *window = &document.window;

    WindowDocument()
    {
        window->resize(480, 272);
        window->contentItem()->setSize({480, 272});
    }
    QString log() const { return document.host->property("log").toString().trimmed(); }
    void moveTo(QPoint cursor) const
    {
        document.host->setProperty("cursor", QPointF(cursor));
        QTest::mouseMove(window, {100 + cursor.x() % 7, 150}); // The window follows.
    }
    void press() const { QTest::mousePress(window, Qt::LeftButton); }
    void release() const { QTest::mouseRelease(window, Qt::LeftButton); }
    void pressTwice() const
    {
        press();
        release();
        press();
        QMouseEvent event(QEvent::MouseButtonDblClick, {100, 150}, Qt::LeftButton, Qt::LeftButton,
                          {});
        QCoreApplication::sendEvent(window, &event);
    }
};

/// The item with this text, or the one `behind` places after it.
QQuickItem *itemAt(const HostedDocument &document, const QString &text, int behind = 0)
{
    const auto items = document.root->findChildren<QQuickItem *>();
    for (QQuickItem *item : items) {
        if (item->property("text") != text)
            continue;
        const QList<QQuickItem *> row = item->parentItem()->childItems();
        return row.value(row.indexOf(item) + behind);
    }
    return nullptr;
}

/// The system panel alone, fed by real publications.
struct Panel
{
    QQmlEngine engine;
    QString profile;
    TuneInfo tune{"Chassis"_q, "<b>Brakes"_q, "bias"_q, 40, 60, 55.25F, false, true, false, 7};
    TelemetryPublisher publisher{[this](const QString &name, const QVariant &value) {
        engine.rootContext()->setContextProperty(name, value);
    }};
    std::unique_ptr<QQuickItem> item;

    void load()
    {
        DashboardFadeInOut::registerType();
        publish();
        QQmlComponent component(&engine, "qrc:/dash/qml/DashboardSysPanel.qml"_q);
        item.reset(qobject_cast<QQuickItem *>(component.create()));
    }
    void publish() { publisher.publish({{}, {}, {}, profile, tune}); }
    QString texts() const
    {
        QStringList shown;
        const auto items = item->findChildren<QQuickItem *>();
        for (const QQuickItem *row : items) {
            if (row->isVisible() && row->property("text").isValid())
                shown += row->property("text").toString();
        }
        return shown.join(u'|');
    }
};

} // namespace

/// The library's three documents.
class DocumentsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDragMovesTheWindowByTheWayOfTheCursor()
    {
        const WindowDocument window;
        window.moveTo({500, 500});
        window.press();
        window.moveTo({510, 495});
        window.moveTo({531, 480});
        window.release();
        window.moveTo({600, 600});
        QCOMPARE(window.log(), "drag move 110 195 move 131 180 drop"_q);
    }

    void aDoubleClickSwitchesToFullScreenInWhichNothingMoves()
    {
        const WindowDocument window;
        window.pressTwice();
        window.release();
        window.press();
        window.moveTo({42, 42});
        window.release();
        window.pressTwice();
        window.moveTo({93, 93}); // This press no longer counts.
        QCOMPARE(window.log(), "drag drop drag full normal"_q);
    }

    void everyControlOfTheEditorReachesItsViewModel()
    {
        EditorRig rig;
        rig.model->setPath(rig.file());
        const Shouter translator("DashboardEditor");
        const HostedDocument document("qrc:/dash/qml/DashboardEditor.qml"_q, *rig.model);
        const QStringList sliders{"Steering rotation:"_q, "Gas pedal:"_q, "Brake pedal:"_q,
                                  "Clutch pedal:"_q,      "RPM:"_q,       "Max RPM:"_q};
        const QVector<int> values{-50, 11, 12, 13, 5000, 8000};
        for (int i = 0; i < values.size(); ++i)
            itemAt(document, sliders[i].toUpper(), 1)->setProperty("value", values[i]);
        const VehicleTelemetry vehicle = rig.published().vehicle;
        QCOMPARE(QVector<int>({vehicle.steeringPercent, vehicle.gasPedalPercent,
                               vehicle.brakePedalPercent, vehicle.clutchPedalPercent,
                               int(vehicle.rpm), int(vehicle.maxRpm)}),
                 values);
        QCOMPARE(itemAt(document, "RPM:"_q, 1)->property("maximumValue").toInt(), 8000);

        // Status bits; markers, pause, mph; the panel's profile.
        const std::pair<QString, QString> boxes[] = {
            {"DRS Available"_q, "10 000"_q},
            {"Session flag - black"_q, "50 000"_q},
            {"Session flag - blue"_q, "150 000"_q},
            {"Session flag - yellow"_q, "1150 000"_q},
            {"Session flag - black/white"_q, "5150 000"_q},
            {"Show debug markers"_q, "5150 100"_q},
            {"Pause"_q, "5150 110"_q},
            {"Use mph instead of km/h"_q, "5150 111"_q},
            {"Show system panel"_q, "5150 111 Demo Profile"_q},
        };
        for (const auto &[box, state] : boxes) {
            itemAt(document, box.toUpper())->setProperty("checked", true);
            const PublishedRecords now = rig.published();
            const auto actual = QString::asprintf("%x %d%d%d ", now.vehicle.statusFlags & 0x5150,
                                                  now.showMarkers, now.paused, now.useMph) +
                                now.motionProfileName;
            QCOMPARE(actual.trimmed(), state);
        }
        QMetaObject::invokeMethod(itemAt(document, "CODE"_q), "clicked");
        QCOMPARE(rig.navigation.shown.size(), 1U);
    }

    void aChangeShowsThePanelAtTheNextPublication()
    {
        const Shouter translator("DashboardSysPanel");
        Panel panel;
        const std::function<void()> changes[] = {[&] { panel.profile = "Rally"_q; },
                                                 [&] { ++panel.tune.changeCounter; }};
        for (const auto &change : changes) {
            panel.load(); // What it finds at its start isn't shown.
            panel.publish();
            change();
            panel.publish();
            QVERIFY(!panel.item->isVisible());
            panel.publish();
            QVERIFY(panel.item->isVisible());
        }
        QCOMPARE(panel.texts(), "CATEGORY: Chassis|<b>Brakes bias|55.25|PROFILE:|Rally"_q);
        panel.tune.name.clear();
        panel.publish();
        QCOMPARE(panel.texts(), "PROFILE:|Rally"_q);
    }
};

QTEST_MAIN(DocumentsTest)
#include "DocumentsTest.moc"
