#include "commands/FrameWriter.h"
#include "support/TestFiles.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QtTest>

class FrameWriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesAsManyFramesAsItWasAskedForAndTellsThoseItCannot()
    {
        constexpr QSize Size(4, 2);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("frame-000003.png"_q));
        FrameWriter writer(folder.path(), 4, Size, false);
        QSignalSpy finished(&writer, &FrameWriter::finished);
        QSignalSpy failed(&writer, &FrameWriter::failed);
        for (const unsigned char byte : {10, 0, 30, 40, 50}) { // 0 is transparent: no picture.
            Frame frame(frameBytes(Size.width(), Size.height()), byte);
            writer.deliverFrame(frame, Size.width());
            writer.flush();
        }
        QCOMPARE(finished.count(), 1);
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY2(writer.error().contains("Frame 2"_q), qPrintable(writer.error()));
        QCOMPARE(writer.delivered(), 4);
        QCOMPARE(writer.written(), 2);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
        const QImage last(folder.filePath("frame-000004.png"_q));
        QCOMPARE(last.size(), Size);
        QCOMPARE(qAlpha(last.pixel(3, 1)), 40);
    }
};

QTEST_GUILESS_MAIN(FrameWriterTest)
#include "FrameWriterTest.moc"
