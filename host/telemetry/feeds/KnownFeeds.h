#pragma once

#include "Feed.h"

#include <QtCore/QStringList>

#include <memory>
#include <vector>

/// What options call the feeds that the host understands.
QStringList knownFeedOptions();

/// The feed that an option names, or all of them, in the order in which they are to be tried, if it
/// is empty.
std::vector<std::unique_ptr<Feed>> makeFeeds(const QString &option = {});
