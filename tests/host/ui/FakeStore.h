#pragma once

#include "DashboardAbstractProfilesManager.h"

#include <QtCore/QSemaphore>
#include <QtCore/QStringList>

#include <algorithm>
#include <mutex>

/// A store without a disk that notes what it was asked to do. Any thread, like the real one.
class FakeStore final : public DashboardAbstractProfilesManager
{
public:
    using Id = DashboardProfileHeader::Id;

    Id add(const QString &name, bool builtIn = false, const QSet<QString> &vehicles = {},
           const QString &preview = {})
    {
        const std::lock_guard guard(mutex);
        DashboardProfile profile;
        profile.id = nextId++;
        profile.name = name;
        profile.builtIn = builtIn;
        profile.vehicles = vehicles;
        profile.previewPath = preview;
        profile.qmlPath = QStringLiteral("/dashboards/%1/Dash.qml").arg(name);
        profile.directory = QStringLiteral("/dashboards/") + name;
        profiles.push_back(profile);
        if (active == DashboardProfileHeader::NoId)
            active = profile.id;
        return profile.id;
    }

    /// As if somebody else removed it.
    void drop(Id id)
    {
        {
            const std::lock_guard guard(mutex);
            erase(id);
        }
        Q_EMIT profileListChanged();
    }

    /// What was asked for so far: action, id and parameter.
    QStringList calls() const
    {
        const std::lock_guard guard(mutex);
        return noted;
    }

    /// While set, actions wait in the store, with its lock held, until the semaphore lets them on.
    QSemaphore gate{0};
    std::atomic<bool> gated{false};
    std::atomic<int> waitingActions{0};
    QString refusal; ///< Set before an action: the message that it fails with.

    qint32 revision() const override { return 1; }
    Id activeProfileId() const override { return active; }
    std::vector<DashboardProfileHeader> profileHeaders() const override
    {
        const std::lock_guard guard(mutex);
        return {profiles.cbegin(), profiles.cend()};
    }
    std::unique_ptr<DashboardProfileHeader> profileHeader(Id id) const override
    {
        return profile(id);
    }
    std::unique_ptr<DashboardProfile> profile(Id id) const override
    {
        const std::lock_guard guard(mutex);
        const auto found = find(id);
        return found != profiles.cend() ? std::make_unique<DashboardProfile>(*found) : nullptr;
    }
    bool profileNameExists(const QString &name) const override
    {
        const std::lock_guard guard(mutex);
        return std::any_of(profiles.cbegin(), profiles.cend(), [&](const auto &profile) {
            return profile.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    }
    void activateRecentProfileForVehicle(QString vehicleName) override
    {
        Id found = DashboardProfileHeader::NoId;
        {
            const std::lock_guard guard(mutex);
            for (const DashboardProfile &profile : profiles) {
                if (profile.vehicles.contains(vehicleName))
                    found = profile.id;
            }
            active = found;
        }
        Q_EMIT newProfileActivated(found);
    }
    DashboardActionResult performAction(Id id, int action, const QVariant &parameter) override
    {
        {
            const std::lock_guard guard(mutex);
            noted += QStringLiteral("%1 %2 %3").arg(action).arg(id).arg(parameter.toString());
            if (gated && action != DashboardProfileAction::Activate) {
                ++waitingActions;
                gate.acquire();
                --waitingActions;
            }
            if (!refusal.isEmpty())
                return {false, refusal};
            if (find(id) == profiles.cend())
                return {false, QStringLiteral("Dashboard does not exist")};
        }
        switch (action) {
        case DashboardProfileAction::Activate:
            active = id;
            Q_EMIT newProfileActivated(id);
            break;
        case DashboardProfileAction::Copy:
            add(parameter.toString());
            Q_EMIT profileListChanged();
            break;
        case DashboardProfileAction::Rename: {
            const std::lock_guard guard(mutex);
            for (DashboardProfile &profile : profiles) {
                if (profile.id == id)
                    profile.name = parameter.toString();
            }
        }
            Q_EMIT profileListChanged();
            Q_EMIT profileModified(id);
            break;
        case DashboardProfileAction::Remove:
            drop(id);
            Q_EMIT profileModified(id);
            break;
        default:
            return {false, QStringLiteral("No such action")};
        }
        return {true, {}};
    }

private:
    std::vector<DashboardProfile>::const_iterator find(Id id) const
    {
        return std::find_if(profiles.cbegin(), profiles.cend(),
                            [id](const auto &profile) { return profile.id == id; });
    }
    void erase(Id id)
    {
        const auto found = find(id);
        if (found != profiles.cend())
            profiles.erase(found);
        if (active == id)
            active = profiles.empty() ? DashboardProfileHeader::NoId : profiles.front().id;
    }

    mutable std::mutex mutex;
    std::vector<DashboardProfile> profiles;
    std::atomic<Id> active{DashboardProfileHeader::NoId};
    Id nextId = 0;
    QStringList noted;
};
