#pragma once

#include "DatagramReader.h"

#include <QtCore/QString>

#include <memory>

/// Opens a recorded drive or another capture. Null if it can't be read; `error` then tells the user
/// why, in one line.
std::unique_ptr<DatagramReader> openDrive(const QString &path, QString &error);
