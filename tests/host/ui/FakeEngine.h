#pragma once

#include "IDashboardConsumer.h"
#include "IDashboardEngine.h"
#include "IDashboardRenderer.h"

#include <QtGui/QImage>

#include <memory>
#include <set>

/// An engine that draws frames of one colour when the test says so.
class FakeEngine final : public IDashboardEngine
{
public:
    std::set<IDashboardConsumer *> consumers;
    QColor waitingColor = Qt::blue;

    /// One pass over the consumers.
    void deliver(const QColor &color)
    {
        for (IDashboardConsumer *const consumer : consumers) {
            const QSize size(consumer->frameWidth(), consumer->frameHeight());
            QImage image(size, QImage::Format_ARGB32_Premultiplied);
            image.fill(color);
            buffer.assign(image.constBits(), image.constBits() + image.sizeInBytes());
            consumer->deliverFrame(buffer, size.width());
        }
    }
    Frame buffer;

    void updateTelemetry(const VehicleTelemetry &, const DisplayLimits &, const ExtendedTelemetry &,
                         bool) override
    {
    }
    void setDashboardFile(const QString &) override {}
    void shutdown() override {}
    std::unique_ptr<IDashboardRenderer> createRenderer() override { return nullptr; }
    void addConsumer(IDashboardConsumer *consumer) override { consumers.insert(consumer); }
    void removeConsumer(IDashboardConsumer *consumer) override { consumers.erase(consumer); }
    bool hasConsumers() override { return !consumers.empty(); }
    std::unique_ptr<QImage> createWaitingImage(int scale) override
    {
        auto image =
            std::make_unique<QImage>(QSize(480, 272) * scale, QImage::Format_ARGB32_Premultiplied);
        image->fill(waitingColor);
        return image;
    }
    void setMotionProfileName(const QString &) override {}
    void setTuneInfo(const QString &, const QString &, const TuneValue &) override {}
};
