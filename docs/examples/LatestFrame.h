#pragma once

#include <IDashboardConsumer.h>

#include <QtGui/QImage>

#include <mutex>

/// Keeps the newest frame for whoever asks, on any thread. Nothing is copied or allocated per
/// frame.
class LatestFrame final : public IDashboardConsumer
{
public:
    int frameWidth() override { return 480; }
    int frameHeight() override { return 272; }
    bool isUpsideDown() override { return false; }
    quint64 lastActivity() override { return 0; } // Never expires.

    void deliverFrame(Frame &buffer, int width) override
    {
        const std::lock_guard guard(mutex);
        newest.swap(buffer);
        newestWidth = width;
    }

    /// A copy of the newest frame; null before the first.
    QImage picture() const
    {
        const std::lock_guard guard(mutex);
        if (newest.empty())
            return {};
        const int height = static_cast<int>(newest.size()) / 4 / newestWidth;
        return QImage(newest.data(), newestWidth, height, QImage::Format_ARGB32_Premultiplied)
            .copy();
    }

private:
    mutable std::mutex mutex;
    Frame newest;
    int newestWidth = 0;
};
