#include "DashboardAbstractProfilesManager.h"
#include "IDashboardEngine.h"
#include "ViewBench.h"
#include "support/LogCapture.h"
#include "telemetry/TelemetryMonitor.h"
#include "telemetry/VehicleNames.h"
#include "ui/GalleryWindow.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QAccessible>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

namespace {

const QString View = QStringLiteral("DashboardEditor");
constexpr const char *Red =
    "import QtQuick 2.15\nRectangle { width: 480; height: 272; color: '#ff0000' }\n";
constexpr const char *Blue =
    "import QtQuick 2.15\nRectangle { width: 480; height: 272; color: '#0000ff' }\n";

} // namespace

class EditorWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { bench = std::make_unique<ViewBench>(); }
    void cleanupTestCase() { bench.reset(); }
    void cleanup() { bench->tidyUp(); }

    void itOpensWithTheFileAndWithoutAWarning()
    {
        const LogCapture log;
        ViewWindow *window = bench->open(View, bench->makeDocument(Red));
        QVERIFY(window != nullptr);
        QCOMPARE(window->title(), QStringLiteral("Dashboard Editor"));
        QCOMPARE(window->minimumSize(), QSize(900, 765));
        QCOMPARE(window->size(), QSize(900, 765));
        QTRY_COMPARE(previewColour(window), QColor(Qt::red));
        QCOMPARE(log.lines, QStringList());

        // A saved change shows, also one that replaces the file.
        bench->makeDocument(Blue);
        QTRY_COMPARE(previewColour(window), QColor(Qt::blue));

        QEvent newLanguage(QEvent::LanguageChange);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &newLanguage);
        QCOMPARE(log.lines, QStringList());
    }

    void itShowsWhatItsDashboardSays()
    {
        const QString document = bench->makeDocument(Red);
        ViewWindow *window = bench->open(View, document);
        if (window == nullptr)
            QFAIL("It doesn't open");
        auto *bar =
            window->rootObject()->findChild<QQuickItem *>(QStringLiteral("documentMessages"));
        if (bar == nullptr)
            QFAIL("There is no bar");
        QVERIFY(!bar->isVisible());
        bench->navigation->tellViews(QStringLiteral("/other/Dash.qml"), 1, QStringLiteral("no"));
        QVERIFY(!bar->isVisible());
        for (int i = 0; i <= ViewWindow::MostMessages; ++i)
            bench->navigation->tellViews(document, 12, QString::number(i));
        QVERIFY(bar->isVisible());
        const QString name = QFileInfo(document).fileName();
        QCOMPARE(bar->property("text").toString(), name + QStringLiteral(":12: 100"));
        QCOMPARE(window->messages().size(), ViewWindow::MostMessages);
        bar->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(window, Qt::Key_Return);
        QTRY_VERIFY(!bar->hasActiveFocus());
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_VERIFY(bar->hasActiveFocus());
        bench->open(View, QStringLiteral("/other/Dash.qml"));
        QVERIFY(!bar->isVisible());
    }

    void everythingFitsInItsWindow()
    {
        ViewWindow *window = bench->open(View, bench->makeDocument(Red));
        QVERIFY(window != nullptr);
        window->setMinimumSize({}); // As on a screen that is too small for it.
        for (const QSize size : {QSize(900, 765), QSize(1270, 765), QSize(900, 860),
                                 QSize(896, 576), QSize(736, 436)}) {
            window->resize(size);
            QTRY_COMPARE(window->rootObject()->size().toSize(), size);
            const QQuickItem *preview = ViewBench::find(window->rootObject(), "fillMode", 1);
            QVERIFY(4 * preview->height() > size.height());
            QVERIFY(preview->height() < preview->parentItem()->height() + 4);
            const QQuickItem *ok = button(window, "OK");
            const QQuickItem *note = ViewBench::find(window->rootObject(), "wrapMode", 4);
            QVERIFY(ok != nullptr && note != nullptr);
            const qreal noteEnd = note->mapToScene({0, note->height()}).y();
            QVERIFY2(noteEnd <= ok->mapToScene({0, 0}).y(), qPrintable(QString::number(noteEnd)));
        }
    }

    void slidersStepByKeysAndKeepTheirStart()
    {
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        QQuickItem *rpm = ViewBench::find(window->rootObject(), "value", 700.0);
        QQuickItem *maxRpm = ViewBench::find(window->rootObject(), "value", 13000.0);
        QVERIFY(rpm != nullptr && maxRpm != nullptr);
        QCOMPARE(rpm->property("maximumValue").toReal(), 13000.0);
        rpm->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(window, Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(rpm->property("value").toReal(), 701.0);
        QTest::keyClick(window, Qt::Key_Right);
        QCOMPARE(rpm->property("value").toReal(), 801.0);
        QTest::keyClick(window, Qt::Key_PageDown);
        QCOMPARE(rpm->property("value").toReal(), 0.0);

        // Between two steps lies nothing, wherever the mouse lets go.
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier,
                          rpm->mapToScene({rpm->width() * 0.611, rpm->height() / 2}).toPoint());
        const qreal value = rpm->property("value").toReal();
        QVERIFY(value > 5000);
        QCOMPARE(value, qreal(qRound(value)));

        // Lowering the limit lowers what is above it.
        maxRpm->setProperty("value", 4000);
        QCOMPARE(rpm->property("maximumValue").toReal(), 4000.0);
        QVERIFY(rpm->property("value").toReal() <= 4000);
    }

    void theFileDialogWorksByKeys()
    {
        const QDir folder(bench->home.path("/folder"));
        QVERIFY(folder.mkpath(QStringLiteral("deeper")));
        const QString chosen = folder.filePath(QStringLiteral("Dash.qml"));
        QVERIFY(QFile::copy(bench->makeDocument(Red), chosen));
        QVERIFY(QFile::copy(chosen, folder.filePath(QStringLiteral("Dash.txt"))));
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        const QQuickItem *code = button(window, "Code");
        QVERIFY(code != nullptr && !code->isEnabled());

        // Escape gives up, and changes nothing.
        answerDialog([](QWindow *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
        press(button(window, "..."));
        QVERIFY(!code->isEnabled());

        answerDialog([&chosen](QWindow *dialog) {
            auto *view = qobject_cast<QQuickView *>(dialog);
            QQuickItem *path = ViewBench::find(view->rootObject(), "selectByMouse", true);
            path->forceActiveFocus();
            path->setProperty("text", chosen + QLatin1Char('x'));
            QTest::keyClick(dialog, Qt::Key_Return);
            QVERIFY(view->rootObject()->property("problem").toString().contains(chosen));
            QCOMPARE(path->property("text").toString(), chosen + QLatin1Char('x'));
            path->setProperty("text", QFileInfo(chosen).path());
            QTest::keyClick(dialog, Qt::Key_Return);
            const QQuickItem *list = ViewBench::find(view->rootObject(), "currentIndex", 0);
            QTRY_COMPARE(list->property("count").toInt(), 2); // The folder in it and the document.
            QTest::keyClick(dialog, Qt::Key_D);
            QTest::keyClick(dialog, Qt::Key_A);
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        press(button(window, "..."));
        QVERIFY(code->isEnabled());
        QVERIFY(ViewBench::find(window->rootObject(), "text", chosen) != nullptr);

        // What has been typed goes before what lies under the list's cursor.
        const QString other = folder.filePath(QStringLiteral("deeper/Other.qml"));
        QVERIFY(QFile::copy(chosen, other));
        answerDialog([&other](QWindow *dialog) {
            auto *view = qobject_cast<QQuickView *>(dialog);
            ViewBench::find(view->rootObject(), "selectByMouse", true)->setProperty("text", other);
            press(ViewBench::find(view->rootObject(), "primary", true));
        });
        press(button(window, "..."));
        QVERIFY(ViewBench::find(window->rootObject(), "text", other) != nullptr);
        QCOMPARE(window->argument(), QVariant(other));

        // A folder that has gone is left for the one above, and going up keeps the place.
        QVERIFY(QDir(folder.filePath(QStringLiteral("deeper"))).removeRecursively());
        answerDialog([&folder](QWindow *dialog) {
            const QObject *root = qobject_cast<QQuickView *>(dialog)->rootObject();
            const auto path = [root] { return root->property("folderPath").toString(); };
            QCOMPARE(path(), folder.path());
            QTest::keyClick(dialog, Qt::Key_Backspace);
            QTRY_COMPARE(path(), QFileInfo(folder.path()).path());
            QTRY_COMPARE(root->property("wantedName").toString(), QString());
            QTest::keyClick(dialog, Qt::Key_Return);
            QTRY_COMPARE(path(), folder.path());
        });
        press(button(window, "..."));
    }

    void aRenamedDashboardStaysOpen()
    {
        const QDir folder(bench->home.data("/Dashboards"));
        QVERIFY(folder.mkpath(QStringLiteral("Old")));
        const QString path = folder.filePath(QStringLiteral("Old/Dash.qml"));
        QVERIFY(QFile::copy(bench->makeDocument(Red), path));
        QVERIFY(QFile::copy(path, folder.filePath(QStringLiteral("Old/preview.png"))));
        VehicleNames vehicles;
        const auto store = bench->library.createProfiles(*bench->engine, vehicles);
        const TelemetryMonitor monitor;
        const GalleryWindow gallery(*bench->navigation, *bench->engine, *store, vehicles, monitor,
                                    QString());
        ViewWindow *window = bench->open(View, path);
        QVERIFY(window != nullptr);
        const std::vector<DashboardProfileHeader> headers = store->profileHeaders();
        const auto mine = std::find_if(headers.begin(), headers.end(),
                                       [](const auto &header) { return !header.builtIn; });
        QVERIFY(mine != headers.end());
        QVERIFY(
            store->performAction(mine->id, DashboardProfileAction::Rename, QStringLiteral("New"))
                .ok);
        const QString newPath = folder.filePath(QStringLiteral("New/Dash.qml"));
        QTRY_COMPARE(window->argument(), QVariant(newPath));
    }

    void everyRoadClosesItAlone()
    {
        const QSignalSpy quit(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
        for (const char *road : {"OK", "frame", "quit"}) {
            const QPointer<ViewWindow> window = bench->open(View, bench->makeDocument(Red));
            QVERIFY(window != nullptr);
            if (qstrcmp(road, "OK") == 0)
                press(button(window, "OK"));
            else if (qstrcmp(road, "frame") == 0)
                window->close();
            else
                Q_EMIT window->engine()->quit();
            QTRY_VERIFY2(window == nullptr, road);
            QCOMPARE(bench->navigation->openViews(), QStringList());
        }
        QCOMPARE(quit.count(), 0);
    }

    void itAsksForOtherWindowsItself()
    {
        QStringList asked;
        bench->navigation->addTarget(
            QStringLiteral("HelpBrowser"),
            [&asked](const QVariant &topic) { asked += topic.toString(); });
        // One that shows the very view that asks, and closes it.
        bench->navigation->addTarget(QStringLiteral("SoftwareConfiguration"),
                                     [this, &asked](const QVariant &) {
                                         asked += QStringLiteral("settings");
                                         bench->navigation->showView(View);
                                         bench->navigation->window(View)->close();
                                         bench->navigation->showView(View);
                                     });
        const QPointer<ViewWindow> window = bench->open(View, bench->makeDocument(Red));
        QVERIFY(window != nullptr);
        QTest::keyClick(window.data(), Qt::Key_F1);
        QCOMPARE(asked, QStringList{QStringLiteral("dashboards")});
        QQuickItem *note = ViewBench::find(window->rootObject(), "wrapMode", 4);
        const QString spoken = QAccessible::queryAccessibleInterface(note)->text(QAccessible::Name);
        QVERIFY2(spoken.startsWith(QStringLiteral("NOTE: ")) && !spoken.contains(QLatin1Char('<')),
                 qPrintable(spoken));
        note->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyPress(window.data(), Qt::Key_Return); // No window is left for a release.
        QCOMPARE(asked.value(1), QStringLiteral("settings"));
        QTRY_VERIFY(window == nullptr);
        QVERIFY(QTest::qWaitForWindowActive(bench->navigation->window(View)));
    }

    void whatIsNotThereIsToldToTheUser()
    {
        const LogCapture log;
        const QSignalSpy failures(bench->navigation.get(), &Navigation::failed);
        bench->navigation->showView(QStringLiteral("NoSuchView"), QStringLiteral("argument"));
        QCOMPARE(failures.count(), 1);
        QVERIFY(failures.value(0).value(0).toString().contains(QStringLiteral("NoSuchView")));
        QCOMPARE(log.lines.size(), 1);
        bench->navigation->showView(View);
        QCOMPARE(failures.count(), 1);
    }

    void framesOfferOnlyWhatIsMeant()
    {
        const ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        QCOMPARE(frameFunctions(window), Resize | Move | Maximize | Close);
        int ofDialog = 0;
        answerDialog([&ofDialog](const QWindow *dialog) { ofDialog = frameFunctions(dialog); });
        press(button(window, "..."));
        QCOMPARE(ofDialog, Resize | Move | Close);
    }

    void aSecondRequestBringsTheNewFile()
    {
        ViewWindow *window = bench->open(View, bench->makeDocument(Red));
        QVERIFY(window != nullptr);
        QFile other(bench->home.path("/Other.qml"));
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.write(Blue);
        other.close();
        QCOMPARE(bench->open(View, other.fileName()), window);
        QTRY_COMPARE(previewColour(window), QColor(Qt::blue));
    }

    void withoutAccelerationItSaysSo()
    {
        bench->start(false);
        const LogCapture log;
        ViewWindow *window = bench->open(View);
        if (window == nullptr)
            QFAIL("It doesn't open");
        const QQuickItem *fields =
            ViewBench::find(window->rootObject(), "text",
                            QStringLiteral("Not available without hardware acceleration"));
        if (fields == nullptr)
            QFAIL("It says nothing");
        QVERIFY(fields->property("contentWidth").toReal() <= fields->width());
        QCOMPARE(log.lines, QStringList());
    }

private:
    /// What the window manager is asked to let a user do with a window, as the window manager's
    /// hints put it.
    enum FrameFunction { Resize = 0x2, Move = 0x4, Minimize = 0x8, Maximize = 0x10, Close = 0x20 };

    static int frameFunctions(const QWindow *window)
    {
        QProcess question;
        question.start(QStringLiteral("xprop"),
                       {QStringLiteral("-notype"), QStringLiteral("-id"),
                        QString::number(window->winId()), QStringLiteral("_MOTIF_WM_HINTS")});
        question.waitForFinished();
        // "_MOTIF_WM_HINTS = 0x3, 0x36, ...": what of it counts, the functions, and more.
        return question.readAllStandardOutput().split(',').value(1).trimmed().toInt(nullptr, 16);
    }

    static QQuickItem *button(const ViewWindow *window, const char *text)
    {
        const QList<QQuickItem *> all = buttons(window->rootObject());
        for (QQuickItem *item : all) {
            if (item->property("text").toString() == QLatin1String(text))
                return item;
        }
        return nullptr;
    }

    static QList<QQuickItem *> buttons(const QQuickItem *root)
    {
        QList<QQuickItem *> found;
        const QList<QQuickItem *> children = root->childItems();
        for (QQuickItem *child : children) {
            if (child->inherits("QQuickButton"))
                found += child;
            found += buttons(child);
        }
        return found;
    }

    static void press(QQuickItem *button)
    {
        button->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(button->window(), Qt::Key_Space);
    }

    /// Acts on the next dialog once it is there; it runs an event loop of its own.
    static void answerDialog(const std::function<void(QWindow *)> &answer)
    {
        auto *look = new QTimer(QCoreApplication::instance());
        QObject::connect(look, &QTimer::timeout, look, [look, answer] {
            QWindow *dialog = QGuiApplication::modalWindow();
            if (dialog == nullptr || QGuiApplication::focusWindow() != dialog)
                return;
            look->stop();
            look->deleteLater();
            answer(dialog);
            dialog->close(); // In case the answer failed half-way.
        });
        look->start(10);
    }

    static QColor previewColour(ViewWindow *window)
    {
        const QQuickItem *preview = ViewBench::find(window->rootObject(), "fillMode", 1);
        if (preview == nullptr)
            return {};
        const QPointF middle = preview->mapToScene({preview->width() / 2, preview->height() / 2});
        return window->grabWindow().pixelColor(middle.toPoint());
    }

    std::unique_ptr<ViewBench> bench;
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<EditorWindowTest>(argc, argv);
}

#include "EditorWindowTest.moc"
