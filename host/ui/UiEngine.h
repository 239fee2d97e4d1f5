#pragma once

#include <QtQml/QQmlEngine>

/// A QML engine as all windows of the host use it: it knows the theme as `ux`, the scale of the
/// user interface as `qt_scale`, and the host's modules. Texts follow a change of the language.
class UiEngine final : public QQmlEngine
{
    Q_OBJECT

public:
    UiEngine();

    /// Pixels per pixel at scale 1, from the screen's dots per inch: 0.75 to 4 in quarters. It is
    /// `qt_scale` at first.
    static qreal scale();

    /// Gives this engine's documents another `qt_scale`. Their bindings follow.
    void setScale(qreal scale);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
