#pragma once

#include <QtCore/QObject>

/// Tells which vehicle is driven. The host implements it, owns the object and keeps it alive longer
/// than whatever borrows it.
///
/// Both sides of the plug-in boundary compile this class's meta-object: the host, which links
/// nothing of the library, runs moc over this header and links the result.
class IRecentVehicleNameProvider : public QObject
{
    Q_OBJECT

public:
    /// The name of the current vehicle; empty if there is none. Called on any thread that activates
    /// a profile, with the store's lock held, so it must not wait for another thread that uses the
    /// store.
    virtual QString recentVehicleName() = 0;

Q_SIGNALS:
    /// The host connects it to `DashboardAbstractProfilesManager`; the library doesn't use it.
    void vehicleChanged(QString name);
};
