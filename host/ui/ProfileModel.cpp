#include "ProfileModel.h"

#include "DashboardAbstractProfilesManager.h"
#include "PreviewImages.h"

#include <QtCore/QCollator>
#include <QtCore/QDir>
#include <QtCore/QSet>

#include <algorithm>
#include <iterator>
#include <utility>

using Card = ProfileModel::Card;
using Cards = std::vector<Card>;

namespace {

bool isTemplate(const Card &card)
{
    return card.builtIn && card.name == QLatin1String("Template");
}

bool isSame(const Card &one, const Card &other)
{
    return one.name == other.name && one.preview == other.preview && one.builtIn == other.builtIn &&
           one.active == other.active && one.vehicles == other.vehicles &&
           one.document == other.document;
}

auto hasId(ProfileModel::Id id)
{
    return [id](const Card &card) { return card.id == id; };
}

/// Without case and accents.
QString folded(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    QString plain;
    std::copy_if(decomposed.cbegin(), decomposed.cend(), std::back_inserter(plain),
                 [](QChar c) { return !c.isMark(); });
    return plain;
}

bool matches(const Card &card, const QStringList &words)
{
    const QString name = folded(card.name);
    return std::all_of(words.cbegin(), words.cend(), [&](const QString &word) {
        return name.contains(word) ||
               std::any_of(card.vehicles.cbegin(), card.vehicles.cend(),
                           [&](const QString &vehicle) { return folded(vehicle).contains(word); });
    });
}

Card makeCard(const DashboardProfile &profile)
{
    Card card;
    card.id = profile.id;
    card.name = profile.name;
    card.preview = PreviewImages::address(profile.previewPath);
    card.builtIn = profile.builtIn;
    card.vehicles = QStringList(profile.vehicles.cbegin(), profile.vehicles.cend());
    card.vehicles.sort(Qt::CaseInsensitive);
    card.document = profile.qmlPath;
    card.folder = QDir::toNativeSeparators(profile.directory);
    return card;
}

Cards readCards(const DashboardAbstractProfilesManager &store)
{
    Cards cards;
    for (const DashboardProfileHeader &header : store.profileHeaders()) {
        // It may have gone since the list was made.
        if (const auto profile = store.profile(header.id))
            cards.push_back(makeCard(*profile));
    }
    // The C locale sorts by bytes only.
    const QLocale locale;
    QCollator order(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    order.setNumericMode(true);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(cards.begin(), cards.end(), [&](const Card &one, const Card &other) {
        return order.compare(one.name, other.name) < 0;
    });
    return cards;
}

QVariantMap toMap(const Card &card)
{
    return {
        {QStringLiteral("profileId"), card.id},      {QStringLiteral("name"), card.name},
        {QStringLiteral("preview"), card.preview},   {QStringLiteral("builtIn"), card.builtIn},
        {QStringLiteral("active"), card.active},     {QStringLiteral("vehicles"), card.vehicles},
        {QStringLiteral("document"), card.document}, {QStringLiteral("folder"), card.folder}};
}

} // namespace

ProfileModel::ProfileModel(const DashboardAbstractProfilesManager &store)
    : store(store)
{
    qRegisterMetaType<Id>("DashboardProfileHeader::Id");
    reader.setMaxThreadCount(1);
    connect(&store, &DashboardAbstractProfilesManager::profileListChanged, this,
            &ProfileModel::refresh);
    connect(&store, &DashboardAbstractProfilesManager::profileModified, this,
            &ProfileModel::refresh);
    connect(&store, &DashboardAbstractProfilesManager::newProfileActivated, this,
            &ProfileModel::takeActive);
    take(readCards(store));
}

ProfileModel::~ProfileModel()
{
    // Qt leaks a connection whose receiver ends while another thread queues a call.
    disconnect(&store, nullptr, this, nullptr);
    reader.waitForDone();
}

int ProfileModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ProfileModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Card &card = rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case ProfileIdRole:
        return card.id;
    case Qt::DisplayRole:
    case NameRole:
        return card.name;
    case PreviewRole:
        return card.preview;
    case BuiltInRole:
        return card.builtIn;
    case ActiveRole:
        return card.active;
    case VehicleCountRole:
        return card.vehicles.size();
    default:
        return {};
    }
}

QHash<int, QByteArray> ProfileModel::roleNames() const
{
    return {{ProfileIdRole, "profileId"}, {NameRole, "name"},
            {PreviewRole, "preview"},     {BuiltInRole, "builtIn"},
            {ActiveRole, "active"},       {VehicleCountRole, "vehicleCount"}};
}

void ProfileModel::setSearchText(const QString &text)
{
    if (text == search)
        return;
    search = text;
    Q_EMIT searchTextChanged();
    show(matching());
}

int ProfileModel::total() const
{
    return static_cast<int>(cards.size()) - (templateId() == DashboardProfileHeader::NoId ? 0 : 1);
}

QVariantMap ProfileModel::activeProfile() const
{
    const auto active =
        std::find_if(cards.cbegin(), cards.cend(), [](const Card &card) { return card.active; });
    return active != cards.cend() ? toMap(*active) : QVariantMap();
}

DashboardProfileHeader::Id ProfileModel::templateId() const
{
    const auto found = std::find_if(cards.cbegin(), cards.cend(), isTemplate);
    return found != cards.cend() ? found->id : DashboardProfileHeader::NoId;
}

QVariantMap ProfileModel::profile(int id) const
{
    const Card *const card = find(id);
    return card != nullptr ? toMap(*card) : QVariantMap();
}

int ProfileModel::rowOf(int id) const
{
    const auto found = std::find_if(rows.cbegin(), rows.cend(), hasId(id));
    return found != rows.cend() ? static_cast<int>(found - rows.cbegin()) : -1;
}

QString ProfileModel::dashboardOf(const QString &vehicle) const
{
    const auto found = std::find_if(cards.cbegin(), cards.cend(), [&](const Card &card) {
        return card.vehicles.contains(vehicle);
    });
    return found != cards.cend() ? found->name : QString();
}

void ProfileModel::refresh()
{
    readAgain = true;
    if (reading)
        return;
    reading = true;
    readAgain = false;
    reader.start([this] {
        QMetaObject::invokeMethod(
            this,
            [this, cards = readCards(store)]() mutable {
                reading = false;
                take(std::move(cards));
                if (readAgain)
                    refresh();
            },
            Qt::QueuedConnection);
    });
}

/// `newCards` is sorted; what is active is asked anew, since that needs no lock.
void ProfileModel::take(Cards newCards)
{
    const QVariantMap activeBefore = activeProfile();
    const int totalBefore = total();
    const Id templateBefore = templateId();
    const Cards before = std::exchange(cards, std::move(newCards));
    const Id activeId = store.activeProfileId();
    for (Card &card : cards)
        card.active = card.id == activeId;
    show(matching());
    if (total() != totalBefore || templateId() != templateBefore)
        Q_EMIT countChanged();
    if (activeProfile() != activeBefore)
        Q_EMIT activeProfileChanged();
    Q_EMIT profilesChanged();
    for (const Card &card : before) {
        const Card *const now = find(card.id);
        if (now == nullptr)
            Q_EMIT profileGone(card.id);
        else if (now->folder != card.folder)
            Q_EMIT folderMoved(card.folder, now->folder);
    }
}

void ProfileModel::takeActive()
{
    take(cards);
}

void ProfileModel::show(const Cards &wanted)
{
    const int countBefore = count();
    removeRowsNotIn(wanted);
    for (std::size_t row = 0; row < wanted.size(); ++row) {
        placeRow(row, wanted);
        if (isSame(rows[row], wanted[row]))
            continue;
        rows[row] = wanted[row];
        const QModelIndex changed = index(static_cast<int>(row));
        Q_EMIT dataChanged(changed, changed);
    }
    if (count() != countBefore)
        Q_EMIT countChanged();
}

void ProfileModel::removeRowsNotIn(const Cards &wanted)
{
    QSet<Id> kept;
    for (const Card &card : wanted)
        kept.insert(card.id);
    for (int end = count(); end > 0;) {
        const auto isKept = [&](int row) {
            return kept.contains(rows[static_cast<std::size_t>(row)].id);
        };
        if (isKept(end - 1)) {
            --end;
            continue;
        }
        int first = end - 1;
        while (first > 0 && !isKept(first - 1))
            --first;
        beginRemoveRows({}, first, end - 1);
        rows.erase(rows.begin() + first, rows.begin() + end);
        endRemoveRows();
        end = first;
    }
}

/// Puts the wanted dashboard at `row`; the rows above are right already. New neighbours are
/// inserted together.
void ProfileModel::placeRow(std::size_t row, const Cards &wanted)
{
    const auto rowOfWanted = [&] { return static_cast<std::size_t>(rowOf(wanted[row].id)); };
    const bool isNew = rowOf(wanted[row].id) < 0;
    if (!isNew && rowOfWanted() == row + 1) {
        // The dashboard at `row` has to move down, most likely after a rename.
        const auto target = std::find_if(wanted.cbegin(), wanted.cend(), hasId(rows[row].id));
        moveRow(row, std::min(static_cast<std::size_t>(target - wanted.cbegin()), rows.size() - 1));
    }
    if (!isNew) {
        if (rowOfWanted() != row)
            moveRow(rowOfWanted(), row);
        return;
    }
    std::size_t end = row + 1;
    while (end < wanted.size() && rowOf(wanted[end].id) < 0)
        ++end;
    beginInsertRows({}, static_cast<int>(row), static_cast<int>(end) - 1);
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(row),
                wanted.cbegin() + static_cast<std::ptrdiff_t>(row),
                wanted.cbegin() + static_cast<std::ptrdiff_t>(end));
    endInsertRows();
}

void ProfileModel::moveRow(std::size_t from, std::size_t to)
{
    // Qt wants the row to insert before, counted with the old place still filled.
    beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {},
                  static_cast<int>(to > from ? to + 1 : to));
    Card card = std::move(rows[from]);
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(from));
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(to), std::move(card));
    endMoveRows();
}

Cards ProfileModel::matching() const
{
    const QStringList words = folded(search).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    Cards found;
    std::copy_if(cards.cbegin(), cards.cend(), std::back_inserter(found),
                 [&](const Card &card) { return !isTemplate(card) && matches(card, words); });
    return found;
}

const Card *ProfileModel::find(Id id) const
{
    const auto found = std::find_if(cards.cbegin(), cards.cend(), hasId(id));
    return found != cards.cend() ? &*found : nullptr;
}
