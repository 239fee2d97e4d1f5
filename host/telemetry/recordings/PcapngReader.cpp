#include "PcapngReader.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

enum BlockType : quint32 {
    Section = 0x0a0d0d0a,
    InterfaceDescription = 1,
    OldPacket = 2,
    SimplePacket = 3,
    EnhancedPacket = 6,
};

constexpr int HeaderSize = 8; ///< Type and length; the length is repeated at the end.
constexpr int LengthSize = 4;
constexpr quint32 LargestBlock = 16 * 1024 * 1024;

/// From the option's byte: a power of ten, or of two if its highest bit is set.
quint64 ticksPerSecond(quint8 resolution)
{
    constexpr quint8 Binary = 0x80;
    constexpr int LargestTen = 19; // Of those that 64 bits hold.
    constexpr int LargestTwo = 63;
    const int power = resolution & ~Binary;
    if ((resolution & Binary) != 0)
        return quint64{1} << std::min(power, LargestTwo);
    quint64 ticks = 1;
    for (int i = 0; i < std::min(power, LargestTen); ++i)
        ticks *= 10;
    return ticks;
}

} // namespace

PcapngReader::PcapngReader(std::unique_ptr<QIODevice> device)
    : device(std::move(device))
{
}

std::optional<PcapngReader::Packet> PcapngReader::next()
{
    while (reason.isEmpty() && readBlock()) {
        std::optional<Packet> found;
        if (type == Section)
            interfaces.clear();
        else if (type == InterfaceDescription)
            addInterface();
        else if (type == EnhancedPacket || type == OldPacket)
            found = packet();
        else if (type == SimplePacket)
            found = simplePacket();
        if (found)
            return found;
    }
    return std::nullopt;
}

bool PcapngReader::readBlock()
{
    body = device->read(HeaderSize);
    if (body.isEmpty())
        return false;
    if (body.size() < HeaderSize)
        return fail(QStringLiteral("a block is cut off"));
    type = word(0);
    if (type == Section) {
        const QByteArray order = device->peek(LengthSize);
        bigEndian = order == QByteArray::fromHex("1a2b3c4d");
        if (!bigEndian && order != QByteArray::fromHex("4d3c2b1a"))
            return fail(QStringLiteral("a section has no byte order"));
    }
    const quint32 length = word(4);
    if (length < HeaderSize + LengthSize || length % 4 != 0 || length > LargestBlock)
        return fail(QStringLiteral("a block has the length %1").arg(length));
    const int rest = static_cast<int>(length) - HeaderSize;
    body = device->read(rest);
    if (body.size() < rest)
        return fail(QStringLiteral("a block is cut off"));
    body.chop(LengthSize);
    return true;
}

void PcapngReader::addInterface()
{
    constexpr int OptionsAt = 8;
    constexpr int OptionHeader = 4;
    enum Option : quint16 { Resolution = 9, Offset = 14 };
    if (body.size() < OptionsAt) {
        fail(QStringLiteral("an interface is cut off"));
        return;
    }
    Interface added;
    added.linkType = half(0);
    for (int at = OptionsAt; at + OptionHeader <= body.size();) {
        const quint16 option = half(at);
        const int size = half(at + 2);
        at += OptionHeader;
        if (option == 0 || at + size > body.size())
            break;
        if (option == Resolution && size == 1)
            added.ticksPerSecond = ticksPerSecond(static_cast<quint8>(body.at(at)));
        if (option == Offset && size == 8) {
            const quint64 high = word(bigEndian ? at : at + 4);
            added.secondsAhead = static_cast<qint64>(high << 32 | word(bigEndian ? at + 4 : at));
        }
        at += (size + 3) / 4 * 4;
    }
    interfaces.push_back(added);
}

std::optional<PcapngReader::Packet> PcapngReader::packet()
{
    constexpr int BytesAt = 20;
    constexpr double Farthest = 9e9; // Seconds that nanoseconds can count.
    const quint32 number = body.size() < BytesAt ? 0 : type == EnhancedPacket ? word(0) : half(0);
    if (body.size() < BytesAt || number >= interfaces.size() ||
        word(12) > static_cast<quint32>(body.size() - BytesAt)) {
        fail(QStringLiteral("a packet is damaged"));
        return std::nullopt;
    }
    const Interface &from = interfaces[number];
    const quint64 ticks = quint64{word(4)} << 32 | word(8);
    const quint64 whole = ticks / from.ticksPerSecond;
    const double seconds = std::clamp(
        static_cast<double>(whole) + static_cast<double>(from.secondsAhead), 0.0, Farthest);
    const double fraction =
        static_cast<double>(ticks % from.ticksPerSecond) / static_cast<double>(from.ticksPerSecond);
    lastTime = std::chrono::seconds(static_cast<qint64>(seconds)) +
               std::chrono::nanoseconds(std::llround(fraction * 1e9));
    return Packet{from.linkType, lastTime, body.mid(BytesAt, static_cast<int>(word(12)))};
}

/// A packet of the first interface, without a time.
std::optional<PcapngReader::Packet> PcapngReader::simplePacket()
{
    if (body.size() < LengthSize || interfaces.empty()) {
        fail(QStringLiteral("a packet is damaged"));
        return std::nullopt;
    }
    const quint32 kept = std::min(word(0), static_cast<quint32>(body.size() - LengthSize));
    return Packet{interfaces.front().linkType, lastTime,
                  body.mid(LengthSize, static_cast<int>(kept))};
}

bool PcapngReader::fail(const QString &text)
{
    reason = text;
    return false;
}

quint16 PcapngReader::half(int offset) const
{
    const char *const at = body.constData() + offset;
    return bigEndian ? qFromBigEndian<quint16>(at) : qFromLittleEndian<quint16>(at);
}

quint32 PcapngReader::word(int offset) const
{
    const char *const at = body.constData() + offset;
    return bigEndian ? qFromBigEndian<quint32>(at) : qFromLittleEndian<quint32>(at);
}
