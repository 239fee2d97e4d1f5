#pragma once

#include "DatagramReader.h"

#include <QtCore/QString>

#include <memory>

/// Opens a drive in a file, a recording or another capture. Nothing if it can't be read; `error`
/// then says why in one line for the user.
std::unique_ptr<DatagramReader> openDrive(const QString &path, QString &error);
