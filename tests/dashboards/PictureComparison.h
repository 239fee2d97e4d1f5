#pragma once

#include <QtGui/QImage>

/// How much two pictures of one size differ at each place, 0 to 255 as grey. Each place is compared
/// as a patch, slightly blurred, with the patches around the same place in the other picture, so
/// that another way of smoothing edges makes little difference and another digit a large one.
QImage differenceOf(const QImage &one, const QImage &other);

/// Whether the two show the same.
bool showTheSame(const QImage &one, const QImage &other);
