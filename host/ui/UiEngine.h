#pragma once

#include <QtQml/QQmlEngine>

/// The QML engine of a host window. Documents find the theme as `ux`, the user interface's
/// scale as `qt_scale`, and the host's modules. Retranslates when the language changes.
class UiEngine final : public QQmlEngine
{
    Q_OBJECT

public:
    UiEngine();

    /// The scale for the primary screen: 1 at 96 dots per inch, 0.75 to 4 in steps of a
    /// quarter. The initial `qt_scale`.
    static qreal scale();

    /// Changes `qt_scale`; bindings follow.
    void setScale(qreal scale);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
