#pragma once

#include <QtCore/QString>

class QImage;

/// Writes `image` as a PNG file, completely or not at all; the same pixels give the same bytes.
/// Returns what went wrong, empty if nothing did. Any thread.
QString saveAsPng(const QImage &image, const QString &path);
