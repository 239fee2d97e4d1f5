#include "commands/FrameWriter.h"
#include "support/TestFiles.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QtTest>

class FrameWriterTest : public QObject
{
    Q_OBJECT

private:
    static constexpr QSize Size{4, 2};

    /// Delivers frames of one value a byte each: opaque ones, and transparent black for 0.
    static void deliver(FrameWriter &writer, std::initializer_list<unsigned char> values)
    {
        for (const unsigned char value : values) {
            Frame frame(frameBytes(Size.width(), Size.height()), value);
            writer.deliverFrame(frame, Size.width());
        }
        writer.flush();
    }

private Q_SLOTS:
    void writesAsManyFramesAsItWasAskedFor()
    {
        const QTemporaryDir folder;
        FrameWriter writer(folder.path(), 3, Size, false);
        QSignalSpy finished(&writer, &FrameWriter::finished);
        deliver(writer, {10, 20, 30, 40, 50});
        QCOMPARE(finished.count(), 1);
        QCOMPARE(writer.written(), 3);
        QCOMPARE(writer.error(), QString());
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 3);
        const QImage second(folder.filePath("frame-000002.png"_q));
        QCOMPARE(second.size(), Size);
        QCOMPARE(qAlpha(second.pixel(3, 1)), 20);
    }

    void aFrameThatIsNoPictureOrCannotBeWrittenIsAnError()
    {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("frame-000003.png"_q));
        FrameWriter writer(folder.path(), 3, Size, false);
        QSignalSpy failed(&writer, &FrameWriter::failed);
        deliver(writer, {50, 0});
        QVERIFY2(writer.error().contains("Frame 2"_q), qPrintable(writer.error()));
        deliver(writer, {50});
        QCOMPARE(writer.delivered(), 3);
        QCOMPARE(writer.written(), 1);
        QTRY_COMPARE(failed.count(), 1);
    }
};

QTEST_GUILESS_MAIN(FrameWriterTest)
#include "FrameWriterTest.moc"
