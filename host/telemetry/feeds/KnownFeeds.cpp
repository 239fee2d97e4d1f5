#include "KnownFeeds.h"

#include "DataOutFeed.h"
#include "EgoFeed.h"
#include "OutGaugeFeed.h"
#include "RevLimitStore.h"

namespace {

std::unique_ptr<Feed> makeOutGauge()
{
    return std::make_unique<OutGaugeFeed>(
        std::make_unique<RevLimitStore>(RevLimitStore::usualPath()));
}

template<typename KindOfFeed> std::unique_ptr<Feed> make()
{
    return std::make_unique<KindOfFeed>();
}

} // namespace

const std::vector<KnownFeed> &knownFeeds()
{
    // A new one is added here; options, settings and help list what stands here.
    static const std::vector<KnownFeed> feeds{
        {"outgauge", "OutGauge", &makeOutGauge},
        {"data-out", "Data Out", &make<DataOutFeed>},
        {"ego", "EGO extradata", &make<EgoFeed>},
    };
    return feeds;
}
