#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

#include <cstdint>

/// What lists show of a dashboard profile.
struct DashboardProfileHeader
{
    /// Identifies a profile in this run: counts up from 0 in the order of discovery and is never
    /// reused. `NoId` means no profile. Whatever outlives the run identifies a profile by name.
    using Id = std::int32_t;
    static constexpr Id NoId = -1;

    Id id = NoId;
    QString name;         ///< The name of the profile's directory.
    QString previewPath;  ///< The preview picture.
    bool builtIn = false; ///< Shipped with the application; can't be renamed or removed.
};

/// A dashboard on disk and the vehicles assigned to it.
struct DashboardProfile : DashboardProfileHeader
{
    QString qmlPath;        ///< The document.
    QString directory;      ///< The folder of the document, the picture and all assets.
    QSet<QString> vehicles; ///< Names of vehicles; case matters.
};
