#pragma once

#include "Frame.h"

#include <QtCore/QtGlobal>

/// Whoever wants live dashboard pictures. The engine borrows it and never destroys it; it must be
/// taken out with `IDashboardEngine::removeConsumer` before it dies.
///
/// All operations run on the engine's thread inside the engine's pass over its consumers. They may
/// call `addConsumer` and `removeConsumer` for any consumer, itself too, but must not wait for
/// another thread that might be blocked in one. What they throw leaves the engine's tick.
class IDashboardConsumer
{
public:
    virtual ~IDashboardConsumer() = default;

    /// Wanted width in pixels; may change from tick to tick. 1 and less is no size at all.
    virtual int frameWidth() = 0;

    /// Wanted height in pixels, likewise.
    virtual int frameHeight() = 0;

    /// Whether the picture is wanted turned by 180 degrees.
    virtual bool isUpsideDown() = 0;

    /// The last sign of life in milliseconds, or 0 for a consumer that never expires. More than
    /// 1000 ms of silence end the registration without notice. The clock is the system's steady
    /// one: `QueryPerformanceCounter` on Windows, `CLOCK_MONOTONIC` elsewhere.
    virtual quint64 lastActivity() = 0;

    /// Hands over a frame, `width` pixels wide. The consumer may read `buffer`, swap it with a
    /// vector of its own or leave it; the engine builds the next frame in what stays there.
    /// `buffer` is valid only during the call.
    virtual void deliverFrame(Frame &buffer, int width) = 0;
};
