#pragma once

#include <QtCore/QStringList>

#include <functional>
#include <memory>

class DashboardAbstractProfilesManager;
class VehicleNames;

/// What the command line asks of the collection of dashboards.
struct ProfileCommand
{
    enum class Verb { List, Activate, Copy, Rename, Remove, Vehicles, Vehicle };

    Verb verb = Verb::List;
    QStringList operands; ///< As many as the verb takes.
    bool json = false;    ///< `List` only.
};

/// Opens the store as it is on disk.
using StoreOpener = std::function<std::unique_ptr<DashboardAbstractProfilesManager>()>;

/// Carries the command out and prints what came of it. The result is the program's exit code: 1
/// with the store's own message when it refuses, and 1 when a vehicle could not be kept.
int runProfileCommand(const ProfileCommand &command, const StoreOpener &openStore,
                      VehicleNames &vehicles);
