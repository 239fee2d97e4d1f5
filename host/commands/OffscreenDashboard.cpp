#include "OffscreenDashboard.h"

#include "IDashboardEngine.h"
#include "IDashboardRenderer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>

namespace {

constexpr int AveragedPublications = 6; ///< Even, and more than the engine speed's average takes.

} // namespace

OffscreenDashboard::OffscreenDashboard(IDashboardEngine &engine)
    : renderer(engine.createRenderer())
{
}

OffscreenDashboard::~OffscreenDashboard() = default;

bool OffscreenDashboard::load(const QString &document)
{
    return renderer != nullptr && renderer->load(document, DashboardWidth, DashboardHeight);
}

void OffscreenDashboard::publish(const TelemetryState &state)
{
    const TelemetrySample &sample = state.sample;
    for (int i = 0; i < AveragedPublications; ++i) {
        renderer->publishTelemetry(sample.vehicle, sample.limits, sample.extended, {}, {}, 1.0F,
                                   state.useMph, state.showMarkers, sample.paused);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

QImage OffscreenDashboard::settled(const TelemetryState &state, QSize size)
{
    constexpr int AlikeInRow = 3;
    constexpr qint64 PatienceMs = 10'000; // Longer than any useful fade.
    QElapsedTimer time;
    time.start();
    QImage last;
    for (int alike = 0; alike < AlikeInRow && !time.hasExpired(PatienceMs);) {
        publish(state);
        const QImage next = picture(size);
        if (next.isNull())
            return {};
        alike = next == last ? alike + 1 : 1;
        last = next;
        if (alike == AlikeInRow)
            return last;
    }
    return {};
}

QStringList OffscreenDashboard::errors() const
{
    return renderer != nullptr ? renderer->errors()
                               : QStringList(QStringLiteral("OpenGL is not available."));
}

QStringList OffscreenDashboard::publishedFields() const
{
    QStringList names;
    if (renderer == nullptr)
        return names;
    for (const QString &name : renderer->publishedFields())
        names.append(name);
    return names;
}

QImage OffscreenDashboard::picture(QSize size)
{
    Frame frame;
    if (!renderer->renderFrame(frame, size.width(), size.height(), false) ||
        frame.size() != frameBytes(size.width(), size.height()))
        return {};
    return QImage(frame.data(), size.width(), size.height(), size.width() * BytesPerPixel,
                  QImage::Format_RGB32)
        .copy();
}
