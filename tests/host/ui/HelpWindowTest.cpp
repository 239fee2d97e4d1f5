#include "ui/HelpWindow.h"

#include "settings/Translations.h"
#include "support/TemporaryHome.h"
#include "ui/Navigation.h"

#include <QtCore/QSettings>
#include <QtGui/QDesktopServices>
#include <QtGui/QScreen>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFrame>
#include <QtGui/QTextTable>
#include <QtQml/QQmlContext>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickTextDocument>
#include <QtTest/QtTest>

class HelpWindowTest : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void rememberUrl(const QUrl &url) { browsed += url; }

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("gauge-test"));
        QCoreApplication::setApplicationName(QStringLiteral("help-window"));
        QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "rememberUrl");
    }

    void init()
    {
        home = std::make_unique<TemporaryHome>();
        window = std::make_unique<HelpWindow>(QStringLiteral("dashboards"), navigation);
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        browsed.clear();
    }

    void cleanup()
    {
        window.reset();
        home.reset();
    }

    void itsFrameFindsRoomOnTheScreen_data()
    {
        QTest::addColumn<QRect>("saved");
        QTest::newRow("from a larger screen") << QRect(100, 100, 5000, 3000);
        QTest::newRow("all around") << QRect(-500, -500, 9000, 9000);
        QTest::newRow("smaller than it may be") << QRect(700, 500, 200, 200);
        QTest::newRow("the first time") << QRect();
    }

    void itsFrameFindsRoomOnTheScreen()
    {
        QFETCH(QRect, saved);
        WindowPlace place;
        place.geometry = saved;
        place.save(QStringLiteral("Large"));
        HostWindow large(QStringLiteral("Large"), navigation);
        large.setMinimumSize(QSize(1000, 3000));
        large.setInitialSize(5000, 3000);
        large.open(QUrl(QStringLiteral("qrc:/qml/HLVN/Controls/Label.qml")));
        QVERIFY(QTest::qWaitForWindowExposed(&large));
        const QRect screen = large.screen()->availableGeometry();
        QTRY_VERIFY(WindowPlace::room(screen).contains(large.geometry()));
    }

    void whatCannotBeReadOfAPlaceIsUnknown()
    {
        QSettings settings;
        settings.setValue(QStringLiteral("windows/Odd/geometry"), QStringLiteral("left"));
        settings.setValue(QStringLiteral("windows/Odd/fullScreen"), QStringLiteral("maybe"));
        settings.setValue(QStringLiteral("windows/Odd/stayOnTop"), QRect(1, 2, 3, 4));
        const WindowPlace place = WindowPlace::load(QStringLiteral("Odd"));
        QVERIFY(place.geometry.isNull());
        QVERIFY(!place.fullScreen);
        QVERIFY(!place.stayOnTop);
    }

    void theGuidesHeadingsAreTheContents()
    {
        QFile guide(QStringLiteral(":/help/dashboards.md"));
        QVERIFY(guide.open(QIODevice::ReadOnly));
        int sections = 0;
        while (!guide.atEnd())
            sections += guide.readLine().startsWith("## ") ? 1 : 0;
        QVERIFY(sections > 5);
        QCOMPARE(item("contents")->property("count").toInt(), sections);
        QCOMPARE(missingPictures(), QStringList());
    }

    void aPageIsLaidOutOnce()
    {
        const auto *view = item("text")->property("textDocument").value<QQuickTextDocument *>();
        const QSignalSpy changes(view->textDocument(), &QTextDocument::contentsChange);
        window->showTopic(QStringLiteral("dashboards"));
        QVERIFY2(changes.count() < 10, qPrintable(QString::number(changes.count())));
        const auto tables = view->textDocument()->rootFrame()->childFrames();
        QVERIFY(tables.size() > 10);
        for (QTextFrame *frame : tables) {
            if (const auto *table = qobject_cast<QTextTable *>(frame))
                QCOMPARE(table->format().cellSpacing(), 0.0); // Styled, unlike by themselves.
        }
    }

    void itSpeaksTheUsersLanguage()
    {
        Translations translations;
        translations.use(QStringLiteral("de"));
        QTRY_VERIFY(page()->positionOf(QStringLiteral("ein-dashboard-bauen")) == 0);
        translations.use(QStringLiteral("en"));
        QTRY_VERIFY(page()->positionOf(QStringLiteral("make-a-dashboard")) == 0);
    }

    void linksLeadIntoThePageAndIntoTheBrowser()
    {
        QCOMPARE(scrolled(), 0.0);
        follow("#the-properties");
        const qreal properties = scrolled();
        QVERIFY(properties > 0);
        follow("#no-such-heading");
        QCOMPARE(scrolled(), properties);
        follow("https://doc.qt.io/qt-5/qtqml-index.html");
        QCOMPARE(browsed,
                 QList<QUrl>({QUrl(QStringLiteral("https://doc.qt.io/qt-5/qtqml-index.html"))}));
        window->showTopic(QStringLiteral("dashboards#the-properties"));
        QCOMPARE(scrolled(), properties);
        window->showTopic({});
        QCOMPARE(scrolled(), 0.0);
    }

    void everyLinkWithinTheGuideHasATarget_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("file");
        QTest::newRow("English") << QStringLiteral("en") << QStringLiteral(":/help/dashboards.md");
        QTest::newRow("German") << QStringLiteral("de")
                                << QStringLiteral(":/help/dashboards.de.md");
    }

    void everyLinkWithinTheGuideHasATarget()
    {
        QFETCH(QString, language);
        QFETCH(QString, file);
        QFile guide(file);
        QVERIFY(guide.open(QIODevice::ReadOnly));
        Translations translations;
        translations.use(language);
        static const QRegularExpression link(QStringLiteral("\\]\\(#([^)]+)\\)"));
        const QString text = QString::fromUtf8(guide.readAll());
        int links = 0;
        for (auto match = link.globalMatch(text); match.hasNext(); ++links) {
            const QString anchor = match.next().captured(1);
            window->showTopic(QStringLiteral("dashboards"));
            follow(QByteArray("#" + anchor.toUtf8()).constData());
            QVERIFY2(scrolled() > 0, qPrintable(anchor));
        }
        QVERIFY(links > 1);
    }

    void aWordIsFoundByKeyboard()
    {
        QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
        const QByteArray word("gearbox");
        for (const char letter : word)
            QTest::keyClick(window.get(), letter);
        QCOMPARE(selected(), QStringLiteral("gearbox"));
        const int first = item("text")->property("selectionStart").toInt();
        QTest::keyClick(window.get(), Qt::Key_Return);
        QCOMPARE(selected(), QStringLiteral("gearbox"));
        QVERIFY(item("text")->property("selectionStart").toInt() > first);
        QTest::keyClick(window.get(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(item("text")->property("selectionStart").toInt(), first);
        QVERIFY(scrolled() > 0);
        QTest::keyClick(window.get(), 'q');
        QCOMPARE(selected(), QString());
        QTest::keyClick(window.get(), Qt::Key_Escape);
        QVERIFY(window->isVisible());
        QTest::keyClick(window.get(), Qt::Key_Escape);
        QVERIFY(!window->isVisible());
    }

    void theSearchStartsWhereOneReads()
    {
        QTest::keyClick(window.get(), Qt::Key_PageDown);
        QVERIFY(scrolled() > 0);
        follow("#the-editor");
        QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
        for (const char letter : {'g', 'e', 'a', 'r'})
            QTest::keyClick(window.get(), letter);
        QCOMPARE(selected().toLower(), QStringLiteral("gear"));
        QVERIFY(item("text")->property("selectionStart").toInt() >
                page()->positionOf(QStringLiteral("the-editor")));
    }

    void anUnknownTopicSaysSo()
    {
        for (const char *topic : {"nothing", "../dashboards", "a\nb"}) {
            window->showTopic(QLatin1String(topic));
            QCOMPARE(item("contents")->property("count").toInt(), 0);
            QVERIFY(item("text")->property("length").toInt() > 0);
        }
    }

private:
    QQuickItem *item(const char *name) const
    {
        return window->rootObject()->findChild<QQuickItem *>(QLatin1String(name));
    }

    HelpPage *page() const
    {
        const QVariant page = window->rootContext()->contextProperty(QStringLiteral("help_page"));
        return page.value<HelpPage *>();
    }

    /// How far down the page is once it has settled.
    qreal scrolled() const
    {
        const bool settled = QTest::qWaitFor(
            [this] { return window->rootObject()->property("pinned").toInt() == -1; });
        return settled ? item("page")->property("contentY").toReal() : -1;
    }

    QString selected() const { return item("text")->property("selectedText").toString(); }

    void follow(const char *link) const
    {
        QMetaObject::invokeMethod(item("text"), "linkActivated",
                                  Q_ARG(QString, QString::fromUtf8(link)));
    }

    /// Pictures of the guide that aren't among the resources.
    static QStringList missingPictures()
    {
        QFile guide(QStringLiteral(":/help/dashboards.md"));
        if (!guide.open(QIODevice::ReadOnly))
            return {guide.fileName()};
        static const QRegularExpression picture(QStringLiteral("!\\[[^]]*\\]\\(([^)]+)\\)"));
        const QString text = QString::fromUtf8(guide.readAll());
        QStringList missing;
        for (auto match = picture.globalMatch(text); match.hasNext();) {
            const QString file = match.next().captured(1);
            if (!QFile::exists(QStringLiteral(":/help/") + file))
                missing += file;
        }
        return missing;
    }

    Navigation navigation;
    std::unique_ptr<TemporaryHome> home;
    std::unique_ptr<HelpWindow> window;
    QList<QUrl> browsed;
};

QTEST_MAIN(HelpWindowTest)
#include "HelpWindowTest.moc"
