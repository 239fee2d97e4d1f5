#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

#include <cstring>

// Datagrams as the games' documentation lays them out. Every field that a game measures has a value
// of its own here, so that a mix-up shows.

/// A datagram that is filled place by place.
class Packet
{
public:
    explicit Packet(int length)
        : bytes(length, '\0')
    {
    }

    template<typename Number> Packet &put(int offset, Number number)
    {
        const Number little = qToLittleEndian(number);
        std::memcpy(bytes.data() + offset, &little, sizeof little);
        return *this;
    }

    template<typename... Reals> Packet &reals(int offset, Reals... values)
    {
        ((put(offset, static_cast<float>(values)), offset += 4), ...);
        return *this;
    }

    Packet &text(int offset, const QByteArray &letters)
    {
        std::memcpy(bytes.data() + offset, letters.constData(), std::size_t(letters.size()));
        return *this;
    }

    operator QByteArray() const { return bytes; }

private:
    QByteArray bytes;
};

namespace Senders {

inline Packet outGauge(const QByteArray &car = "XFG", int length = 92)
{
    constexpr quint32 Lights = 0x1 | 0x2 | 0x8 | 0x10 | 0x400;
    Packet packet(length);
    packet.put<quint32>(0, 123456).text(4, car).put<quint16>(8, 0x4000).put<quint8>(10, 4);
    packet.reals(12, 50.0, 6543.4, 0.8, 90, 0.625, 4.5, 95);
    packet.put<quint32>(40, Lights).put<quint32>(44, 0x8 | 0x400);
    packet.reals(48, 0.75, 0.25, 0.5).text(60, "Fuel 62.5%").text(76, "Brake Bal 55");
    return packet;
}

/// `length` is that of one of the four formats.
inline Packet dataOut(int length = 311, qint32 car = 1234)
{
    Packet packet(length);
    packet.put<qint32>(0, 1).put<quint32>(4, 987654);
    packet.reals(8, 8000, 850, 7250.4).reals(20, 9.80665, 4.903325, -19.6133).reals(32, 30, 0, 40);
    packet.reals(44, 0.1, 0.2, 0.3).reals(56, -1.5707964, 0.0872665, -0.0349066);
    packet.reals(68, 0.4, 0.5, 0.6, 0.7).reals(84, 1.5, 0.2, -0.3, -1.2);
    packet.reals(100, 100, 101, 102, 103).reals(132, 0, 0, 0, 0).reals(148, 0.1, 0.1, 0.1, 0.1);
    packet.reals(164, 0.1, 1.1, -0.2, -2).reals(180, 1.6, 1.2, 0.4, 2.2);
    packet.reals(196, 0.01, 0.02, 0.03, 0.04);
    packet.put<qint32>(212, car).put<qint32>(216, 4).put<qint32>(220, 800);
    packet.put<qint32>(224, 1).put<qint32>(228, 6);
    if (length == 232)
        return packet;
    const int dash = length == 324 ? 244 : 232;
    packet.reals(dash, 100, 20, 300, 51, 250'000, 400, 176, 185, 194, 203, 1.2, 0.45, 5000);
    packet.reals(dash + 52, 81.25, 83.456, 12.5, 180);
    packet.put<quint16>(dash + 68, 3).put<quint8>(dash + 70, 7);
    packet.put<quint8>(dash + 71, 255).put<quint8>(dash + 72, 51).put<quint8>(dash + 73, 128);
    packet.put<quint8>(dash + 75, 5).put<qint8>(dash + 76, -127);
    if (length == 331)
        packet.reals(311, 0.1, 0.2, 0.3, 0.4).put<qint32>(327, 42);
    return packet;
}

/// `count` of four-byte numbers: 66 for extradata 3, 38 for 1, 70 for the Formula games.
inline Packet ego(int count = 66)
{
    Packet packet(4 * count);
    packet.reals(0, 200, 12.5, 1500, 9000, 10, 20, 30, 50, 30, 0, 40);
    packet.reals(44, 0, -0.1, -0.99498744).reals(56, -0.8660254, 0.5, 0);
    packet.reals(68, 1, 2, 3, 4, 5, 6, 7, 8, 51, 52, 53, 54);
    packet.reals(116, 0.75, -0.5, 0.25, 0.1, 4, 1.25, -0.75, 2, 759.26);
    if (count == 38)
        return packet;
    packet.reals(152, 0, 7, 0, 0, 1, 3, 1, 20, 80, 0, 1, 30, 31);
    packet.reals(204, 300, 310, 320, 330, 20, 21, 22, 23);
    packet.reals(236, 3, 12, 5000, 83.456, 837.758, 151.8437, 5);
    if (count == 70)
        packet.reals(148, 11'500).reals(252, 12'500, 4000, 8).reals(264, 2, 1, 4, 3);
    return packet;
}

} // namespace Senders
