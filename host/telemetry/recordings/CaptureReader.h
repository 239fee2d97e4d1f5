#pragma once

#include "DatagramReader.h"
#include "PacketDecoder.h"
#include "PcapngReader.h"

#include <QtCore/QByteArray>

#include <map>
#include <memory>

struct pcap;

/// Reads the UDP datagrams of a capture, pcap or pcapng, that this host or another tool wrote.
class CaptureReader final : public DatagramReader
{
public:
    /// Whether a file that begins with these bytes looks like a capture.
    static bool recognises(const QByteArray &beginning);

    /// Null if the file can't be read as a capture; `error` is then a line to follow the file's
    /// name.
    static std::unique_ptr<CaptureReader> open(const QString &path, QString &error);

    std::optional<Datagram> next() override;
    void rewind() override;
    QStringList remarks() const override;

private:
    struct Close
    {
        void operator()(pcap *opened) const;
    };

    explicit CaptureReader(QString path);

    QString openCapture();
    std::optional<PcapngReader::Packet> nextPacket();
    std::optional<PcapngReader::Packet> nextOfPcap();

    const QString path;
    std::unique_ptr<pcap, Close> capture; ///< Of a pcap file; null at its end.
    std::unique_ptr<PcapngReader> blocks; ///< Of a pcapng file.
    int fragments = 0;
    int truncated = 0;
    std::map<int, int> unsupported; ///< Skipped packets, by link type.
    QString failure;                ///< Why the capture ended early; empty if it didn't.
};
