#include "dash/HostedDocument.h"
#include "support/Shouter.h"
#include "views/EditorBench.h"

#include <QtTest/QtTest>

#include <utility>
#include <vector>

namespace {

const QString Document = QStringLiteral("qrc:/dash/qml/DashboardEditor.qml");

struct EditorDocument : HostedDocument
{
    explicit EditorDocument(double scale = 1.0)
        : HostedDocument(Document, QStringLiteral("dashEditor"), scale)
    {
        root->setSize(QSizeF(900, 765) * scale);
    }
    explicit EditorDocument(IViewModel &model)
        : HostedDocument(Document, model)
    {
        root->setSize(QSizeF(900, 765));
    }

    QQuickItem *find(const char *text) const
    {
        QQuickItem *item = withText(root.get(), QLatin1String(text));
        if (!item)
            qFatal("no item says \"%s\"", text);
        return item;
    }

    /// The item that stands `distance` places behind the one with this text.
    QQuickItem *behind(const char *text, int distance) const
    {
        const QQuickItem *item = find(text);
        const QList<QQuickItem *> row = item->parentItem()->childItems();
        return row.at(row.indexOf(const_cast<QQuickItem *>(item)) + distance);
    }
    QQuickItem *slider(const char *caption) const { return behind(caption, 1); }
    QQuickItem *previewFrame() const { return behind(FirstRow, 3); }

    static constexpr const char *FirstRow = "Path to dashboard file:";
};

QRectF place(const QQuickItem &item)
{
    return {item.position(), item.size()};
}

} // namespace

class EditorDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStartSetsTheSizesAndLoadsWithoutAWarning()
    {
        EditorDocument document(2.0);
        // Nothing else is called: the model's own seeds stand until a control is touched.
        QCOMPARE(document.takeCalls(), QStringList({QStringLiteral("setInitialSize(1800, 1530)")}));
        QCOMPARE(document.hostWindow()->property("minimumWidth").toInt(), 1800);
        QCOMPARE(document.hostWindow()->property("minimumHeight").toInt(), 1530);
        QCOMPARE(document.root->property("title").toString(), QStringLiteral("Dashboard Editor"));
        QVERIFY(document.root->property("helpButtonVisible").toBool());
        QVERIFY(!document.root->property("minimizeButtonVisible").toBool());
        QVERIFY(document.find("dash_a\ndash_b")->property("readOnly").toBool());
        QCOMPARE(document.warnings, QStringList());
    }

    void everyTextCanBeTranslated()
    {
        const QStringList notOurs{"dash_a\ndash_b"_q, "<a href='#'>Configuration</a>"_q};
        QStringList texts = EditorDocument().texts();
        QCOMPARE(texts.filter("automatically refreshed"_q),
                 QStringList({"Below preview is automatically refreshed if the dashboard file is "
                              "changed in external editor."_q}));
        for (QString &text : texts) {
            text = text.toUpper();
            for (const QString &other : notOurs)
                text.replace(other.toUpper(), other);
        }
        const Shouter shouter("DashboardEditor");
        EditorDocument document;
        QCOMPARE(document.texts(), texts);
        document.takeCalls();
        QMetaObject::invokeMethod(document.find("..."), "clicked");
        QCOMPARE(document.takeCalls(), QStringList({"getExistingFile(true, SELECT MAIN DASHBOARD "
                                                    "QML FILE, MAIN QML FILE (*.QML), )"_q}));
    }

    void everyPartHasItsPlace()
    {
        const EditorDocument document;
        const QQuickItem &content = *document.previewFrame()->parentItem()->parentItem();
        QCOMPARE(place(content), QRectF(0, 8, 900, 757));
        const QQuickItem &panel = *content.childItems().at(1);
        QCOMPARE(place(panel), QRectF(634, 6, 260, 745));
        QQuickItem *fields = document.find("dash_a\ndash_b");
        QCOMPARE(fields->position(), QPointF(8, 8));
        QCOMPARE(fields->width(), 260.0 - 8 - 16);
        QCOMPARE(panel.childItems().constFirst()->property("contentHeight").toReal(),
                 fields->property("paintedHeight").toReal() + 16);
        QVERIFY(fields->property("selectByMouse").toBool());
        QVERIFY(fields->clip());

        const QQuickItem &row = *document.find("...")->parentItem();
        QCOMPARE(row.width(), 634.0);
        const QSizeF pathSize = row.childItems().constFirst()->size();
        QCOMPARE(pathSize, QSizeF(0.65 * 634, document.find("...")->height()));
        const QQuickItem &frame = *document.previewFrame();
        QVERIFY(qAbs(frame.x() - (634 - frame.width()) / 2) < 1);
        const QQuickItem &picture = *frame.childItems().constFirst();
        QCOMPARE(picture.property("fillMode").toInt(), 1); // PreserveAspectFit
        QVERIFY(!picture.property("cache").toBool());
        QVERIFY(!picture.property("asynchronous").toBool());

        for (const char *caption : {"Steering rotation:", "Gas pedal:", "Max RPM:"}) {
            const QQuickItem &value = *document.behind(caption, 2);
            QCOMPARE(value.size(), QSizeF(50, document.slider(caption)->height()));
            QCOMPARE(value.property("horizontalAlignment").toInt(), int(Qt::AlignRight));
        }
        // Nothing is polished in a window that isn't shown.
        for (const char *first : {"Gas pedal:", "Pause"})
            QMetaObject::invokeMethod(document.find(first)->parentItem(), "forceLayout");
        // Two sliders side by side fill the grid, and three boxes stand in a row.
        QCOMPARE(document.slider("Steering rotation:")->y(), document.slider("Gas pedal:")->y());
        QCOMPARE(document.behind("Gas pedal:", 2)->x() + 50, 634.0);
        QVERIFY(document.slider("Brake pedal:")->y() > document.slider("Gas pedal:")->y());
        const QPointF step = document.find("Use mph instead of km/h")->position() -
                             document.find("Show debug markers")->position();
        QCOMPARE(step, QPointF(0, document.find("Pause")->height() + 8));
        QCOMPARE(document.find("Show system panel")->x(), 150.0 + 16);
    }

    void everyControlReachesTheRealViewModel()
    {
        EditorBench bench;
        bench.script().fields = {"dash_b"_q, "dash_a"_q};
        EditorBench::storePath(bench.file());
        bench.make();
        EditorDocument document(*bench.model);
        QVERIFY(document.find("dash_a\ndash_b") != nullptr);
        QVERIFY(document.find(qUtf8Printable(bench.model->currentPath())) != nullptr);
        QMetaObject::invokeMethod(document.find("Code"), "clicked");
        QCOMPARE(bench.navigation.shown.size(), 1U);
        QVERIFY(bench.script().count("render"_q) > 0);

        const std::pair<const char *, int> sliders[] = {
            {"Steering rotation:", -50}, {"Gas pedal:", 11}, {"Brake pedal:", 12},
            {"Clutch pedal:", 13},       {"RPM:", 5000},     {"Max RPM:", 8000}};
        for (const auto &[caption, value] : sliders)
            document.slider(caption)->setProperty("value", value);
        const VehicleTelemetry vehicle = bench.published().vehicle;
        QCOMPARE(QList<int>({int(vehicle.steeringPercent), int(vehicle.gasPedalPercent),
                             int(vehicle.brakePedalPercent), int(vehicle.clutchPedalPercent),
                             int(vehicle.rpm), int(vehicle.maxRpm)}),
                 QList<int>({-50, 11, 12, 13, 5000, 8000}));

        const auto check = [&document](const char *box) {
            document.find(box)->setProperty("checked", true);
        };
        const std::pair<const char *, std::uint32_t> flags[] = {
            {"Session flag - yellow", 0x1000},
            {"Session flag - blue", 0x100},
            {"Session flag - black", 0x40},
            {"Session flag - black/white", 0x4000},
            {"DRS Available", 0x10}};
        for (const auto &[box, bit] : flags) {
            QCOMPARE(bench.published().vehicle.statusFlags & bit, 0U);
            check(box);
            QCOMPARE(bench.published().vehicle.statusFlags & bit, bit);
        }
        check("Show debug markers");
        QVERIFY(bench.published().showMarkers);
        check("Show system panel");
        QVERIFY(!bench.published().motionProfileName.isEmpty());
        check("Pause");
        QVERIFY(bench.published().paused);
        check("Use mph instead of km/h");
        QVERIFY(bench.published().useMph);
        QMetaObject::invokeMethod(document.root.get(), "closeClicked");
        QCOMPARE(document.warnings, QStringList());
    }

    void windowAndBarReachTheHost()
    {
        EditorDocument document;
        document.takeCalls();
        QMetaObject::invokeMethod(document.root.get(), "helpClicked");
        QMetaObject::invokeMethod(document.root.get(), "closeClicked");
        QMetaObject::invokeMethod(document.find("OK"), "clicked");
        QQuickItem *note = document.find(
            "<strong>NOTE:</strong> Above controls are only for preview purpose. If you wish to "
            "use mph (miles) instead of km/h during gameplay, change units in "
            "<a href='#'>Configuration</a>.");
        QMetaObject::invokeMethod(note, "linkActivated", Q_ARG(QString, QStringLiteral("#")));
        QCOMPARE(document.takeCalls(),
                 QStringList({QStringLiteral("showView(HelpBrowser, dashboards)"),
                              QStringLiteral("ok()"), QStringLiteral("ok()"),
                              QStringLiteral("showView(SoftwareConfiguration)")}));
    }

    void theBrowseButtonTakesOverAChosenFileOnly()
    {
        EditorDocument document;
        document.takeCalls();
        QObject *model = document.viewModel();
        model->setProperty("path", QStringLiteral("old.qml"));
        QMetaObject::invokeMethod(document.find("..."), "clicked");
        QCOMPARE(model->property("path").toString(), QStringLiteral("old.qml"));
        QCOMPARE(document.takeCalls(),
                 QStringList({QStringLiteral("getExistingFile(true, Select main dashboard QML "
                                             "file, Main QML file (*.qml), old.qml)")}));
        document.host->setProperty("chosenFile", QStringLiteral("new.qml"));
        QMetaObject::invokeMethod(document.find("..."), "clicked");
        QCOMPARE(model->property("path").toString(), QStringLiteral("new.qml"));
        QVERIFY(document.find("new.qml")->property("readOnly").toBool());
    }

    void theCodeButtonNeedsAPath()
    {
        EditorDocument document;
        document.takeCalls();
        QQuickItem *code = document.find("Code");
        QVERIFY(!code->isEnabled());
        document.viewModel()->setProperty("path", QStringLiteral("Dash.qml"));
        QVERIFY(code->isEnabled());
        QMetaObject::invokeMethod(code, "clicked");
        QCOMPARE(document.takeCalls(), QStringList({QStringLiteral("openCode()")}));
    }

    void slidersHaveTheirRangesAndReachTheModel_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QList<double>>("range");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("call");
        const auto row = [](const char *caption, const QList<double> &range, const char *shown,
                            const char *call) {
            QTest::newRow(caption) << QString::fromLatin1(caption) << range
                                   << QString::fromLatin1(shown) << QString::fromLatin1(call);
        };
        row("Steering rotation:", {-100, 100, 0}, "42 [%]", "setRotation(42)");
        row("Gas pedal:", {0, 100, 0}, "42 [%]", "setGasPedal(42)");
        row("Brake pedal:", {0, 100, 0}, "42 [%]", "setBrakePedal(42)");
        row("Clutch pedal:", {0, 100, 0}, "42 [%]", "setClutchPedal(42)");
        row("RPM:", {0, 13000, 700}, "42", "setRpm(42, 13000)");
        row("Max RPM:", {4000, 13000, 13000}, "42", "setRpm(700, 42)");
    }

    void slidersHaveTheirRangesAndReachTheModel()
    {
        QFETCH(QString, caption);
        QFETCH(QList<double>, range);
        QFETCH(QString, shown);
        QFETCH(QString, call);
        EditorDocument document;
        document.takeCalls();
        const QByteArray text = caption.toLatin1();
        QQuickItem *slider = document.slider(text.constData());
        QCOMPARE(slider->property("minimumValue").toDouble(), range[0]);
        QCOMPARE(slider->property("maximumValue").toDouble(), range[1]);
        QCOMPARE(slider->property("value").toDouble(), range[2]);
        QCOMPARE(slider->property("stepSize").toDouble(), 1.0);
        slider->setProperty("value", 42);
        QCOMPARE(document.takeCalls(), QStringList({call}));
        QCOMPARE(document.behind(text.constData(), 2)->property("text").toString(), shown);
    }

    void theLimitOfTheRpmFollowsTheMaxRpm()
    {
        EditorDocument document;
        document.slider("Max RPM:")->setProperty("value", 5000);
        QCOMPARE(document.slider("RPM:")->property("maximumValue").toDouble(), 5000.0);
    }

    void checkBoxesReachTheModel()
    {
        EditorDocument document;
        document.takeCalls();
        const std::vector<std::pair<const char *, const char *>> boxes = {
            {"Show debug markers", "setShowMarkets"},
            {"Show system panel", "setSystemPanel"},
            {"Pause", "setPaused"},
            {"Use mph instead of km/h", "setUseMph"},
            {"Session flag - yellow", "setYellowFlag"},
            {"Session flag - blue", "setBlueFlag"},
            {"Session flag - black", "setBlackFlag"},
            {"Session flag - black/white", "setBlackAndWhiteFlag"},
            {"DRS Available", "setDrsAvailable"}};
        for (const auto &[text, invokable] : boxes) {
            QQuickItem *box = document.find(text);
            QVERIFY(!box->property("checked").toBool());
            box->setProperty("checked", true);
            box->setProperty("checked", false);
            const QString name = QString::fromLatin1(invokable);
            QCOMPARE(document.takeCalls(), QStringList({name + QStringLiteral("(true)"),
                                                        name + QStringLiteral("(false)")}));
        }
    }

    void thePreviewTakesTheLargestSizeThatFits_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<QSizeF>("frame");
        // The side panel and its margin take 266 of the width.
        QTest::newRow("narrow and tall") << 1.0 << QSizeF(266 + 427, 1500) << QSizeF(427, 240);
        QTest::newRow("wide and low") << 1.0 << QSizeF(2000, 535 + 120) << QSizeF(213.5, 120);
        QTest::newRow("scaled") << 2.0 << QSizeF(3000, (535 + 240) * 2) << QSizeF(854, 480);
    }

    void thePreviewTakesTheLargestSizeThatFits()
    {
        QFETCH(double, scale);
        QFETCH(QSizeF, size);
        QFETCH(QSizeF, frame);
        EditorDocument document(scale);
        document.root->setSize(size);
        const QSizeF actual = document.previewFrame()->size();
        QVERIFY2(qFuzzyCompare(actual.width(), frame.width()) &&
                     qFuzzyCompare(actual.height(), frame.height()),
                 qPrintable(QStringLiteral("%1 x %2").arg(actual.width()).arg(actual.height())));
    }

    void everyNewFrameMakesANewRequestAtTheWidthOfThePreview()
    {
        EditorDocument document;
        document.root->setSize({2000, 535 + 480});
        document.imageRequests.clear();
        QMetaObject::invokeMethod(document.viewModel(), "previewChanged");
        QMetaObject::invokeMethod(document.viewModel(), "previewChanged");
        QCOMPARE(document.imageRequests, QStringList({QStringLiteral("preview?id=true 854"),
                                                      QStringLiteral("preview?id=false 854")}));
        QCOMPARE(document.previewFrame()->childItems().constFirst()->size(), QSizeF(854, 483));
        QCOMPARE(document.warnings, QStringList());
    }
};

QTEST_MAIN(EditorDocumentTest)
#include "EditorDocumentTest.moc"
