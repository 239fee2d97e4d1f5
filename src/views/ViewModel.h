#pragma once

#include "plugin/IViewModel.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QWindow>

/// What both view models have in common. GUI thread.
class ViewModel : public QObject, public IViewModel
{
    Q_OBJECT

public:
    using QObject::QObject;

    QObject *asQObject() override { return this; }
    void setWindow(QWindow *newWindow) override;
    bool viewFlagA() override { return false; }
    bool viewFlagB() override { return true; }

protected:
    /// Runs whenever the window is shown or hidden, but not when another is set.
    virtual void followVisibility(bool visible) = 0;

    QPointer<QWindow> window;
};
