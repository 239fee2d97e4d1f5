#pragma once

#include "DatagramReader.h"
#include "PacketDecoder.h"
#include "PcapngReader.h"

#include <QtCore/QByteArray>

#include <map>
#include <memory>

struct pcap;

/// Reads the UDP datagrams out of a capture, our own or another tool's: pcap or pcapng.
class CaptureReader final : public DatagramReader
{
public:
    /// Whether a file that begins with these bytes means to be a capture.
    static bool recognises(const QByteArray &beginning);

    /// Nothing if the file can't be read as a capture; `error` then says so in one line that goes
    /// on after the file's name.
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
    std::map<int, int> foreign; ///< Packets that were passed over, by link type.
    QString failure;            ///< Why the capture ended early; empty if it didn't.
};
