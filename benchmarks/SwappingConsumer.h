#pragma once

#include "plugin/IDashboardConsumer.h"

/// Swaps each frame for its own, as a window does.
class SwappingConsumer final : public IDashboardConsumer
{
public:
    static constexpr int Width = DashboardWidth;
    static constexpr int Height = DashboardHeight;

    int frameWidth() override { return Width; }
    int frameHeight() override { return Height; }
    bool isUpsideDown() override { return false; }
    quint64 lastActivity() override { return 0; }
    void deliverFrame(Frame &buffer, int /*width*/) override
    {
        frame.swap(buffer);
        ++delivered;
    }

    Frame frame;
    int delivered = 0;
};
