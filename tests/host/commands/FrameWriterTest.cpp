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

    /// One shade of grey; opaque, as every picture of the engine's is, unless it is 0.
    static void deliver(FrameWriter &writer, unsigned char shade)
    {
        Frame frame(frameBytes(Size.width(), Size.height()), shade);
        for (std::size_t alpha = 3; alpha < frame.size(); alpha += BytesPerPixel)
            frame[alpha] = shade == 0 ? 0 : 255;
        writer.deliverFrame(frame, Size.width());
    }

private Q_SLOTS:
    void writesAsManyFramesAsItWasAskedFor()
    {
        const QTemporaryDir folder;
        FrameWriter writer(folder.path(), 3, Size, false);
        QSignalSpy finished(&writer, &FrameWriter::finished);
        for (unsigned char shade = 10; shade < 60; shade += 10)
            deliver(writer, shade);
        writer.flush();
        QCOMPARE(finished.count(), 1);
        QCOMPARE(writer.delivered(), 3);
        QCOMPARE(writer.written(), 3);
        QCOMPARE(writer.error(), QString());
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 3);
        const QImage second(folder.filePath("frame-000002.png"_q));
        QCOMPARE(second.size(), Size);
        QCOMPARE(second.pixel(3, 1), qRgb(20, 20, 20));
    }

    void aFrameThatIsNoPictureOrCannotBeWrittenIsAnError()
    {
        const QTemporaryDir folder;
        FrameWriter writer(folder.path(), 3, Size, false);
        QSignalSpy failed(&writer, &FrameWriter::failed);
        QVERIFY(QDir(folder.path()).mkdir("frame-000003.png"_q));
        deliver(writer, 0);
        deliver(writer, 50);
        writer.flush();
        QCOMPARE(writer.written(), 1);
        QVERIFY2(writer.error().contains("Frame 1"_q), qPrintable(writer.error()));
        deliver(writer, 50);
        writer.flush();
        QCOMPARE(writer.written(), 1);
        QTRY_COMPARE(failed.count(), 1);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    }
};

QTEST_GUILESS_MAIN(FrameWriterTest)
#include "FrameWriterTest.moc"
