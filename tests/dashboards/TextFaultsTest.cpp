#include "TextFaults.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <memory>

class TextFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Text is as large on every system.
        const int id = QFontDatabase::addApplicationFont(
            QStringLiteral(PARTS_DIRECTORY "/fonts/RobotoCondensed-Regular.ttf"));
        QFont font(QFontDatabase::applicationFontFamilies(id).value(0));
        font.setPixelSize(13);
        font.setHintingPreference(QFont::PreferVerticalHinting);
        QGuiApplication::setFont(font);
    }

    void faultsOfTextAreFound_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("fault"); // Empty: there is none.
        const auto row = [](const char *fault, const QByteArray &body) {
            QTest::newRow(body) << body << QString::fromLatin1(fault);
        };
        const QByteArray one("Text { text: 'one' } ");
        const QByteArray two("Text { text: 'two' } ");
        row("lies on 'two'", one + two);
        row("", one + "Text { y: 40; text: 'two' }");
        row("", "Text { text: 'xx'; font.pixelSize: 20 }"
                "Text { y: 14; text: 'xx'; font.pixelSize: 20 }"); // Line boxes touch.
        row("", one + "Text { visible: false; text: 'two' }");
        row("", one + "Text { opacity: 0; text: 'two' }");
        row("", one + "Rectangle { width: 99; height: 99; color: 'red' }" + two);
        row("lies on", one + "Rectangle { width: 99; height: 99; color: '#80ff0000' }" + two);
        row("", "Rectangle { z: 1; width: 99; height: 99 }" + one + two);
        row("is cut", "Text { x: 10; text: 'long text' } Rectangle { width: 30; height: 99 }");
        row("", "Text { text: 'text' } Rectangle { width: 90; height: 9; rotation: 20 }");
        row("sticks out", "Text { x: 470; text: 'long' }");
        row("sticks out",
            "Text { y: -9; width: 480; horizontalAlignment: Text.AlignHCenter; text: 'X' }");
        row("larger", "Text { x: 50; width: 10; text: 'wide' }");
        row("", "Text { width: 20; text: '123456'; fontSizeMode: Text.HorizontalFit;"
                "minimumPixelSize: 4; font.pixelSize: 30 }");
        row("", "Text { x: 380; width: 100; text: 'end'; horizontalAlignment: Text.AlignRight }");
    }

    void faultsOfTextAreFound()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, fault);
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import QtQuick 2.15\nRectangle { width: 480; height: 272; " + body + "}",
                          QUrl());
        const std::unique_ptr<QObject> document(component.create());
        QVERIFY2(document != nullptr, component.errorString().toUtf8());
        const QString faults =
            textFaults(*qobject_cast<QQuickItem *>(document.get())).join(QLatin1Char('\n'));
        QVERIFY2(fault.isEmpty() ? faults.isEmpty() : faults.contains(fault), faults.toUtf8());
    }
};

QTEST_MAIN(TextFaultsTest)
#include "TextFaultsTest.moc"
