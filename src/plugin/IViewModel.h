#pragma once

class QObject;
class QQmlContext;
class QVariant;
class QWindow;

/// The host's side of one shown view. The host owns it, destroys it through this interface, and
/// calls everything on the GUI thread, `initContext` before the view's document exists. All
/// pointers are borrowed.
class IViewModel
{
public:
    virtual ~IViewModel() = default;

    /// The same object for the document, which knows it as `cpp_viewModel`. It has no parent.
    virtual QObject *asQObject() = 0;

    /// Puts the view's images into the QML engine of `context`, in which the document will run. The
    /// engine may end before or after the view model.
    virtual void initContext(QQmlContext *context) = 0;

    /// Hands over the argument of a request to show the view. `context` and `request` are the
    /// host's own, of any value; no view of the library reads them.
    virtual void setArgument(void *context, int request, const QVariant &argument) = 0;

    /// Names the window that shows the view, or null for none. It may end at any time.
    virtual void setWindow(QWindow *window) = 0;

    /// The host's; false in the library's views.
    virtual bool viewFlagA() = 0;

    /// The host's; true in the library's views.
    virtual bool viewFlagB() = 0;
};
