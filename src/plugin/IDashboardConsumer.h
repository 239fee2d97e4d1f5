#pragma once

#include "Frame.h"

#include <QtCore/QtGlobal>

/// Receives live pictures of the dashboard. The engine borrows a consumer, which must be removed
/// with `IDashboardEngine::removeConsumer` before it is destroyed.
///
/// The engine calls all operations on its own thread, during its pass over the consumers. They may
/// call `addConsumer` and `removeConsumer` for any consumer, themselves included, but must not wait
/// for another thread that may be blocked in one of these. Exceptions leave the engine's tick.
class IDashboardConsumer
{
public:
    virtual ~IDashboardConsumer() = default;

    /// Wanted width in pixels; may change at any tick. 1 or less means no size.
    virtual int frameWidth() = 0;

    /// Wanted height in pixels, likewise.
    virtual int frameHeight() = 0;

    /// Whether the picture is wanted turned by 180 degrees.
    virtual bool isUpsideDown() = 0;

    /// When the consumer was last active, in milliseconds, or 0 if it never expires. The engine
    /// removes a consumer that has been inactive for more than 1000 ms, without telling it. The
    /// clock is `QueryPerformanceCounter` on Windows and `CLOCK_MONOTONIC` elsewhere.
    virtual quint64 lastActivity() = 0;

    /// Delivers a frame that is `width` pixels wide. The consumer may read `buffer` or swap it with
    /// a vector of its own; the engine renders a later frame into what is left there. `buffer` is
    /// valid only during the call.
    virtual void deliverFrame(Frame &buffer, int width) = 0;
};
