#include "ui/CodeEditor.h"

#include "support/TestFiles.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtTest/QtTest>

class CodeEditorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        qputenv("PATH", QFile::encodeName(path("bin")));
        qunsetenv("VISUAL");
        document = path("my dash/$(touch x); '\"-é\n*.qml");
        writeFile(document, "Item {}");
        opened.clear();
    }

    void visualStudioCodeGetsFolderAndFile()
    {
        addProgram("code");
        addProgram("kate");
        qputenv("VISUAL", "kate");
        open(document);
        QTRY_COMPARE(run(), QStringList({"code"_q, QFileInfo(document).path(), document, ""_q}));
        // A name like an option is a file.
        writeFile(path("--wait"), "Item {}");
        QVERIFY(QDir::setCurrent(folder->path()));
        open("--wait"_q);
        QTRY_COMPARE(run().value(2), path("--wait"));
    }

    void theCommandInVisualIsNext()
    {
        addProgram("my editor");
        qputenv("VISUAL", "\"my editor\" --wait '-n'");
        open(document);
        QTRY_COMPARE(run(), QStringList({"my editor"_q, "--wait"_q, "'-n'"_q, document, ""_q}));
        QVERIFY(opened.isEmpty());
    }

    void theDesktopIsLast()
    {
        addProgram("vim");
        for (const char *name : {"bin/broken", "bin/code"}) {
            writeFile(path(name), "\x7f"
                                  "ELF no program");
            QVERIFY(QFile::setPermissions(path(name), QFile::ReadOwner | QFile::ExeOwner));
        }
        for (const char *visual : {"", "no-such-editor -w", "broken", "vim"}) {
            qputenv("VISUAL", visual);
            QCOMPARE(open(document), QString());
            QCOMPARE(std::exchange(opened, {}), QUrl::fromLocalFile(document));
        }
    }

    void theUserIsToldWhereThereIsNone()
    {
        QVERIFY(open(document, false).contains("VISUAL"_q));
        opened.clear();
        QVERIFY(open(path("gone.qml")).contains("gone.qml"_q));
        QVERIFY(!open({}).isEmpty());
        QVERIFY(opened.isEmpty());
    }

private:
    QString path(const char *name) const { return folder->filePath(QString::fromUtf8(name)); }

    /// A program that leaves its name and its arguments in a file, each with a byte 1 behind it.
    void addProgram(const QByteArray &name) const
    {
        const QString program = path("bin/" + name);
        writeFile(program, "#!/bin/sh\nprintf '%s\\001' \"${0##*/}\" \"$@\" > '" +
                               path("run").toUtf8() + "'\n");
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

    std::unique_ptr<QTemporaryDir> folder;
    QString document;
    QUrl opened;
};

QTEST_GUILESS_MAIN(CodeEditorTest)
#include "CodeEditorTest.moc"
