#pragma once

#include "DashboardAbstractProfilesManager.h"
#include "DashboardAction.h"

#include <QtCore/QSemaphore>
#include <QtCore/QStringList>

#include <atomic>
#include <map>
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
        const Id id = nextId++;
        DashboardProfile &profile = profiles[id];
        profile.id = id;
        profile.builtIn = builtIn;
        profile.vehicles = vehicles;
        profile.previewPath = preview;
        setName(profile, name);
        return id;
    }

    /// What was asked for so far: action, id and parameter.
    QStringList calls() const
    {
        const std::lock_guard guard(mutex);
        return noted;
    }

    // Copies, renames and removals wait while `gated` is set, with the store's lock held, until the
    // semaphore lets them on, and fail with `refusal` if that is set by then.
    std::atomic<bool> gated{false};
    QSemaphore gate{0};
    std::atomic<int> waitingActions{0};
    QString refusal;

    qint32 revision() const override { return 1; }
    Id activeProfileId() const override { return active; }
    std::vector<DashboardProfileHeader> profileHeaders() const override
    {
        const std::lock_guard guard(mutex);
        std::vector<DashboardProfileHeader> headers;
        for (const auto &[id, profile] : profiles)
            headers.push_back(profile);
        return headers;
    }
    std::unique_ptr<DashboardProfileHeader> profileHeader(Id) const override { return {}; }
    std::unique_ptr<DashboardProfile> profile(Id id) const override
    {
        const std::lock_guard guard(mutex);
        const auto found = profiles.find(id);
        return found != profiles.end() ? std::make_unique<DashboardProfile>(found->second)
                                       : nullptr;
    }
    bool profileNameExists(const QString &name) const override
    {
        const auto headers = profileHeaders();
        return std::any_of(headers.begin(), headers.end(), [&](const auto &header) {
            return header.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    }
    void activateRecentProfileForVehicle(QString /*vehicle*/) override {}
    DashboardActionResult performAction(Id id, int action, const QVariant &parameter) override
    {
        std::unique_lock guard(mutex);
        noted += QStringLiteral("%1 %2 %3").arg(action).arg(id).arg(parameter.toString());
        const bool activates = action == DashboardProfileAction::Activate;
        if (gated && !activates) {
            ++waitingActions;
            gate.acquire();
        }
        if (!refusal.isEmpty() && !activates)
            return {false, refusal};
        if (activates)
            active = id;
        else if (action == DashboardProfileAction::Rename)
            setName(profiles[id], parameter.toString());
        else if (action == DashboardProfileAction::Remove)
            profiles.erase(id);
        guard.unlock();
        if (action == DashboardProfileAction::Copy)
            add(parameter.toString());
        if (activates)
            Q_EMIT newProfileActivated(id);
        else
            Q_EMIT profileListChanged();
        return {true, {}};
    }

private:
    static void setName(DashboardProfile &profile, const QString &name)
    {
        profile.name = name;
        profile.directory = QStringLiteral("/dashboards/") + name;
        profile.qmlPath = profile.directory + QStringLiteral("/Dash.qml");
    }

    mutable std::mutex mutex;
    std::map<Id, DashboardProfile> profiles;
    std::atomic<Id> active{0};
    Id nextId = 0;
    QStringList noted;
};
