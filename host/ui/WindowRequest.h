#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

#include <optional>

/// Which windows the program begins with.
struct WindowRequest
{
    QString view;              ///< The name of one of the library's views; empty is the gallery.
    QString path;              ///< A file for that view; empty for none.
    std::optional<QSize> size; ///< Of the view's window, in pixels.
};
