#include "Checks.h"

#include "telemetry/feeds/OutGauge.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray datagram(reinterpret_cast<const char *>(data), static_cast<int>(size));
    if (const auto reading = OutGauge::decode(datagram))
        checkSample(reading->sample);
    return 0;
}
