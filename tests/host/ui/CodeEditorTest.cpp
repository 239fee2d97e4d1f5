#include "ui/CodeEditor.h"

#include "support/TestFiles.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtTest/QtTest>

class CodeEditorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void editorsComeInTheirOrder()
    {
        const QString document = path("my dash/$(touch x); '\"-é\n*.qml");
        writeFile(document, "Item {}");
        qputenv("PATH", QFile::encodeName(path("bin")));
        // The desktop is last, behind what isn't there, can't be started or lives in a terminal.
        addProgram("vim");
        addProgram("broken", "\x7f"
                             "ELF no program");
        for (const char *visual : {"", "no-such-editor -w", "broken", "vim"}) {
            qputenv("VISUAL", visual);
            QCOMPARE(open(document), QString());
            QCOMPARE(std::exchange(opened, {}), QUrl::fromLocalFile(document));
        }
        addProgram("my editor");
        qputenv("VISUAL", "\"my editor\" --wait '-n'");
        open(document);
        QTRY_COMPARE(run(), QStringList({"my editor"_q, "--wait"_q, "'-n'"_q, document, ""_q}));
        addProgram("code");
        open(document);
        QTRY_COMPARE(run(), QStringList({"code"_q, QFileInfo(document).path(), document, ""_q}));
        // A name like an option is a file.
        writeFile(path("--wait"), "Item {}");
        QVERIFY(QDir::setCurrent(folder.path()));
        open("--wait"_q);
        QTRY_COMPARE(run().value(2), path("--wait"));
        QVERIFY(opened.isEmpty());
    }

    void theUserIsToldWhereThereIsNone()
    {
        qputenv("PATH", "");
        qunsetenv("VISUAL");
        writeFile(path("Dash.qml"), "Item {}");
        QVERIFY(open(path("Dash.qml"), false).contains("VISUAL"_q));
        QVERIFY(open(path("gone.qml")).contains("gone.qml"_q));
        QVERIFY(!open({}).isEmpty());
    }

private:
    QString path(const QByteArray &name) const { return folder.filePath(QString::fromUtf8(name)); }

    /// A script leaves its name and its arguments in a file, each with a byte 1 behind it.
    void addProgram(const QByteArray &name, const QByteArray &content = {}) const
    {
        const QByteArray script =
            "#!/bin/sh\nprintf '%s\\001' \"${0##*/}\" \"$@\" >" + QFile::encodeName(path("run"));
        const QString program = path("bin/" + name);
        writeFile(program, content.isEmpty() ? script : content);
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    }

    QStringList run() const { return QString::fromUtf8(readFile(path("run"))).split(QChar(1)); }

    /// Opens the file and returns the message of a failure.
    QString open(const QString &file, bool desktopWorks = true)
    {
        CodeEditor editor([&](const QUrl &url) {
            opened = url;
            return desktopWorks;
        });
        const QSignalSpy failed(&editor, &CodeEditor::failed);
        editor.open(QVariantMap{{"path"_q, file}});
        return failed.value(0).value(0).toString();
    }

    const QTemporaryDir folder;
    QUrl opened;
};

QTEST_GUILESS_MAIN(CodeEditorTest)
#include "CodeEditorTest.moc"
