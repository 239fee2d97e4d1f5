#include "render/DashboardFadeInOut.h"

#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <memory>

namespace {

QVariantMap noTune()
{
    return {{QStringLiteral("dash_motionProfileName"), QString()},
            {QStringLiteral("dash_tuneGroup"), QString()},
            {QStringLiteral("dash_tuneName"), QString()},
            {QStringLiteral("dash_tuneValueName"), QString()},
            {QStringLiteral("dash_tuneValueMin"), 0.0F},
            {QStringLiteral("dash_tuneValueMax"), 0.0F},
            {QStringLiteral("dash_tuneValueCurrent"), 0.0F},
            {QStringLiteral("dash_tuneValueIsInteger"), false},
            {QStringLiteral("dash_tuneChangeCounter"), 0U}};
}

/// A dashboard's root with the panel on top, fed as the dashboard renderer feeds it.
struct Dashboard
{
    QStringList warnings;
    QQmlEngine engine;
    QQuickRenderControl control;
    QQuickWindow window{&control};
    QQuickItem root;
    QVariantMap values = noTune();
    uint frameCounter = 0;
    std::unique_ptr<QQuickItem> panel;

    explicit Dashboard(const QVariantMap &found = {})
    {
        DashboardFadeInOut::registerType();
        engine.setOutputWarningsToStandardError(false);
        QObject::connect(&engine, &QQmlEngine::warnings, &engine,
                         [this](const QList<QQmlError> &errors) {
                             for (const QQmlError &error : errors)
                                 warnings << error.toString();
                         });
        root.setParentItem(window.contentItem());
        root.setSize({480, 272});
        publish(found);
        load();
    }

    void load()
    {
        QQmlComponent component(&engine, QStringLiteral("qrc:/dash/qml/DashboardSysPanel.qml"));
        panel.reset(qobject_cast<QQuickItem *>(component.create()));
        if (!panel)
            qFatal("%s", qPrintable(component.errorString()));
        panel->setParentItem(&root);
    }

    /// The frame counter goes first, as in the table of properties.
    void publish(const QVariantMap &changes = {})
    {
        frameCounter = (frameCounter + 2) % 1000;
        engine.rootContext()->setContextProperty(QStringLiteral("dash_frameCounter1000"),
                                                 frameCounter);
        for (auto it = changes.begin(); it != changes.end(); ++it)
            values[it.key()] = it.value();
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            engine.rootContext()->setContextProperty(it.key(), it.value());
        control.polishItems();
    }

    QList<QQuickItem *> rows() const
    {
        QList<QQuickItem *> shown;
        const QList<QQuickItem *> all = panel->childItems().constFirst()->childItems();
        for (QQuickItem *row : all) {
            if (row->isVisible())
                shown << row;
        }
        return shown;
    }
};

QVariantMap brakeTune()
{
    return {{QStringLiteral("dash_tuneGroup"), QStringLiteral("Chassis")},
            {QStringLiteral("dash_tuneName"), QStringLiteral("<b>Brakes")},
            {QStringLiteral("dash_tuneValueName"), QStringLiteral("bias")},
            {QStringLiteral("dash_tuneValueMin"), 40.0F},
            {QStringLiteral("dash_tuneValueMax"), 60.0F},
            {QStringLiteral("dash_tuneValueCurrent"), 55.25F},
            {QStringLiteral("dash_tuneChangeCounter"), 1U}};
}

QString textOf(const QObject *item)
{
    return item->property("text").toString();
}

QColor colourOf(const QObject *item)
{
    return item->property("color").value<QColor>();
}

} // namespace

class SysPanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstFramesShowNothingOfWhatTheyFind()
    {
        QVariantMap found = brakeTune();
        found[QStringLiteral("dash_motionProfileName")] = QStringLiteral("Rally");
        Dashboard dashboard(found);
        QVERIFY(!dashboard.panel->isVisible());
        for (int frame = 0; frame < 600; ++frame)
            dashboard.publish();
        QVERIFY(!dashboard.panel->isVisible());
        QCOMPARE(dashboard.panel->property("recentMotionProfileName").toString(),
                 QStringLiteral("Rally"));
        QCOMPARE(dashboard.warnings, QStringList());
    }

    void aChangeShowsThePanelAtTheNextPublication_data()
    {
        QTest::addColumn<QVariantMap>("change");
        QTest::newRow("tune") << QVariantMap{{QStringLiteral("dash_tuneChangeCounter"), 1U}};
        QTest::newRow("profile") << QVariantMap{
            {QStringLiteral("dash_motionProfileName"), QStringLiteral("Drift")}};
    }

    void aChangeShowsThePanelAtTheNextPublication()
    {
        QFETCH(QVariantMap, change);
        Dashboard dashboard;
        dashboard.publish();
        dashboard.publish(change);
        QVERIFY(!dashboard.panel->isVisible());
        dashboard.publish();
        QVERIFY(dashboard.panel->isVisible());
        QCOMPARE(dashboard.warnings, QStringList());
    }

    void aReloadStartsOver()
    {
        Dashboard dashboard;
        dashboard.publish(brakeTune());
        dashboard.publish();
        QVERIFY(dashboard.panel->isVisible());
        dashboard.load();
        dashboard.publish();
        dashboard.publish();
        QVERIFY(!dashboard.panel->isVisible());
    }

    void aTuneShowsItsRowsAboveTheProfile()
    {
        Dashboard dashboard;
        dashboard.publish(brakeTune());
        dashboard.publish({{QStringLiteral("dash_motionProfileName"), QStringLiteral("Rally")}});
        dashboard.publish();
        const QList<QQuickItem *> rows = dashboard.rows();
        QCOMPARE(rows.size(), 6);
        QCOMPARE(textOf(rows[0]), QStringLiteral("Category: Chassis"));
        QCOMPARE(textOf(rows[1]), QStringLiteral("<b>Brakes bias"));
        QCOMPARE(rows[2]->size(), QSizeF(440, 30));
        QCOMPARE(rows[3]->size(), QSizeF(10, 10));
        QCOMPARE(textOf(rows[4]), QStringLiteral("Profile:"));
        QCOMPARE(textOf(rows[5]), QStringLiteral("Rally"));
        QCOMPARE(rows[1]->y(), rows[0]->height() + 5);
        QCOMPARE(dashboard.warnings, QStringList());
    }

    void theBarFollowsItsValueAndWritesItOut()
    {
        Dashboard dashboard;
        dashboard.publish(brakeTune());
        dashboard.publish();
        QQuickItem *bar = dashboard.rows().at(2);
        const auto *content = bar->property("contentItem").value<QQuickItem *>();
        QCOMPARE(content->width(), 432.0);
        QCOMPARE(content->childItems().constFirst()->width(), 432.0 * 15.25 / 20);

        const auto written = [bar] {
            return textOf(bar->findChild<QQuickItem *>(QString(), Qt::FindDirectChildrenOnly));
        };
        QCOMPARE(written(), QStringLiteral("55.25"));
        dashboard.publish({{QStringLiteral("dash_tuneValueCurrent"), 57.0F},
                           {QStringLiteral("dash_tuneValueIsInteger"), true}});
        QCOMPARE(written(), QStringLiteral("57"));
        QCOMPARE(content->childItems().constFirst()->width(), 432.0 * 17 / 20);
    }

    void itsFadeAndItsLooksAreThese()
    {
        Dashboard dashboard;
        dashboard.publish(brakeTune());
        dashboard.publish({{QStringLiteral("dash_motionProfileName"), QStringLiteral("Rally")}});
        dashboard.publish();
        const auto *fade = dashboard.panel->findChild<DashboardFadeInOut *>();
        QVERIFY(fade != nullptr);
        QCOMPARE(fade->property("fadeIn").toInt(), 250);
        QCOMPARE(fade->property("fadeOut").toInt(), 250);
        QCOMPARE(fade->property("duration").toInt(), 2000);
        QCOMPARE(colourOf(dashboard.panel.get()), QColor(Qt::black));

        const QList<QQuickItem *> rows = dashboard.rows();
        const auto *written =
            rows[2]->findChild<QQuickItem *>(QString(), Qt::FindDirectChildrenOnly);
        const auto looks = [](const QObject *text, Qt::GlobalColor colour, int pixels, int elide) {
            const auto font = text->property("font").value<QFont>();
            return font.family() == QLatin1String("Lucida Sans Unicode") &&
                   font.pixelSize() == pixels && colourOf(text) == QColor(colour) &&
                   text->property("elide").toInt() == elide;
        };
        QVERIFY(looks(rows[0], Qt::white, 14, Qt::ElideNone));
        QVERIFY(looks(rows[1], Qt::white, 20, Qt::ElideMiddle));
        QVERIFY(looks(written, Qt::black, 20, Qt::ElideNone));
        QVERIFY(looks(rows[4], Qt::white, 14, Qt::ElideNone));
        QVERIFY(looks(rows[5], Qt::white, 20, Qt::ElideMiddle));
        for (const int row : {1, 5})
            QCOMPARE(rows[row]->width(), 440.0); // Without a width nothing is elided.

        const auto *ground = rows[2]->property("background").value<QQuickItem *>();
        const auto *content = rows[2]->property("contentItem").value<QQuickItem *>();
        const QQuickItem *filling = content->childItems().constFirst();
        QCOMPARE(colourOf(ground), QColor(0xE6E6E6));
        QCOMPARE(colourOf(filling), QColor(0xFF6A00));
        QCOMPARE(ground->property("radius").toReal(), 3.0);
        QCOMPARE(filling->property("radius").toReal(), 3.0);
    }

    void aProfileAloneStandsAtTheTop()
    {
        Dashboard dashboard;
        dashboard.publish({{QStringLiteral("dash_motionProfileName"), QStringLiteral("Drift")}});
        dashboard.publish();
        const QList<QQuickItem *> rows = dashboard.rows();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(textOf(rows[0]), QStringLiteral("Profile:"));
        QCOMPARE(rows[0]->y(), 0.0);
        QCOMPARE(rows[0]->mapToItem(dashboard.panel.get(), {0, 0}), QPointF(20, 20));
        QCOMPARE(textOf(rows[1]), QStringLiteral("Drift"));
    }

    void thePanelScalesAndCentresItselfOnItsParent()
    {
        Dashboard dashboard;
        QCOMPARE(dashboard.panel->size(), QSizeF(480, 272));
        QCOMPARE(dashboard.panel->z(), 1.0);
        dashboard.root.setSize({960, 600});
        QCOMPARE(dashboard.panel->scale(), 2.0);
        QCOMPARE(dashboard.panel->mapToItem(&dashboard.root, {240, 136}), QPointF(480, 300));
        dashboard.panel->setParentItem(nullptr);
        QCOMPARE(dashboard.panel->scale(), 1.0);
        QCOMPARE(dashboard.warnings, QStringList());
    }

    void theDocumentLoadsBeforeAnythingIsPublished()
    {
        DashboardFadeInOut::registerType();
        QQmlEngine engine;
        engine.setOutputWarningsToStandardError(false);
        QQmlComponent component(&engine, QStringLiteral("qrc:/dash/qml/DashboardSysPanel.qml"));
        const std::unique_ptr<QObject> panel(component.create());
        QVERIFY2(panel, qPrintable(component.errorString()));
    }
};

QTEST_MAIN(SysPanelTest)
#include "SysPanelTest.moc"
