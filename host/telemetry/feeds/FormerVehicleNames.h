#pragma once

#include <QtCore/QStringList>

/// The names that earlier versions of the host may have given to the vehicle that is called
/// `vehicle` now. A driver's dashboard may be remembered under any of them.
QStringList formerVehicleNames(const QString &vehicle);
