#include "KnownFeeds.h"

#include "DataOutFeed.h"
#include "EgoFeed.h"
#include "OutGaugeFeed.h"
#include "RevLimitStore.h"

namespace {

struct KnownFeed
{
    QString option;
    std::unique_ptr<Feed> (*make)();
};

/// Every feed that the host understands. A new one is added here.
std::vector<KnownFeed> knownFeeds()
{
    return {
        {QStringLiteral("outgauge"),
         []() -> std::unique_ptr<Feed> {
             return std::make_unique<OutGaugeFeed>(
                 std::make_unique<RevLimitStore>(RevLimitStore::usualPath()));
         }},
        {QStringLiteral("data-out"),
         []() -> std::unique_ptr<Feed> { return std::make_unique<DataOutFeed>(); }},
        {QStringLiteral("ego"),
         []() -> std::unique_ptr<Feed> { return std::make_unique<EgoFeed>(); }},
    };
}

} // namespace

QStringList knownFeedOptions()
{
    QStringList options;
    for (const KnownFeed &known : knownFeeds())
        options += known.option;
    return options;
}

std::vector<std::unique_ptr<Feed>> makeFeeds(const QString &option)
{
    std::vector<std::unique_ptr<Feed>> feeds;
    for (const KnownFeed &known : knownFeeds()) {
        if (option.isEmpty() || option == known.option)
            feeds.push_back(known.make());
    }
    return feeds;
}
