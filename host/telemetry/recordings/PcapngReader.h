#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QString>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

/// Reads the packets of a pcapng file, each with the link type of its own interface; libpcap
/// refuses a file with several. Any bytes are safe. Used by one thread at a time.
class PcapngReader
{
public:
    struct Packet
    {
        int linkType = 0;                 ///< As numbered in files.
        std::chrono::nanoseconds time{0}; ///< Since 1970.
        QByteArray bytes;                 ///< What the capture kept of it.
    };

    /// Takes a file that is open at its beginning.
    explicit PcapngReader(std::unique_ptr<QIODevice> device);

    /// Nothing at the end, and at damage, which `failure` reports.
    std::optional<Packet> next();

    /// Why reading ended early, without a full stop; empty if it didn't.
    QString failure() const { return reason; }

private:
    struct Interface
    {
        int linkType = 0;
        quint64 ticksPerSecond = 1'000'000;
        qint64 secondsAhead = 0;
    };

    bool readBlock();
    void addInterface();
    std::optional<Packet> packet();
    std::optional<Packet> simplePacket();
    bool fail(const QString &text);
    quint16 half(int offset) const;
    quint32 word(int offset) const;

    const std::unique_ptr<QIODevice> device;
    bool bigEndian = false;
    quint32 type = 0; ///< Of the block.
    QByteArray body;  ///< Without type and lengths.
    std::vector<Interface> interfaces;
    std::chrono::nanoseconds lastTime{0};
    QString reason;
};
