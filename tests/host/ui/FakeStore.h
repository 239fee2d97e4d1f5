#pragma once

#include "DashboardAbstractProfilesManager.h"
#include "DashboardAction.h"

#include <QtCore/QSemaphore>
#include <QtCore/QStringList>

#include <algorithm>
#include <atomic>
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
        profile.builtIn = builtIn;
        profile.vehicles = vehicles;
        profile.previewPath = preview;
        setName(profile, name);
        profiles.push_back(profile);
        if (active == DashboardProfileHeader::NoId)
            active = profile.id;
        return profile.id;
    }

    /// What was asked for so far: action, id and parameter.
    QStringList calls() const
    {
        const std::lock_guard guard(mutex);
        return noted;
    }

    /// While set, copies, renames and removals wait in the store, with its lock held, until the
    /// semaphore lets them on.
    std::atomic<bool> gated{false};
    QSemaphore gate{0};
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
        for (const DashboardProfile &profile : profiles) {
            if (profile.id == id)
                return std::make_unique<DashboardProfile>(profile);
        }
        return nullptr;
    }
    bool profileNameExists(const QString &name) const override
    {
        const std::lock_guard guard(mutex);
        return std::any_of(profiles.cbegin(), profiles.cend(), [&](const auto &profile) {
            return profile.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    }
    void activateRecentProfileForVehicle(QString /*vehicle*/) override {}
    DashboardActionResult performAction(Id id, int action, const QVariant &parameter) override
    {
        {
            const std::lock_guard guard(mutex);
            noted += QStringLiteral("%1 %2 %3").arg(action).arg(id).arg(parameter.toString());
            if (gated && action != DashboardProfileAction::Activate) {
                ++waitingActions;
                gate.acquire();
            }
        }
        if (!refusal.isEmpty())
            return {false, refusal};
        if (action == DashboardProfileAction::Copy)
            add(parameter.toString());
        else
            change(id, action, parameter.toString());
        if (action == DashboardProfileAction::Activate)
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

    void change(Id id, int action, const QString &name)
    {
        const std::lock_guard guard(mutex);
        const auto profile = std::find_if(profiles.begin(), profiles.end(),
                                          [id](const auto &known) { return known.id == id; });
        if (action == DashboardProfileAction::Activate)
            active = id;
        else if (action == DashboardProfileAction::Rename)
            setName(*profile, name);
        else
            profiles.erase(profile);
    }

    mutable std::mutex mutex;
    std::vector<DashboardProfile> profiles;
    std::atomic<Id> active{DashboardProfileHeader::NoId};
    Id nextId = 0;
    QStringList noted;
};
