#pragma once

#include "plugin/IDashboardConsumer.h"

#include <QtCore/QStringList>

#include <functional>
#include <utility>
#include <vector>

/// What a consumer may do with the vector that it is handed.
enum class BufferUse { Leave, Swap, ThrowAway };

struct Delivery
{
    Frame frame;
    int width;
    const unsigned char *address; ///< Where the engine had built the frame.
};

/// A consumer of the test's wishes that keeps what it gets.
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

    QStringList asked; ///< The engine's questions, in order.
    std::vector<Delivery> deliveries;
    Frame own; ///< The other half of the double buffer.

    int frameWidth() override
    {
        ask(QStringLiteral("width"));
        return width;
    }
    int frameHeight() override
    {
        ask(QStringLiteral("height"));
        return height;
    }
    bool isUpsideDown() override
    {
        ask(QStringLiteral("turn"));
        return upsideDown;
    }
    quint64 lastActivity() override
    {
        ask(QStringLiteral("life"));
        return seen;
    }
    void deliverFrame(Frame &buffer, int frameWidth) override
    {
        if (during)
            during(QStringLiteral("delivery"));
        deliveries.push_back({buffer, frameWidth, buffer.data()});
        if (use == BufferUse::Swap)
            buffer.swap(own);
        else if (use == BufferUse::ThrowAway)
            Frame().swap(buffer);
    }

private:
    void ask(const QString &question)
    {
        asked += question;
        if (during)
            during(question);
    }
};
