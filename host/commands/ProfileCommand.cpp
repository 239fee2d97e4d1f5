#include "ProfileCommand.h"

#include "DashboardAbstractProfilesManager.h"
#include "profiles/FindProfile.h"
#include "profiles/VehicleReport.h"
#include "system/Terminal.h"
#include "telemetry/VehicleNames.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>

namespace {

QStringList sorted(const QSet<QString> &names)
{
    QStringList list(names.begin(), names.end());
    list.sort();
    return list;
}

QString kindOf(const DashboardProfileHeader &profile)
{
    return profile.builtIn ? QStringLiteral("built-in") : QStringLiteral("user");
}

std::vector<DashboardProfile> allProfiles(const DashboardAbstractProfilesManager &store)
{
    std::vector<DashboardProfile> profiles;
    for (const DashboardProfileHeader &header : store.profileHeaders()) {
        if (const auto profile = store.profile(header.id))
            profiles.push_back(*profile);
    }
    return profiles;
}

void printJson(const DashboardAbstractProfilesManager &store)
{
    QJsonArray array;
    for (const DashboardProfile &profile : allProfiles(store)) {
        array.append(QJsonObject{
            {QStringLiteral("id"), profile.id},
            {QStringLiteral("name"), profile.name},
            {QStringLiteral("builtIn"), profile.builtIn},
            {QStringLiteral("active"), profile.id == store.activeProfileId()},
            {QStringLiteral("vehicles"), QJsonArray::fromStringList(sorted(profile.vehicles))},
            {QStringLiteral("preview"), profile.previewPath},
            {QStringLiteral("document"), profile.qmlPath},
        });
    }
    printOutput(QJsonDocument(array));
}

void printList(const DashboardAbstractProfilesManager &store)
{
    const std::vector<DashboardProfile> profiles = allProfiles(store);
    if (profiles.empty()) {
        printOutput(QStringLiteral("There are no dashboards."));
        return;
    }
    int nameWidth = 4;
    for (const DashboardProfile &profile : profiles)
        nameWidth = std::max(nameWidth, profile.name.size());
    const auto row = [nameWidth](const QString &mark, const QString &id, const QString &name,
                                 const QString &kind, const QString &vehicles,
                                 const QString &preview) {
        printOutput(QStringLiteral("%1 %2  %3  %4  %5  %6")
                        .arg(mark, id.rightJustified(4), name.leftJustified(nameWidth),
                             kind.leftJustified(8), vehicles.rightJustified(8), preview));
    };
    row(QStringLiteral(" "), QStringLiteral("ID"), QStringLiteral("Name"), QStringLiteral("Kind"),
        QStringLiteral("Vehicles"), QStringLiteral("Preview"));
    for (const DashboardProfile &profile : profiles) {
        const bool active = profile.id == store.activeProfileId();
        row(active ? QStringLiteral("*") : QStringLiteral(" "), QString::number(profile.id),
            profile.name, kindOf(profile), QString::number(profile.vehicles.size()),
            QDir::toNativeSeparators(profile.previewPath));
    }
}

void printVehicles(const DashboardAbstractProfilesManager &store)
{
    bool any = false;
    for (const DashboardProfile &profile : allProfiles(store)) {
        const QStringList names = sorted(profile.vehicles);
        for (const QString &name : names)
            printOutput(QStringLiteral("%1: %2").arg(profile.name, name));
        any = any || !names.isEmpty();
    }
    if (!any)
        printOutput(QStringLiteral("No dashboard has a vehicle yet."));
}

int act(DashboardAbstractProfilesManager &store, const QString &nameOrId, int action,
        const QVariant &parameter = {})
{
    // To the store `NoId` means the active profile if there is none, and then nothing would fail.
    constexpr DashboardProfileHeader::Id Unlisted = DashboardProfileHeader::NoId - 1;
    const DashboardProfileHeader::Id found = findProfile(store, nameOrId);
    const DashboardActionResult result = store.performAction(
        found == DashboardProfileHeader::NoId ? Unlisted : found, action, parameter);
    if (!result.ok)
        printError(result.message);
    return result.ok ? 0 : 1;
}

int runVehicle(DashboardAbstractProfilesManager &store, const StoreOpener &openStore,
               VehicleNames &vehicles, const QString &name)
{
    vehicles.report(name);
    reportVehicle(store, name);
    const auto active = store.profileHeader(store.activeProfileId());
    printOutput(active != nullptr ? QStringLiteral("%1 (%2)").arg(active->name, kindOf(*active))
                                  : QStringLiteral("No active dashboard."));
    // A store doesn't say whether it could save; a new one shows it.
    if (isAssigned(*openStore(), name))
        return 0;
    printError(QStringLiteral("Could not save the vehicle '%1'.").arg(name));
    return 1;
}

} // namespace

int runProfileCommand(const ProfileCommand &command, const StoreOpener &openStore,
                      VehicleNames &vehicles)
{
    const QStringList &operands = command.operands;
    const auto opened = openStore();
    DashboardAbstractProfilesManager &store = *opened;
    using Verb = ProfileCommand::Verb;
    switch (command.verb) {
    case Verb::List:
        if (command.json)
            printJson(store);
        else
            printList(store);
        return 0;
    case Verb::Vehicles:
        printVehicles(store);
        return 0;
    case Verb::Vehicle:
        return runVehicle(store, openStore, vehicles, operands.at(0));
    case Verb::Activate:
        return act(store, operands.at(0), DashboardProfileAction::Activate);
    case Verb::Copy:
        return act(store, operands.at(0), DashboardProfileAction::Copy, operands.at(1));
    case Verb::Rename:
        return act(store, operands.at(0), DashboardProfileAction::Rename, operands.at(1));
    case Verb::Remove:
        return act(store, operands.at(0), DashboardProfileAction::Remove);
    }
    Q_UNREACHABLE();
}
