#include "profiles/StagingDirectory.h"

#include "support/Files.h"
#include "support/platform/FileSystem.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <utility>

namespace {

// Two dots in a row, which no profile's name may have.
QString placePrefix()
{
    return QStringLiteral(".staging..");
}

QString randomPlace(const QString &root)
{
    const quint64 number = QRandomGenerator::global()->generate64();
    return root + QLatin1Char('/') + placePrefix() + QString::number(number, 36);
}

} // namespace

StagingDirectory::StagingDirectory(QString place, QString name,
                                   std::unique_ptr<platform::DirectoryHold> hold)
    : place(std::move(place))
    , name(std::move(name))
    , hold(std::move(hold))
{
}

StagingDirectory::~StagingDirectory()
{
    removeTree(path());
    // The hold may be a file inside.
    hold.reset();
    QDir().rmdir(place);
}

std::unique_ptr<StagingDirectory> StagingDirectory::make(const QString &root, const QString &name)
{
    // Retries, since a clean-up may remove the directory before it is held.
    for (int attempt = 0; attempt < 10; ++attempt) {
        const QString place = randomPlace(root);
        const platform::Creation creation = platform::createDirectory(place);
        if (creation == platform::Creation::Failed)
            return nullptr;
        if (creation == platform::Creation::Exists)
            continue;
        if (auto hold = platform::DirectoryHold::take(place)) {
            return std::unique_ptr<StagingDirectory>(
                new StagingDirectory(place, name, std::move(hold)));
        }
    }
    return nullptr;
}

QString StagingDirectory::path() const
{
    return place + QLatin1Char('/') + name;
}

void StagingDirectory::removeAbandoned(const QString &root)
{
    const QDir::Filters directories = QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot;
    const QStringList places = QDir(root).entryList({placePrefix() + QLatin1Char('*')},
                                                    directories | QDir::NoSymLinks, QDir::NoSort);
    for (const QString &entry : places) {
        const QString place = root + QLatin1Char('/') + entry;
        auto hold = platform::DirectoryHold::take(place);
        if (!hold || !hold->isExclusive())
            continue;
        const QStringList names = QDir(place).entryList(directories, QDir::NoSort);
        for (const QString &name : names) {
            // Removes only an empty reservation; a whole dashboard stays.
            QDir().rmdir(root + QLatin1Char('/') + name);
            removeTree(place + QLatin1Char('/') + name);
        }
        // While held, where the system allows it: the next holder must not lose it.
        QDir().rmdir(place);
        hold.reset();
        QDir().rmdir(place);
    }
}
