#include "ProfileActions.h"

#include "DashboardAbstractProfilesManager.h"

#include <memory>

namespace {

/// The user's newest dashboard of that name, or null.
std::unique_ptr<DashboardProfile> findCopy(const DashboardAbstractProfilesManager &store,
                                           const QString &name)
{
    std::unique_ptr<DashboardProfile> found;
    for (const DashboardProfileHeader &header : store.profileHeaders()) {
        if (!header.builtIn && header.name == name)
            found = store.profile(header.id);
    }
    return found;
}

} // namespace

ProfileActions::ProfileActions(DashboardAbstractProfilesManager &store)
    : store(store)
{
    activations.setMaxThreadCount(1);
    worker.setMaxThreadCount(1);
}

ProfileActions::~ProfileActions()
{
    activations.waitForDone();
    worker.waitForDone();
}

void ProfileActions::activate(int id)
{
    activations.start([this, id] {
        const DashboardActionResult result =
            store.performAction(id, DashboardProfileAction::Activate, {});
        if (result.ok)
            return;
        QMetaObject::invokeMethod(
            this, [this, result] { Q_EMIT failed(result.message); }, Qt::QueuedConnection);
    });
}

bool ProfileActions::copy(int id, const QString &newName)
{
    const auto made = std::make_shared<std::unique_ptr<DashboardProfile>>();
    return start(
        tr("Copying to \u201c%1\u201d\u2026").arg(newName),
        [this, id, newName, made] {
            DashboardActionResult result =
                store.performAction(id, DashboardProfileAction::Copy, newName);
            if (result.ok)
                *made = findCopy(store, newName);
            return result;
        },
        [this, made] {
            if (*made != nullptr)
                Q_EMIT copied((*made)->id, (*made)->qmlPath);
        });
}

bool ProfileActions::rename(int id, const QString &newName)
{
    return start(
        tr("Renaming to \u201c%1\u201d\u2026").arg(newName),
        [this, id, newName] {
            return store.performAction(id, DashboardProfileAction::Rename, newName);
        },
        [] {});
}

bool ProfileActions::remove(int id, const QString &name)
{
    return start(
        tr("Removing \u201c%1\u201d\u2026").arg(name),
        [this, id] { return store.performAction(id, DashboardProfileAction::Remove, {}); }, [] {});
}

QString ProfileActions::nameProblem(const QString &name, const QString &oldName) const
{
    if (name.isEmpty())
        return tr("Enter a name.");
    const bool otherCapitals = name.compare(oldName, Qt::CaseInsensitive) == 0 && name != oldName;
    if (!otherCapitals && store.profileNameExists(name))
        return name == oldName ? tr("This is already its name.")
                               : tr("A dashboard with this name already exists.");
    return {};
}

QString ProfileActions::freeName(const QString &wish) const
{
    QString name = wish;
    for (int number = 2; store.profileNameExists(name); ++number)
        name = QStringLiteral("%1 %2").arg(wish).arg(number);
    return name;
}

bool ProfileActions::start(const QString &newText,
                           const std::function<DashboardActionResult()> &action,
                           const std::function<void()> &onSuccess)
{
    if (isBusy())
        return false;
    text = newText;
    Q_EMIT busyChanged();
    worker.start([this, action, onSuccess] {
        const DashboardActionResult result = action();
        QMetaObject::invokeMethod(
            this,
            [this, result, onSuccess] {
                text.clear();
                Q_EMIT busyChanged();
                if (!result.ok) {
                    Q_EMIT failed(result.message);
                    return;
                }
                Q_EMIT succeeded();
                onSuccess();
            },
            Qt::QueuedConnection);
    });
    return true;
}
