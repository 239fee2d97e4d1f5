#pragma once

#include <QtCore/QString>

class QImage;

/// Writes `image` as a PNG file, whole or not at all. The result says what went wrong; it is empty
/// if nothing did. The same pixels make the same bytes. Any thread.
QString saveAsPng(const QImage &image, const QString &path);
