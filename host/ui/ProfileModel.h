#pragma once

#include "DashboardProfile.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QThreadPool>
#include <QtCore/QVariantMap>

#include <vector>

class DashboardAbstractProfilesManager;

/// The store's dashboards as a list for the gallery: sorted by name, filtered by a search, and
/// updated row by row, so that a view keeps its position. The built-in dashboard "Template" has
/// no row. Lives on the GUI thread; reads the store on another one, since the store may be busy
/// with files for long.
class ProfileModel final : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int total READ total NOTIFY countChanged)
    Q_PROPERTY(QVariantMap activeProfile READ activeProfile NOTIFY activeProfileChanged)
    Q_PROPERTY(int templateId READ templateId NOTIFY countChanged)

public:
    using Id = DashboardProfileHeader::Id;

    enum Role {
        ProfileIdRole = Qt::UserRole,
        NameRole,
        PreviewRole,
        BuiltInRole,
        ActiveRole,
        VehicleCountRole
    };

    /// What is shown of one dashboard.
    struct Card
    {
        Id id = DashboardProfileHeader::NoId;
        QString name;
        QString preview; ///< URL for `Image`, which changes with the file.
        bool builtIn = false;
        bool active = false;
        QStringList vehicles; ///< Sorted.
        QString document;     ///< Absolute path.
        QString folder;       ///< In native separators.
    };

    /// Reads the store at once and follows its signals from any thread. The store is borrowed.
    explicit ProfileModel(const DashboardAbstractProfilesManager &store);
    ~ProfileModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The search: each of its words must occur in the name or in a vehicle, ignoring case
    /// and accents.
    QString searchText() const { return search; }
    void setSearchText(const QString &text);

    int count() const { return static_cast<int>(rows.size()); }

    /// The number of rows without a search.
    int total() const;

    /// The active dashboard as in `profile`, empty if there is none.
    QVariantMap activeProfile() const;

    /// The dashboard that new ones are copied from, or `NoId`.
    Id templateId() const;

    /// The dashboard with the keys profileId, name, preview, builtIn, active, vehicles,
    /// document and folder, whether it matches the search or not; empty if it is gone.
    Q_INVOKABLE QVariantMap profile(int id) const;

    /// The row of a dashboard, or -1 if it isn't shown.
    Q_INVOKABLE int rowOf(int id) const;

    /// The name of the dashboard that a vehicle is assigned to; empty if there is none.
    Q_INVOKABLE QString dashboardOf(const QString &vehicle) const;

    /// Rereads the store and the dates of the previews, asynchronously.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void searchTextChanged();
    void countChanged();
    void activeProfileChanged();

    /// Something in the store has changed, shown or not.
    void profilesChanged();

    /// A dashboard was renamed, and its folder with it. Native separators.
    void folderMoved(const QString &from, const QString &to);

    /// A dashboard is no longer in the store.
    void profileGone(int id);

private:
    void take(std::vector<Card> newCards);
    void takeActive();
    void show(const std::vector<Card> &wanted);
    void removeRowsNotIn(const std::vector<Card> &wanted);
    void placeRow(std::size_t row, const std::vector<Card> &wanted);
    void moveRow(std::size_t from, std::size_t to);
    std::vector<Card> matching() const;
    const Card *find(Id id) const;

    const DashboardAbstractProfilesManager &store;
    std::vector<Card> cards; ///< All dashboards, sorted.
    std::vector<Card> rows;  ///< What views see.
    QString search;
    bool reading = false;   ///< A reading of the store is under way.
    bool readAgain = false; ///< Something has changed since that reading began.
    QThreadPool reader;     ///< Destroyed first, which waits for a running read.
};
