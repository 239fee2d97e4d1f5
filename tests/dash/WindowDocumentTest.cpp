#include "dash/HostedDocument.h"
#include "support/FakeEngine.h"
#include "support/Shouter.h"
#include "views/DashboardWindowVM.h"

#include <QtGui/QMouseEvent>
#include <QtTest/QtTest>

namespace {

const QString Document = QStringLiteral("qrc:/dash/qml/DashboardWindow.qml");

struct WindowDocument : HostedDocument
{
    explicit WindowDocument(double scale = 1.0)
        : HostedDocument(Document, QStringLiteral("dashWindow"), scale)
    {
        window.contentItem()->setSize(QSizeF(480, 272) * scale);
        window.resize((QSizeF(480, 272) * scale).toSize());
    }

    void mouse(QEvent::Type type, Qt::MouseButtons buttons, QPoint cursor = {})
    {
        host->setProperty("cursor", QPointF(cursor));
        const bool moves = type == QEvent::MouseMove;
        const QPointF place(moves ? 101 + cursor.x() % 7 : 100, 150);
        QMouseEvent event(type, place, place, place, moves ? Qt::NoButton : Qt::LeftButton, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }
    void press(QPoint cursor = {}) { mouse(QEvent::MouseButtonPress, Qt::LeftButton, cursor); }
    void release() { mouse(QEvent::MouseButtonRelease, Qt::NoButton); }
    void drag(QPoint cursor) { mouse(QEvent::MouseMove, Qt::LeftButton, cursor); }
    void pressTwice()
    {
        press();
        release();
        press();
        mouse(QEvent::MouseButtonDblClick, Qt::LeftButton);
    }
};

} // namespace

class WindowDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStartSetsTitleAndSizes()
    {
        WindowDocument document(1.5);
        QCOMPARE(document.takeCalls(), QStringList({QStringLiteral("setTitle(Dashboard)"),
                                                    QStringLiteral("setInitialSize(720, 408)")}));
        QCOMPARE(document.hostWindow()->property("minimumWidth").toInt(), 720);
        QCOMPARE(document.hostWindow()->property("minimumHeight").toInt(), 408);
        QCOMPARE(document.root->size(), QSizeF(720, 408));
        QCOMPARE(document.warnings, QStringList());
    }

    void everyTextCanBeTranslated()
    {
        const QStringList texts{QStringLiteral("Double click to switch to/from fullscreen"),
                                QStringLiteral("Toggle stay on top"),
                                QStringLiteral("Close this window")};
        QCOMPARE(WindowDocument().texts(), texts);
        const Shouter shouter("DashboardWindow");
        WindowDocument document;
        QCOMPARE(document.texts(),
                 texts.join(QLatin1Char('\n')).toUpper().split(QLatin1Char('\n')));
        QVERIFY(document.takeCalls().contains(QStringLiteral("setTitle(DASHBOARD)")));
    }

    void everyPartHasItsPlace()
    {
        const WindowDocument document(2.0);
        const QList<QQuickItem *> parts = document.root->childItems();
        const QRectF whole(0, 0, 960, 544);
        QCOMPARE(document.root->property("color").value<QColor>(), QColor(Qt::black));
        const QQuickItem &picture = *parts[0];
        QCOMPARE(picture.boundingRect(), whole);
        QCOMPARE(picture.property("fillMode").toInt(), 1); // PreserveAspectFit
        QVERIFY(!picture.property("cache").toBool());
        QVERIFY(!picture.property("asynchronous").toBool());
        QCOMPARE(parts[1]->boundingRect(), whole);
        QCOMPARE(parts[1]->property("acceptedButtons").toInt(), int(Qt::LeftButton));
        const QQuickItem &hint = *parts[2];
        QCOMPARE(QRectF(hint.position(), hint.size()), QRectF(0, 0, 960, 52 + 8));
        QCOMPARE(hint.property("color").value<QColor>(), QColor(0xBB, 0, 0, 0xBB));
        const QQuickItem &text = *hint.childItems().constFirst();
        QCOMPARE(text.x(), 8.0);
        QVERIFY(qAbs(text.y() - (hint.height() - text.height()) / 2) < 1);
        QCOMPARE(text.property("color").value<QColor>(), QColor(Qt::white));
    }

    void framesOfTheRealViewModelAreShown()
    {
        FakeEngine engine;
        DashboardWindowVM model(&engine);
        HostedDocument document(Document, model);
        const QQuickItem &picture = *document.root->childItems().constFirst();
        QCOMPARE(QSizeF(picture.implicitWidth(), picture.implicitHeight()), QSizeF(480, 272));
        for (const QSize size : {QSize(300, 100), QSize(20, 30)}) {
            document.window.resize(size);
            Frame frame(frameBytes(size.width(), size.height()));
            engine.last->deliverFrame(frame, size.width());
            QCOMPARE(QSizeF(picture.implicitWidth(), picture.implicitHeight()), QSizeF(size));
        }
        QCOMPARE(document.warnings, QStringList());
    }

    void everyNewFrameMakesANewRequest()
    {
        WindowDocument document;
        QMetaObject::invokeMethod(document.viewModel(), "previewChanged");
        QMetaObject::invokeMethod(document.viewModel(), "previewChanged");
        QCOMPARE(document.imageRequests, QStringList({QStringLiteral("preview?id=false -1"),
                                                      QStringLiteral("preview?id=true -1"),
                                                      QStringLiteral("preview?id=false -1")}));
    }

    void aDragMovesTheWindowByTheWayOfTheCursor()
    {
        WindowDocument document;
        document.takeCalls();
        document.press({500, 500});
        document.drag({510, 495});
        document.drag({530, 480});
        document.release();
        document.mouse(QEvent::MouseMove, Qt::NoButton, {600, 600});
        QCOMPARE(document.takeCalls(),
                 QStringList({QStringLiteral("setAboutToBeMoved(true)"),
                              QStringLiteral("move(110, 195)"), QStringLiteral("move(130, 180)"),
                              QStringLiteral("setAboutToBeMoved(false)")}));
        QCOMPARE(document.warnings, QStringList());
    }

    void aDoubleClickSwitchesToFullScreenAndBack()
    {
        WindowDocument document;
        document.takeCalls();
        document.pressTwice();
        document.release();
        QVERIFY(document.root->property("fullScreen").toBool());
        QCOMPARE(document.takeCalls().mid(3), QStringList({QStringLiteral("showFullScreen()")}));

        document.press();
        document.drag({40, 40});
        document.release();
        QCOMPARE(document.takeCalls(), QStringList());

        document.pressTwice();
        QVERIFY(!document.root->property("fullScreen").toBool());
        document.drag({90, 90});
        document.release();
        QCOMPARE(document.takeCalls(), QStringList({QStringLiteral("showNormal()"),
                                                    QStringLiteral("setAboutToBeMoved(false)")}));
    }

    void controlsShowOnlyWhileTheMouseIsOverTheWindow()
    {
        WindowDocument document;
        const QQuickItem *hint = HostedDocument::withText(
            document.root.get(), QStringLiteral("Double click to switch to/from fullscreen"));
        const QQuickItem *close = HostedDocument::withText(
            document.root.get(), QStringLiteral("Close this window"), "toolTip");
        QVERIFY(!hint->isVisible());
        QVERIFY(!close->isVisible());
        QTest::mouseMove(&document.window, {100, 150});
        QVERIFY(hint->isVisible());
        QVERIFY(close->isVisible());
        QVERIFY(close->isEnabled());
        QTest::mouseMove(&document.window, close->mapToScene({5, 5}).toPoint());
        QVERIFY(close->isVisible());
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&document.window, &leave);
        QVERIFY(!hint->isVisible());
        QVERIFY(!close->isEnabled());
    }

    void theButtonsStandInTheCornerAndWork()
    {
        WindowDocument document(2.0);
        QQuickItem *close = HostedDocument::withText(
            document.root.get(), QStringLiteral("Close this window"), "toolTip");
        QQuickItem *stay = HostedDocument::withText(
            document.root.get(), QStringLiteral("Toggle stay on top"), "toolTip");
        QCOMPARE(QRectF(close->position(), close->size()), QRectF(904, 4, 52, 52));
        QCOMPARE(QRectF(stay->position(), stay->size()), QRectF(846, 4, 52, 52));

        const auto icon = [stay] {
            return stay->childItems().constLast()->property("source").toUrl().toString();
        };
        QCOMPARE(icon(), QStringLiteral("qrc:/orvx/stayontop"));
        QMetaObject::invokeMethod(stay, "clicked");
        QCOMPARE(icon(), QStringLiteral("qrc:/orvx/stayontop_on"));

        const QSignalSpy quits(&document.engine, &QQmlEngine::quit);
        QMetaObject::invokeMethod(close, "clicked");
        QCOMPARE(quits.count(), 1);
        QCOMPARE(document.warnings, QStringList());
    }
};

QTEST_MAIN(WindowDocumentTest)
#include "WindowDocumentTest.moc"
