#pragma once

#include "plugin/Frame.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>
#include <utility>
#include <vector>

/// Names with their values, ready to be set.
using Properties = std::vector<std::pair<QString, QVariant>>;

/// Renders a QML document into memory with Qt alone: the baseline for the library's renderer.
class BareScene
{
public:
    /// Sets the properties, loads the document and makes the framebuffer.
    BareScene(const QString &path, const Properties &properties, int width, int height);
    ~BareScene();
    BareScene(const BareScene &) = delete;
    BareScene &operator=(const BareScene &) = delete;

    void set(const Properties &properties);

    /// Polish, sync, render, and glReadPixels into `buffer`, which must have the right size.
    void frame(Frame &buffer);

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};
