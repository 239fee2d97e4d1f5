#pragma once

class QObject;
class QQmlContext;
class QVariant;
class QWindow;

/// The model of one view, as the host uses it. The host owns it, destroys it through this interface
/// and calls everything on the GUI thread, `initContext` before it creates the view's document. All
/// pointers are borrowed.
class IViewModel
{
public:
    virtual ~IViewModel() = default;

    /// This object as the document's `cpp_viewModel`. It has no parent.
    virtual QObject *asQObject() = 0;

    /// Adds the view's image provider to the QML engine of `context`, in which the document will
    /// run. The engine may be destroyed before or after the view model.
    virtual void initContext(QQmlContext *context) = 0;

    /// Passes on the argument of a request to show the view. `context` and `request` mean something
    /// to the host only; the library's views ignore them.
    virtual void setArgument(void *context, int request, const QVariant &argument) = 0;

    /// Sets the window that shows the view, or null. It may be destroyed at any time.
    virtual void setWindow(QWindow *window) = 0;

    /// Means something to the host only; false in the library's views.
    virtual bool viewFlagA() = 0;

    /// Means something to the host only; true in the library's views.
    virtual bool viewFlagB() = 0;
};
