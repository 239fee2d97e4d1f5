#pragma once

#include <functional>

class IViewModel;
class QString;
class QVariant;

/// Makes a new view model; the caller owns it.
using ViewModelFactory = std::function<IViewModel *()>;

/// The host's registry of views, as far as the library calls it. Borrowed; must outlive every view
/// model. Called on the GUI thread.
///
/// The two operations keep this order. A host whose own interface has virtual operations in front
/// of them declares those here, behind the destructor, and builds the library against that header.
class INavigationService
{
public:
    virtual ~INavigationService() = default;

    /// Shows the view `target`. The library passes null as `context`.
    virtual void showView(void *context, const QString &target, const QVariant &argument) = 0;

    /// Remembers the view `name` with its QML document. `factory` dies when the call returns, so
    /// the host copies it.
    virtual void registerView(const QString &name, const QString &documentPath,
                              const ViewModelFactory &factory) = 0;
};
