#include "ui/CodeEditor.h"

#include "support/DocumentFolder.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

class CodeEditorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<DocumentFolder>();
        QVERIFY(QDir().mkpath(folder->path(QStringLiteral("bin"))));
        qputenv("PATH", QFile::encodeName(folder->path(QStringLiteral("bin"))));
        qunsetenv("VISUAL");
        document = folder->write(QStringLiteral("my dash/$(touch x); '\"-é\n*.qml"), "Item {}");
        opened.clear();
        desktopWorks = true;
    }

    void visualStudioCodeGetsFolderAndFile()
    {
        addProgram(QStringLiteral("code"));
        addProgram(QStringLiteral("kate"));
        qputenv("VISUAL", "kate");
        QCOMPARE(messageOf(document), QString());
        QTRY_COMPARE(run(), QStringList({QStringLiteral("code"), QFileInfo(document).absolutePath(),
                                         document}));
        QVERIFY(opened.isEmpty());
    }

    void theCommandInVisualIsNext()
    {
        addProgram(QStringLiteral("my editor"));
        qputenv("VISUAL", "\"my editor\" --wait '-n'");
        QCOMPARE(messageOf(document), QString());
        QTRY_COMPARE(run(), QStringList({QStringLiteral("my editor"), QStringLiteral("--wait"),
                                         QStringLiteral("'-n'"), document}));
        QVERIFY(opened.isEmpty());
    }

    void theDesktopIsLast_data()
    {
        QTest::addColumn<QByteArray>("visual");
        QTest::newRow("nothing set") << QByteArray();
        QTest::newRow("not there") << QByteArray("no-such-editor -w");
        QTest::newRow("not to be started") << QByteArray("broken");
        QTest::newRow("lives in a terminal") << QByteArray("vim");
    }

    void theDesktopIsLast()
    {
        QFETCH(QByteArray, visual);
        addProgram(QStringLiteral("vim"));
        for (const char *name : {"bin/broken", "bin/code"}) {
            const QString broken = folder->write(QLatin1String(name), "\x7f"
                                                                      "ELF no program");
            QVERIFY(QFile::setPermissions(broken, QFile::ReadOwner | QFile::ExeOwner));
        }
        qputenv("VISUAL", visual);
        QCOMPARE(messageOf(document), QString());
        QCOMPARE(opened, QList<QUrl>({QUrl::fromLocalFile(document)}));
    }

    void theUserIsToldWhereThereIsNone()
    {
        desktopWorks = false;
        QVERIFY(messageOf(document).contains(QStringLiteral("VISUAL")));
        opened.clear();
        const QString gone = folder->path(QStringLiteral("gone.qml"));
        QVERIFY(messageOf(gone).contains(gone));
        QVERIFY(!messageOf({}).isEmpty());
        QVERIFY(opened.isEmpty());
    }

    void aNameLikeAnOptionIsAFile()
    {
        addProgram(QStringLiteral("code"));
        folder->write(QStringLiteral("--wait"), "Item {}");
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder->path({})));
        QCOMPARE(messageOf(QStringLiteral("--wait")), QString());
        QVERIFY(QDir::setCurrent(before));
        QTRY_COMPARE(run().value(2), folder->path(QStringLiteral("--wait")));
    }

private:
    /// A program that leaves its name and its arguments in a file, each with a null behind it.
    void addProgram(const QString &name) const
    {
        const QString log = folder->path(QStringLiteral("run"));
        const QString program = folder->write(QStringLiteral("bin/") + name,
                                              "#!/bin/sh\nprintf '%s\\0' \"${0##*/}\" \"$@\" > '" +
                                                  log.toUtf8() + "'\n");
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    }

    QStringList run() const
    {
        QFile file(folder->path(QStringLiteral("run")));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QStringList words;
        const QList<QByteArray> parts = file.readAll().split('\0');
        for (const QByteArray &word : parts)
            words += QString::fromUtf8(word);
        words.removeLast();
        return words;
    }

    QString messageOf(const QString &path)
    {
        CodeEditor editor([this](const QUrl &url) {
            opened += url;
            return desktopWorks;
        });
        const QSignalSpy spy(&editor, &CodeEditor::failed);
        editor.open(QVariantMap{{QStringLiteral("path"), path}});
        return spy.isEmpty() ? QString() : spy.constFirst().constFirst().toString();
    }

    std::unique_ptr<DocumentFolder> folder;
    QString document;
    QList<QUrl> opened;
    bool desktopWorks = true;
};

QTEST_GUILESS_MAIN(CodeEditorTest)
#include "CodeEditorTest.moc"
