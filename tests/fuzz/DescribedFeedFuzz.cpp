#include "telemetry/feeds/described/DescribedFeed.h"

#include <QtCore/QStringList>

// The input is a description, a zero byte, and a datagram. Whatever is accepted as a description
// decodes any datagram.

// Qt 5.15 keeps an object that a second member of the same name replaces. The stacks that are found
// end within Qt, so no nearer name than its library's fits. What our own code allocates still
// counts. NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libQt5Core.so";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const int zero = bytes.indexOf('\0');
    const QByteArray json = zero < 0 ? bytes : bytes.left(zero);
    QStringList errors;
    std::optional<FeedDescription> description =
        FeedDescription::parse(json, QStringLiteral("fuzz"), errors);
    if (description.has_value() != errors.isEmpty())
        std::abort();
    if (!description)
        return 0;
    DescribedFeed feed(std::move(*description));
    const QByteArray payload = zero < 0 ? QByteArray() : bytes.mid(zero + 1);
    if (feed.decode(payload, {}).has_value() != feed.accepts(payload))
        std::abort();
    return 0;
}
