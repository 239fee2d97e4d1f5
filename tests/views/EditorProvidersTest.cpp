#include "support/FakeRenderer.h"
#include "support/PaintedText.h"
#include "support/Shouter.h"
#include "views/EditorBench.h"
#include "views/MessageImageProvider.h"
#include "views/PreviewImageProvider.h"

#include <QtTest/QtTest>

#include <limits>
#include <new>
#include <stdexcept>

namespace {

const QString Message = QStringLiteral("Dashboard requires hardware acceleration");
constexpr int Flags = Qt::AlignCenter | Qt::TextWordWrap;
constexpr int Largest = std::numeric_limits<int>::max();

/// A provider on a fake renderer.
struct Preview
{
    RendererScript script;
    FakeRenderer renderer{script};
    std::shared_ptr<LentRenderer> lent = std::make_shared<LentRenderer>();
    std::unique_ptr<PreviewImageProvider> provider;
    QSize size;

    Preview()
    {
        lent->renderer = &renderer;
        provider = std::make_unique<PreviewImageProvider>(lent);
    }
    QImage request(int width) { return provider->requestImage({}, &size, QSize(width, 7)); }
};

} // namespace

class EditorProvidersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePreviewIsRenderedAtTheRequestedWidth_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QSize>("rendered");
        QTest::newRow("none") << 0 << QSize(480, 272);
        QTest::newRow("negative") << -1 << QSize(480, 272);
        QTest::newRow("1") << 1 << QSize(1, 0);
        QTest::newRow("2") << 2 << QSize(2, 1);
        QTest::newRow("25") << 25 << QSize(25, 14);
        QTest::newRow("26") << 26 << QSize(26, 14);
        QTest::newRow("480") << 480 << QSize(480, 272);
        QTest::newRow("854") << 854 << QSize(854, 483);
        QTest::newRow("20000") << 20'000 << QSize(20'000, 11'333);
        QTest::newRow("largest") << Largest << QSize(Largest, 1'216'907'392);
    }
    void thePreviewIsRenderedAtTheRequestedWidth()
    {
        QFETCH(int, width);
        QFETCH(QSize, rendered);
        Preview preview;
        const bool small = rendered.width() < 1000;
        if (!small)
            preview.script.bytes = 4; // More than that would be too much for a test.
        const QImage image = preview.request(width);
        const RenderCall &call = preview.script.renderCalls.back();
        QCOMPARE(QSize(call.width, call.height), rendered);
        QCOMPARE(preview.size, QSize(480, 272));
        QCOMPARE(image.size(), small && rendered.height() > 0 ? rendered : QSize(0, 0));
    }

    void aTrueResultOfAnotherLengthKeepsThePicture()
    {
        Preview preview;
        preview.script.fill = 3;
        const std::size_t whole = frameBytes(48, 27);
        const QImage image = preview.request(48);
        QCOMPARE(image.size(), QSize(48, 27));
        QCOMPARE(image.pixel(47, 26), 0x03030303U);
        for (const std::size_t bytes : {std::size_t(0), std::size_t(1), whole - 1, whole + 1}) {
            preview.script.bytes = bytes;
            QCOMPARE(preview.request(48), image);
        }
    }

    void aFailureGivesOnePixelUntilTheNextSuccess()
    {
        Preview preview;
        const QImage good = preview.request(48);
        QCOMPARE(good.size(), QSize(48, 27));
        preview.script.renders = false;
        const QImage failure = preview.request(48);
        QCOMPARE(failure.size(), QSize(1, 1));
        QCOMPARE(failure.format(), QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(preview.size, QSize(480, 272));
        preview.script.renders = true;
        preview.script.fill = 9;
        QCOMPARE(preview.request(48).pixel(0, 0), 0x09090909U);
        QCOMPARE(good.pixel(0, 0), 0x01010101U);
        QVERIFY(!preview.script.renderCalls.back().upsideDown);
    }

    void aPictureBeyondMemoryIsAFailure()
    {
        Preview preview;
        preview.script.duringRender = [] { throw std::bad_alloc(); };
        QCOMPARE(preview.request(48).size(), QSize(1, 1));
        preview.script.duringRender = [] { throw std::length_error("too long"); };
        QCOMPARE(preview.request(48).size(), QSize(1, 1));
        preview.script.duringRender = nullptr;
        QCOMPARE(preview.request(48).size(), QSize(48, 27));
    }

    void renderingReusesItsMemory()
    {
        Preview preview;
        static_cast<void>(preview.request(48));
        std::set<const unsigned char *> held;
        QImage shown;
        for (int i = 0; i < 10; ++i) {
            shown = preview.request(48);
            held.insert(shown.constBits());
        }
        QCOMPARE(held.size(), 2U);
        QCOMPARE(preview.script.renderCalls.back().sizeBefore, frameBytes(48, 27));
    }

    void aRendererThatIsGoneIsNotAsked()
    {
        Preview preview;
        preview.lent->renderer = nullptr;
        QCOMPARE(preview.request(48).size(), QSize(1, 1));
        QCOMPARE(preview.size, QSize(480, 272));
        QVERIFY(preview.script.renderCalls.empty());
    }

    void theMessageIsPaintedAtTheRequestedWidth_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<int>("font");
        QTest::newRow("none") << 0 << QSize(480, 272) << 19;
        QTest::newRow("negative") << -1 << QSize(480, 272) << 19;
        QTest::newRow("25") << 25 << QSize(25, 14) << 10;
        QTest::newRow("26") << 26 << QSize(26, 14) << 10;
        QTest::newRow("274") << 274 << QSize(274, 155) << 10;
        QTest::newRow("275") << 275 << QSize(275, 155) << 11;
        QTest::newRow("854") << 854 << QSize(854, 483) << 34;
    }
    void theMessageIsPaintedAtTheRequestedWidth()
    {
        QFETCH(int, width);
        QFETCH(QSize, picture);
        QFETCH(int, font);
        MessageImageProvider provider(Message);
        QSize size;
        const QImage image = provider.requestImage({}, &size, QSize(width, 7));
        QCOMPARE(size, picture);
        QCOMPARE(image, paintedText(picture.width(), picture.height(), Message, font, Flags));
        QCOMPARE(provider.requestImage({}, nullptr, QSize(width, 7)), image);
    }

    void aMessageOfImpossibleSizeIsNoPicture()
    {
        MessageImageProvider provider(Message);
        for (const int width : {1, Largest}) {
            QSize size(5, 5);
            QVERIFY(provider.requestImage({}, &size, QSize(width, 0)).isNull());
            QCOMPARE(size, QSize(0, 0));
        }
    }

    void aHugeMessageIsStillAPicture()
    {
        MessageImageProvider provider({});
        QSize size;
        const QImage image = provider.requestImage({}, &size, QSize(20'000, 0));
        QCOMPARE(size, QSize(20'000, 11'333));
        QCOMPARE(image.pixel(19'999, 11'332), qRgb(0, 0, 0));
    }

    void bothMessagesAreTranslated()
    {
        EditorBench bench(false);
        {
            const Shouter shouter("DashboardEditorVM");
            bench.run();
        }
        QCOMPARE(bench.model->fieldNames(), "NOT AVAILABLE WITHOUT HARDWARE ACCELERATION"_q);
        QCOMPARE(bench.request(), paintedText(480, 272, Message.toUpper(), 19, Flags));
    }
};

QTEST_MAIN(EditorProvidersTest)
#include "EditorProvidersTest.moc"
