#pragma once

#include <QtCore/QStringList>

#include <functional>
#include <memory>

class DashboardAbstractProfilesManager;
class VehicleNames;

/// A command about the collection of dashboards.
struct ProfileCommand
{
    enum class Verb { List, Activate, Copy, Rename, Remove, Vehicles, Vehicle };

    Verb verb = Verb::List;
    QStringList operands; ///< As many as the verb needs.
    bool json = false;    ///< `List` only.
};

/// Opens the store as it is on disk.
using StoreOpener = std::function<std::unique_ptr<DashboardAbstractProfilesManager>()>;

/// Runs the command and prints its result. GUI thread. Returns the program's exit code: 1 if the
/// store refuses, whose message is printed, or if a vehicle couldn't be saved.
int runProfileCommand(const ProfileCommand &command, const StoreOpener &openStore,
                      VehicleNames &vehicles);
