#include "FakeStore.h"
#include "WindowRig.h"
#include "support/LogCapture.h"
#include "telemetry/VehicleNames.h"
#include "ui/GalleryWindow.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtQml/QQmlEngine>

namespace {

const QString View = "DashboardEditor"_q;

// Gas makes it red, brake green.
constexpr const char *Pedals =
    "Rectangle { width: 480; height: 272; color: Qt.rgba(dash_gasPedal_Percent / 100, "
    "dash_brakePedal_Percent / 100, 0, 1) }";

/// The slider that stands behind this caption.
QQuickItem *slider(const QQuickWindow *window, const char *caption)
{
    const QQuickItem *label = find(window, "text", QString::fromUtf8(caption));
    const QList<QQuickItem *> cells = label->parentItem()->childItems();
    return cells.at(cells.indexOf(const_cast<QQuickItem *>(label)) + 1);
}

} // namespace

/// The editor and its file dialog, under a window manager.
class EditorWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        rig = std::make_unique<ViewRig>();
        log = std::make_unique<LogCapture>();
        document = rig->document(Pedals);
        window = rig->open(View, document);
        QVERIFY(window != nullptr);
    }

    void cleanup()
    {
        rig.reset();
        log.reset();
    }

    void itShowsItsDocumentAndWhatBecomesOfIt()
    {
        QCOMPARE(window->size(), QSize(900, 765));
        QCOMPARE(window->minimumSize(), window->size());
        QTRY_COMPARE(previewColor(), QColor(Qt::black));
        rig->document("Rectangle { width: 480; height: 272; color: 'blue' }");
        QTRY_COMPARE(previewColor(), QColor(Qt::blue));
        const QString other = rig->home.path("/Other.qml");
        writeFile(other,
                  "import QtQuick 2.15\nRectangle { width: 480; height: 272; color: 'lime' }");
        QCOMPARE(rig->open(View, other), window);
        QTRY_COMPARE(previewColor(), QColor(Qt::green));
        QCOMPARE(log->lines.filter("DASH"_q), log->lines);
    }

    void itShowsWhatItsDashboardSays()
    {
        const auto bar = [this] { return find(window, "objectName", "documentMessages"_q); };
        rig->navigation.tellViews("/other/Dash.qml"_q, 1, "no"_q);
        QVERIFY(bar() == nullptr);
        for (int i = 0; i <= ViewWindow::MostMessages; ++i)
            rig->navigation.tellViews(document, 12, QString::number(i));
        QTRY_COMPARE(bar()->property("text").toString(), "Dash.qml:12: 100"_q);
        QCOMPARE(window->messages().size(), ViewWindow::MostMessages);
        rig->open(View, "/other/Dash.qml"_q);
        QVERIFY(bar() == nullptr);
    }

    void everythingFitsInItsWindow()
    {
        window->setMinimumSize({}); // As on a screen that is too small for it.
        for (const QSize size : {QSize(1270, 765), QSize(900, 860), QSize(736, 436)}) {
            window->resize(size);
            QTRY_COMPARE(window->rootObject()->size().toSize(), size);
            const QQuickItem *preview = find(window, "fillMode", 1);
            QVERIFY(4 * preview->height() > size.height());
            QVERIFY(preview->height() < preview->parentItem()->height() + 4);
            QVERIFY(note()->mapToScene({0, note()->height()}).y() <=
                    button("OK")->mapToScene({}).y());
        }
    }

    void slidersReachThePreview()
    {
        QQuickItem *rpm = slider(window, "RPM:");
        const auto value = [rpm] { return rpm->property("value").toReal(); };
        const auto press = [&](int key) {
            rpm->forceActiveFocus(Qt::TabFocusReason);
            keys(window, {key});
            return value();
        };
        QCOMPARE(press(Qt::SHIFT | Qt::Key_Right), 701.0);
        QCOMPARE(press(Qt::Key_Right), 801.0);
        QCOMPARE(press(Qt::Key_PageDown), 0.0);
        // Between two steps lies nothing, wherever the mouse lets go.
        QTest::mouseClick(window, Qt::LeftButton, {}, middle(rpm) + QPoint(11, 0));
        QVERIFY(value() > 5000);
        QCOMPARE(value(), qreal(qRound(value())));
        slider(window, "Max RPM:")->setProperty("value", 4000);
        QCOMPARE(value(), 4000.0);
        slider(window, "Gas pedal:")->setProperty("value", 100);
        QTRY_COMPARE(previewColor(), QColor(Qt::red));
        slider(window, "Brake pedal:")->setProperty("value", 100);
        QTRY_COMPARE(previewColor(), QColor(Qt::yellow));
    }

    void theFileDialogWorksByKeys()
    {
        const QString folder = rig->home.path("/folder");
        const QString other = folder + "/deeper/Other.qml"_q;
        for (const QString &file : {folder + "/Dash.qml"_q, folder + "/Dash.txt"_q, other})
            writeFile(file, "Item {}");
        answerDialog([](QQuickView *dialog) { keys(dialog, {Qt::Key_Escape}); });
        QCOMPARE(window->argument(), QVariant(document));

        answerDialog([&](QQuickView *dialog) {
            QQuickItem *path = find(dialog, "selectByMouse", true);
            path->forceActiveFocus();
            path->setProperty("text", folder + "/missing"_q);
            keys(dialog, {Qt::Key_Return});
            QVERIFY(dialog->rootObject()->property("problem").toString().contains("missing"_q));
            path->setProperty("text", folder);
            keys(dialog, {Qt::Key_Return});
            // The folder in it and the document.
            QTRY_COMPARE(find(dialog, "currentIndex", 0)->property("count").toInt(), 2);
            type(dialog, "da");
            keys(dialog, {Qt::Key_Return});
        });
        QCOMPARE(window->argument(), QVariant(folder + "/Dash.qml"_q));

        // What has been typed wins over what is selected in the list.
        answerDialog([&](QQuickView *dialog) {
            find(dialog, "selectByMouse", true)->setProperty("text", other);
            click(find(dialog, "primary", true));
        });
        QCOMPARE(window->argument(), QVariant(other));

        // The folder of a lost file gives way to the one above it.
        QVERIFY(QDir(folder + "/deeper"_q).removeRecursively());
        answerDialog([&](QQuickView *dialog) {
            const auto path = [dialog] { return dialog->rootObject()->property("folderPath"); };
            QCOMPARE(path(), QVariant(folder));
            keys(dialog, {Qt::Key_Backspace});
            QTRY_COMPARE(path(), QVariant(rig->home.path()));
        });
    }

    void itEndsWhileItsFileDialogIsOpen()
    {
        const QPointer<ViewWindow> editor(window);
        QPoint offset(99, 99);
        answerDialog([&](const QQuickView *dialog) {
            offset = dialog->geometry().center() - editor->geometry().center();
            editor->hide();
        });
        QVERIFY(offset.manhattanLength() <= 2);
        editor->show();
        QVERIFY(QTest::qWaitForWindowActive(editor));
        answerDialog([&](const QQuickView *) { rig->navigation.closeViews(); });
        QTRY_VERIFY(editor == nullptr);
    }

    void aRenamedDashboardStaysOpen()
    {
        FakeStore store;
        const auto id = store.add("Old"_q);
        VehicleNames vehicles;
        const TelemetryMonitor monitor;
        const GalleryWindow gallery(rig->navigation, *rig->engine, store, vehicles, monitor, {});
        rig->open(View, store.profile(id)->qmlPath);
        store.performAction(id, DashboardProfileAction::Rename, "New"_q);
        QTRY_COMPARE(window->argument(), QVariant("/dashboards/New/Dash.qml"_q));
    }

    void everyRoadClosesItAlone()
    {
        const QSignalSpy quit(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
        const std::vector<std::function<void()>> roads{[this] { click(button("OK")); },
                                                       [this] { window->close(); },
                                                       [this] { Q_EMIT window->engine()->quit(); }};
        for (const auto &close : roads) {
            window = rig->open(View);
            const QPointer<ViewWindow> closing(window);
            close();
            QTRY_VERIFY(closing == nullptr);
        }
        QCOMPARE(rig->navigation.openViews(), QStringList());
        QCOMPARE(quit.count(), 0);
    }

    void itMayBeReplacedByWhatItAsksFor()
    {
        rig->navigation.addTarget("SoftwareConfiguration"_q, [this](const QVariant &) {
            rig->navigation.window(View)->close();
            rig->navigation.showView(View);
        });
        const QPointer<ViewWindow> closing(window);
        note()->forceActiveFocus(Qt::TabFocusReason);
        keys(window, {Qt::Key_Return});
        QTRY_VERIFY(closing == nullptr);
        QVERIFY(QTest::qWaitForWindowActive(rig->navigation.window(View)));
    }

    void whatIsNotThereIsToldToTheUser()
    {
        const QSignalSpy failures(&rig->navigation, &Navigation::failed);
        rig->navigation.showView("NoSuchView"_q);
        QVERIFY(failures.value(0).value(0).toString().contains("NoSuchView"_q));
        HostWindow broken("Broken"_q, rig->navigation);
        broken.open(QUrl("qrc:/no/such/View.qml"_q));
        QVERIFY(broken.documentErrors().contains("/no/such/View.qml"_q));
        QVERIFY(find(&broken, "text", broken.documentErrors()) != nullptr);
    }

    void withoutAccelerationItSaysSo()
    {
        rig.reset();
        rig = std::make_unique<ViewRig>(false);
        window = rig->open(View);
        QVERIFY(find(window, "text", "Not available without hardware acceleration"_q) != nullptr);
    }

private:
    QQuickItem *button(const char *text) const
    {
        return find(window, "text", QString::fromUtf8(text));
    }
    QQuickItem *note() const { return find(window, "wrapMode", 4); }

    QColor previewColor() const
    {
        const QQuickItem *preview = find(window, "fillMode", 1);
        return preview != nullptr ? window->grabWindow().pixelColor(middle(preview)) : QColor();
    }

    /// Opens the file dialog and acts on it; it runs an event loop of its own.
    void answerDialog(const std::function<void(QQuickView *)> &answer) const
    {
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&] {
            const QPointer<QWindow> dialog(QGuiApplication::modalWindow());
            if (dialog == nullptr || QGuiApplication::focusWindow() != dialog)
                return;
            look.stop();
            answer(qobject_cast<QQuickView *>(dialog));
            if (dialog != nullptr)
                dialog->close(); // In case the answer failed half-way.
        });
        look.start(10);
        click(button("..."));
        QVERIFY(!look.isActive());
    }

    std::unique_ptr<ViewRig> rig;
    std::unique_ptr<LogCapture> log;
    QString document;
    ViewWindow *window = nullptr;
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<EditorWindowTest>(argc, argv);
}

#include "EditorWindowTest.moc"
