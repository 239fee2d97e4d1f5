#pragma once

#include "Feed.h"

#include <memory>
#include <vector>

/// A feed that the host understands by itself.
struct KnownFeed
{
    const char *option; ///< As `--telemetry` takes it.
    const char *title;  ///< As the settings show it. Not translated.
    std::unique_ptr<Feed> (*make)();
};

/// All of them, in the order in which they are tried. Any thread.
const std::vector<KnownFeed> &knownFeeds();
