#include "CaptureReader.h"

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <pcap/pcap.h>

#include <algorithm>
#include <array>

namespace {

constexpr quint32 PcapngMagic = 0x0a0d0d0a; ///< The same in either byte order.
constexpr int RawIpInFiles = 101;           ///< libpcap has another number for it on each system.

std::optional<LinkLayer> linkLayer(int type)
{
    switch (type) {
    case DLT_EN10MB:
        return LinkLayer::Ethernet;
    case DLT_RAW:
    case RawIpInFiles:
    case DLT_IPV4:
    case DLT_IPV6:
        return LinkLayer::RawIp;
    case DLT_NULL:
    case DLT_LOOP:
        return LinkLayer::Loopback;
    case DLT_LINUX_SLL:
        return LinkLayer::LinuxCooked;
    case DLT_LINUX_SLL2:
        return LinkLayer::LinuxCookedTwo;
    default:
        return std::nullopt;
    }
}

std::chrono::nanoseconds timeOf(const pcap_pkthdr &packet)
{
    // Some formats have room for seconds that nanoseconds can't count.
    constexpr qint64 MostSeconds = 9'000'000'000;
    const std::chrono::seconds seconds(
        std::clamp(qint64{packet.ts.tv_sec}, qint64{0}, MostSeconds));
    return seconds + std::chrono::nanoseconds(packet.ts.tv_usec);
}

QString nameOf(int linkType)
{
    return QString::fromLatin1(pcap_datalink_val_to_description_or_dlt(linkType));
}

QString counted(int count, const QString &one, const QString &several)
{
    return count == 1 ? one : several.arg(count);
}

} // namespace

void CaptureReader::Close::operator()(pcap *opened) const
{
    pcap_close(opened);
}

bool CaptureReader::recognises(const QByteArray &beginning)
{
    // Seconds with micro- and nanoseconds, then blocks.
    constexpr std::array<quint32, 3> Magics{0xa1b2c3d4, 0xa1b23c4d, PcapngMagic};
    if (beginning.size() < int(sizeof(quint32)))
        return false;
    const auto little = qFromLittleEndian<quint32>(beginning.constData());
    return std::any_of(Magics.begin(), Magics.end(), [little](quint32 magic) {
        return little == magic || little == qbswap(magic);
    });
}

std::unique_ptr<CaptureReader> CaptureReader::open(const QString &path, QString &error)
{
    std::unique_ptr<CaptureReader> reader(new CaptureReader(path));
    error = reader->openCapture();
    if (!error.isEmpty())
        return nullptr;
    return reader;
}

CaptureReader::CaptureReader(QString path)
    : path(std::move(path))
{
}

QString CaptureReader::openCapture()
{
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly))
        return QStringLiteral("can't be opened: %1.").arg(file->errorString());
    const QByteArray beginning = file->peek(sizeof PcapngMagic);
    if (beginning.size() == sizeof PcapngMagic &&
        qFromLittleEndian<quint32>(beginning.constData()) == PcapngMagic) {
        blocks = std::make_unique<PcapngReader>(std::move(file));
        return {};
    }
    std::array<char, PCAP_ERRBUF_SIZE> reason{};
#ifdef Q_OS_WIN
    // Names and messages are of the system's code page otherwise, which can't say every name.
    pcap_init(PCAP_CHAR_ENC_UTF_8, reason.data());
    const QByteArray name = path.toUtf8();
#else
    const QByteArray name = QFile::encodeName(path);
#endif
    capture.reset(pcap_open_offline_with_tstamp_precision(
        name.constData(), PCAP_TSTAMP_PRECISION_NANO, reason.data()));
    if (capture == nullptr) {
        return QStringLiteral("is no capture that can be read: %1.")
            .arg(QString::fromLocal8Bit(reason.data()));
    }
    const int type = pcap_datalink(capture.get());
    if (linkLayer(type))
        return {};
    return QStringLiteral(
               "holds packets of a kind that isn't read here: %1. Capture on an Ethernet "
               "or loopback device.")
        .arg(nameOf(type));
}

std::optional<Datagram> CaptureReader::next()
{
    while (const std::optional<PcapngReader::Packet> captured = nextPacket()) {
        const std::optional<LinkLayer> link = linkLayer(captured->linkType);
        if (!link) {
            ++foreign[captured->linkType];
            continue;
        }
        CapturedPacket packet = decodePacket(*link, captured->bytes);
        if (packet.kind == CapturedPacket::Kind::Udp)
            return Datagram{captured->time, packet.sender, std::move(packet.payload)};
        fragments += packet.kind == CapturedPacket::Kind::Fragment ? 1 : 0;
        truncated += packet.kind == CapturedPacket::Kind::Truncated ? 1 : 0;
    }
    return std::nullopt;
}

std::optional<PcapngReader::Packet> CaptureReader::nextPacket()
{
    if (blocks == nullptr)
        return nextOfPcap();
    std::optional<PcapngReader::Packet> packet = blocks->next();
    if (!packet)
        failure = blocks->failure();
    return packet;
}

std::optional<PcapngReader::Packet> CaptureReader::nextOfPcap()
{
    if (capture == nullptr)
        return std::nullopt;
    pcap_pkthdr *head = nullptr;
    const u_char *bytes = nullptr;
    const int result = pcap_next_ex(capture.get(), &head, &bytes);
    if (result != 1) {
        if (result == PCAP_ERROR)
            failure = QString::fromLocal8Bit(pcap_geterr(capture.get()));
        capture.reset();
        return std::nullopt;
    }
    return PcapngReader::Packet{pcap_datalink(capture.get()), timeOf(*head),
                                QByteArray::fromRawData(reinterpret_cast<const char *>(bytes),
                                                        static_cast<int>(head->caplen))};
}

void CaptureReader::rewind()
{
    fragments = 0;
    truncated = 0;
    foreign.clear();
    failure = openCapture();
    if (!failure.isEmpty())
        capture.reset();
}

QStringList CaptureReader::remarks() const
{
    QStringList lines;
    if (fragments > 0) {
        lines +=
            counted(fragments, QStringLiteral("1 piece of a fragmented packet was passed over."),
                    QStringLiteral("%1 pieces of fragmented packets were passed over."));
    }
    if (truncated > 0) {
        lines += counted(truncated, QStringLiteral("1 packet is cut off and was passed over."),
                         QStringLiteral("%1 packets are cut off and were passed over."));
    }
    for (const auto &[linkType, count] : foreign) {
        lines +=
            counted(count,
                    QStringLiteral("1 packet of a kind that isn't read here was passed over"),
                    QStringLiteral("%1 packets of a kind that isn't read here were passed over")) +
            QStringLiteral(": %1.").arg(nameOf(linkType));
    }
    if (!failure.isEmpty())
        lines += QStringLiteral("The capture ends early: %1.").arg(failure);
    return lines;
}
