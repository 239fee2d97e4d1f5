#include "CaptureReader.h"

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <pcap/pcap.h>

#include <algorithm>
#include <array>

namespace {

constexpr quint32 PcapngMagic = 0x0a0d0d0a; ///< The same in either byte order.
constexpr int RawIpInFiles = 101; ///< In files; libpcap's own number differs between systems.

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
    // A file may hold more seconds than nanoseconds can count.
    constexpr qint64 MostSeconds = 9'000'000'000;
    const std::chrono::seconds seconds(
        std::clamp(qint64{packet.ts.tv_sec}, qint64{0}, MostSeconds));
    return seconds + std::chrono::nanoseconds(packet.ts.tv_usec);
}

QString nameOf(int linkType)
{
    return QString::fromLatin1(pcap_datalink_val_to_description_or_dlt(linkType));
}

} // namespace

void CaptureReader::Close::operator()(pcap *opened) const
{
    pcap_close(opened);
}

bool CaptureReader::recognises(const QByteArray &beginning)
{
    // pcap with microseconds, with nanoseconds, and pcapng.
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
    // Otherwise names and messages are in the system's code page, which lacks characters.
    pcap_init(PCAP_CHAR_ENC_UTF_8, reason.data());
    const QByteArray name = path.toUtf8();
#else
    const QByteArray name = QFile::encodeName(path);
#endif
    capture.reset(pcap_open_offline_with_tstamp_precision(
        name.constData(), PCAP_TSTAMP_PRECISION_NANO, reason.data()));
    if (capture == nullptr) {
        return QStringLiteral("can't be read as a capture: %1.")
            .arg(QString::fromLocal8Bit(reason.data()));
    }
    const int type = pcap_datalink(capture.get());
    if (linkLayer(type))
        return {};
    return QStringLiteral("holds packets of an unsupported kind: %1. Capture on an Ethernet or "
                          "loopback device.")
        .arg(nameOf(type));
}

std::optional<Datagram> CaptureReader::next()
{
    while (const std::optional<PcapngReader::Packet> captured = nextPacket()) {
        const std::optional<LinkLayer> link = linkLayer(captured->linkType);
        if (!link) {
            ++unsupported[captured->linkType];
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
    unsupported.clear();
    failure = openCapture();
    if (!failure.isEmpty())
        capture.reset();
}

QStringList CaptureReader::remarks() const
{
    QStringList lines;
    if (fragments > 0)
        lines += QStringLiteral("Fragments of packets, which are skipped: %1.").arg(fragments);
    if (truncated > 0)
        lines += QStringLiteral("Packets that are cut off and skipped: %1.").arg(truncated);
    for (const auto &[linkType, count] : unsupported) {
        lines += QStringLiteral("Packets of an unsupported kind, %1, which are skipped: %2.")
                     .arg(nameOf(linkType))
                     .arg(count);
    }
    if (!failure.isEmpty())
        lines += QStringLiteral("The capture ends early: %1.").arg(failure);
    return lines;
}
