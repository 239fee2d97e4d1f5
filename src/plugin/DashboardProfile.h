#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

#include <cstdint>

/// What a list shows of a dashboard profile.
struct DashboardProfileHeader
{
    /// Identity of a profile in this run: 0 and up in the order of discovery, never used twice.
    /// `NoId` stands for no profile. What outlives the run refers to a profile by its name.
    using Id = std::int32_t;
    static constexpr Id NoId = -1;

    Id id = NoId;
    QString name;         ///< The name of the profile's directory.
    QString previewPath;  ///< The preview picture.
    bool builtIn = false; ///< Came with the application; can be neither renamed nor removed.
};

/// One dashboard on disk, with the vehicles that go with it.
struct DashboardProfile : DashboardProfileHeader
{
    QString qmlPath;        ///< The document.
    QString directory;      ///< Holds the document, the picture and whatever belongs to them.
    QSet<QString> vehicles; ///< Names of vehicles, compared exactly.
};
