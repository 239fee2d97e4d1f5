#pragma once

#include <QtGui/QImage>

/// Whether two pictures of one size, in Format_RGB32, show the same. Each place is compared as a
/// patch, slightly blurred, with the patches around the same place in the other picture, so that
/// another way of smoothing edges makes little difference and another digit a large one.
bool showTheSame(const QImage &one, const QImage &other);
