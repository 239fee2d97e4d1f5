#include "FakeStore.h"
#include "WindowRig.h"
#include "telemetry/VehicleNames.h"
#include "ui/GalleryWindow.h"

#include <QtCore/QTimer>
#include <QtQml/QQmlEngine>

namespace {

constexpr const char *RedByGas =
    "Rectangle { width: 480; height: 272; color: Qt.rgba(dash_gasPedal_Percent / 100, 0, 0, 1) }";

} // namespace

/// The editor and its file dialog, under a window manager.
class EditorWindowTest : public ViewTest
{
    Q_OBJECT

public:
    EditorWindowTest()
        : ViewTest("DashboardEditor"_q, RedByGas)
    {
    }

private Q_SLOTS:
    void itShowsItsDocumentAndWhatBecomesOfIt()
    {
        QCOMPARE(window->size(), QSize(900, 765));
        QCOMPARE(window->minimumSize(), window->size());
        QTRY_COMPARE(previewColor(), QColor(Qt::black));
        write("Rectangle { width: 480; height: 272; color: 'blue' }");
        QTRY_COMPARE(previewColor(), QColor(Qt::blue));
        document = home->path("/Other.qml");
        write("Rectangle { width: 480; height: 272; color: 'lime' }");
        open(document);
        QTRY_COMPARE(previewColor(), QColor(Qt::green));
    }

    void itShowsWhatItsDashboardSays()
    {
        const auto bar = [this] { return item("objectName", "documentMessages"_q); };
        navigation->tellViews("/other/Dash.qml"_q, 1, "no"_q);
        QVERIFY(bar() == nullptr);
        for (int i = 0; i <= ViewWindow::MostMessages; ++i)
            navigation->tellViews(document, 12, QString::number(i));
        QTRY_COMPARE(bar()->property("text").toString(), "Dash.qml:12: 100"_q);
        QCOMPARE(window->messages().size(), ViewWindow::MostMessages);
        open("/other/Dash.qml"_q);
        QVERIFY(bar() == nullptr);
    }

    void slidersReachThePreview()
    {
        QQuickItem *rpm = slider("RPM:");
        const auto press = [&](int key) {
            rpm->forceActiveFocus(Qt::TabFocusReason);
            keys(window, {key});
            return rpm->property("value").toReal();
        };
        QCOMPARE(press(Qt::SHIFT + Qt::Key_Right), 701.0);
        QCOMPARE(press(Qt::Key_Right), 801.0);
        QCOMPARE(press(Qt::Key_PageDown), 0.0);
        // Between two steps lies nothing, wherever the mouse lets go.
        QTest::mouseClick(window, Qt::LeftButton, {}, middle(rpm) + QPoint(11, 0));
        const qreal value = rpm->property("value").toReal();
        QVERIFY(value > 5000 && value == qRound(value));
        slider("Gas pedal:")->setProperty("value", 100);
        QTRY_COMPARE(previewColor(), QColor(Qt::red));
    }

    void theFileDialogWorksByKeys()
    {
        const QString folder = home->path("/folder");
        const QString other = folder + "/deeper/Other.qml"_q;
        for (const QString &file : {folder + "/Dash.qml"_q, folder + "/Dash.txt"_q, other})
            writeFile(file, "import QtQuick 2.15\nItem {}");
        answerDialog([](QQuickView *dialog) { keys(dialog, {Qt::Key_Escape}); });
        QCOMPARE(viewed(), document);

        answerDialog([&](QQuickView *dialog) {
            QQuickItem *path = find(dialog->rootObject(), "selectByMouse", true);
            path->forceActiveFocus();
            path->setProperty("text", folder + "/missing"_q);
            keys(dialog, {Qt::Key_Return});
            QVERIFY(dialog->rootObject()->property("problem").toString().contains("missing"_q));
            path->setProperty("text", folder);
            keys(dialog, {Qt::Key_Return});
            // The folder in it and the document.
            const QQuickItem *list = find(dialog->rootObject(), "currentIndex", 0);
            QTRY_COMPARE(list->property("count").toInt(), 2);
            type(dialog, "da");
            keys(dialog, {Qt::Key_Return});
        });
        QCOMPARE(viewed(), folder + "/Dash.qml"_q);

        // What has been typed wins over what is selected in the list.
        answerDialog([&](QQuickView *dialog) {
            find(dialog->rootObject(), "selectByMouse", true)->setProperty("text", other);
            click(find(dialog->rootObject(), "primary", true));
        });
        QCOMPARE(viewed(), other);

        // The folder of a lost file gives way to the one above it.
        QVERIFY(QDir(folder + "/deeper"_q).removeRecursively());
        answerDialog([&](QQuickView *dialog) {
            QCOMPARE(dialog->rootObject()->property("folderPath").toString(), folder);
            keys(dialog, {Qt::Key_Escape});
        });
    }

    void itEndsWhileItsFileDialogIsOpen()
    {
        QPoint offset(99, 99);
        answerDialog([&](const QQuickView *dialog) {
            offset = dialog->geometry().center() - window->geometry().center();
            window->hide();
        });
        QVERIFY(offset.manhattanLength() <= 2);
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window));
        answerDialog([&](const QQuickView *) { navigation->closeViews(); });
        QTRY_VERIFY(window == nullptr);
    }

    void aRenamedDashboardStaysOpen()
    {
        FakeStore store;
        const auto id = store.add("Old"_q);
        VehicleNames vehicles;
        const TelemetryMonitor monitor;
        const GalleryWindow gallery(*navigation, *engine, store, vehicles, monitor, {});
        open(store.profile(id)->qmlPath);
        store.performAction(id, DashboardProfileAction::Rename, "New"_q);
        QTRY_COMPARE(viewed(), "/dashboards/New/Dash.qml"_q);
    }

    void everyRoadClosesItAlone()
    {
        const QSignalSpy quit(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
        click(button("OK"));
        QTRY_VERIFY(window == nullptr);
        open();
        Q_EMIT window->engine()->quit();
        QTRY_VERIFY(window == nullptr);
        QCOMPARE(navigation->openViews(), QStringList());
        QCOMPARE(quit.count(), 0);
    }

    void whatIsNotThereIsToldToTheUser()
    {
        const QSignalSpy failures(&*navigation, &Navigation::failed);
        navigation->showView("NoSuchView"_q);
        QVERIFY(failures.value(0).value(0).toString().contains("NoSuchView"_q));
        HostWindow broken("Broken"_q, *navigation);
        broken.open(QUrl("qrc:/no/such/View.qml"_q));
        QVERIFY(find(broken.rootObject(), "text", broken.documentErrors()) != nullptr);
        QCOMPARE(log->lines.filter("no/such/View.qml"_q).size(), 1);
        log->lines.clear();
    }

private:
    QQuickItem *button(const char *text) const { return item("text", QString::fromUtf8(text)); }
    QString viewed() const { return window->argument().toString(); }

    /// The slider that stands behind this caption.
    QQuickItem *slider(const char *caption) const
    {
        QQuickItem *label = button(caption);
        const QList<QQuickItem *> cells = label->parentItem()->childItems();
        return cells.at(cells.indexOf(label) + 1);
    }

    QColor previewColor() const
    {
        const QQuickItem *preview = item("fillMode", 1);
        return preview != nullptr ? window->grabWindow().pixelColor(middle(preview)) : QColor();
    }

    /// Opens the file dialog and acts on it, which ends it; it runs an event loop of its own.
    void answerDialog(const std::function<void(QQuickView *)> &answer) const
    {
        bool stuck = false;
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&] {
            auto *dialog = qobject_cast<QQuickView *>(QGuiApplication::modalWindow());
            if (dialog == nullptr || QGuiApplication::focusWindow() != dialog)
                return;
            look.stop();
            QTimer::singleShot(20'000, dialog, [&stuck, dialog] { stuck = dialog->close(); });
            answer(dialog);
        });
        look.start(10);
        click(button("..."));
        QVERIFY(!look.isActive() && !stuck);
    }
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<EditorWindowTest>(argc, argv);
}

#include "EditorWindowTest.moc"
