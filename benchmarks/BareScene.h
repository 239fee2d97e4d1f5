#pragma once

#include "plugin/Frame.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>
#include <utility>
#include <vector>

/// Names with their values, ready to be set.
using Properties = std::vector<std::pair<QString, QVariant>>;

/// A QML document rendered into memory with Qt's own means and nothing around them: the baseline
/// that the library's renderer is measured against.
class BareScene
{
public:
    /// Sets the properties, loads the document and makes the framebuffer.
    BareScene(const QString &path, const Properties &properties, int width, int height);
    ~BareScene();
    BareScene(const BareScene &) = delete;
    BareScene &operator=(const BareScene &) = delete;

    void set(const Properties &properties);

    /// Polish, sync, render, and glReadPixels into `buffer`, which has the right size already.
    void frame(Frame &buffer);

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};
