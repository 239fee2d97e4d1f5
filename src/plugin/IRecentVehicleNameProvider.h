#pragma once

#include <QtCore/QObject>

/// The host's knowledge of the vehicle that is driven. The host derives from it, owns the object
/// and keeps it alive longer than whatever borrows it.
///
/// The meta-object is compiled on either side of the plug-in boundary: the host runs moc over this
/// header and links the result, for it links nothing of the library.
class IRecentVehicleNameProvider : public QObject
{
    Q_OBJECT

public:
    /// The name of the current vehicle, empty when there is none. Called on whatever thread
    /// activates a profile, with the store's lock held: it must not wait for another thread that
    /// uses the store.
    virtual QString recentVehicleName() = 0;

Q_SIGNALS:
    /// For the host to connect to `DashboardAbstractProfilesManager`; the library doesn't.
    void vehicleChanged(QString name);
};
