#include "dash/HostedDocument.h"

#include <QtGui/QMouseEvent>
#include <QtTest/QtTest>

namespace {

struct WindowDocument : HostedDocument
{
    explicit WindowDocument(double scale = 1.0)
        : HostedDocument(QStringLiteral("qrc:/dash/qml/DashboardWindow.qml"),
                         QStringLiteral("dashWindow"), scale)
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
