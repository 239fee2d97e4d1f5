#pragma once

#include "plugin/IDashboardConsumer.h"

#include <QtCore/QStringList>

#include <functional>
#include <vector>

/// What a consumer does with the vector that it is handed.
enum class BufferUse { Leave, Swap, ThrowAway };

struct Delivery
{
    Frame frame;
    int width;
    const unsigned char *address; ///< Where the engine had built the frame.
};

/// A consumer that answers as the test sets it and keeps what it gets.
class FakeConsumer final : public IDashboardConsumer
{
public:
    explicit FakeConsumer(int width = 4, int height = 3, BufferUse use = BufferUse::Leave)
        : width(width)
        , height(height)
        , use(use)
    {
    }

    int width;
    int height;
    BufferUse use;
    bool upsideDown = false;
    quint64 seen = 0;
    std::function<void(const QString &)> during; ///< Runs inside every call, with its name.

    QStringList asked; ///< The engine's calls, in order.
    std::vector<Delivery> deliveries;
    Frame own; ///< The other half of the double buffer.

    int frameWidth() override { return answer("width", width); }
    int frameHeight() override { return answer("height", height); }
    bool isUpsideDown() override { return answer("turn", upsideDown); }
    quint64 lastActivity() override { return answer("life", seen); }
    void deliverFrame(Frame &buffer, int frameWidth) override
    {
        answer("delivery", 0);
        deliveries.push_back({buffer, frameWidth, buffer.data()});
        if (use == BufferUse::Swap)
            buffer.swap(own);
        else if (use == BufferUse::ThrowAway)
            Frame().swap(buffer);
    }

private:
    template<typename T> T answer(const char *call, const T &value)
    {
        asked += QLatin1String(call);
        if (during)
            during(QLatin1String(call));
        return value;
    }
};
