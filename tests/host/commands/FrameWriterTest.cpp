#include "commands/FrameWriter.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QtTest>

namespace {

constexpr QSize Size(4, 2);

/// An opaque frame of one shade.
Frame shade(unsigned char value)
{
    Frame frame(std::size_t(Size.width()) * Size.height() * 4, value);
    for (std::size_t i = 3; i < frame.size(); i += 4)
        frame[i] = 255;
    return frame;
}

} // namespace

class FrameWriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesAsManyFramesAsItWasAskedFor()
    {
        const QTemporaryDir folder;
        FrameWriter recorder(folder.path(), 3, Size, false);
        QSignalSpy finished(&recorder, &FrameWriter::finished);
        for (unsigned char value = 10; value < 60; value += 10) {
            Frame frame = shade(value);
            recorder.deliverFrame(frame, Size.width());
        }
        recorder.flush();
        QCOMPARE(finished.count(), 1);
        QCOMPARE(recorder.delivered(), 3);
        QCOMPARE(recorder.written(), 3);
        QCOMPARE(recorder.error(), QString());
        const QStringList files = QDir(folder.path()).entryList(QDir::Files, QDir::Name);
        QCOMPARE(files.size(), 3);
        QCOMPARE(files.last(), QStringLiteral("frame-000003.png"));
        const QImage second(folder.filePath(files.at(1)));
        QCOMPARE(second.size(), Size);
        QCOMPARE(second.pixel(3, 1), qRgb(20, 20, 20));
    }

    void aFrameThatIsNoPictureIsAnErrorAndNoFile()
    {
        const QTemporaryDir folder;
        FrameWriter recorder(folder.path(), 2, Size, false);
        Frame zeros(std::size_t(Size.width()) * Size.height() * 4, 0);
        recorder.deliverFrame(zeros, Size.width());
        Frame good = shade(50);
        recorder.deliverFrame(good, Size.width());
        recorder.flush();
        QCOMPARE(recorder.delivered(), 2);
        QCOMPARE(recorder.written(), 1);
        QVERIFY(recorder.error().contains(QStringLiteral("Frame 1")));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    }

    void aDirectoryThatTakesNoFilesIsAnError()
    {
        const QTemporaryDir folder;
        FrameWriter recorder(folder.filePath(QStringLiteral("missing")), 1, Size, false);
        Frame frame = shade(1);
        QSignalSpy failed(&recorder, &FrameWriter::failed);
        recorder.deliverFrame(frame, Size.width());
        recorder.flush();
        QTRY_COMPARE(failed.count(), 1);
        QCOMPARE(recorder.written(), 0);
        QVERIFY(recorder.error().contains(QStringLiteral("frame-000001.png")));
    }
};

QTEST_GUILESS_MAIN(FrameWriterTest)
#include "FrameWriterTest.moc"
