#pragma once

#include <functional>

class IViewModel;
class QString;
class QVariant;

/// Creates a view model; the caller owns it.
using ViewModelFactory = std::function<IViewModel *()>;

/// The host's registry of views, as far as the library calls it, which it does on the GUI thread.
/// The library borrows it; it must outlive every view model.
///
/// The order of the operations is binding. A host whose own interface has virtual functions in
/// front of them declares those here, after the destructor, and builds the library against that
/// header.
class INavigationService
{
public:
    virtual ~INavigationService() = default;

    /// Shows the view `target`. The library passes null as `context`.
    virtual void showView(void *context, const QString &target, const QVariant &argument) = 0;

    /// Registers the view `name` with its QML document. The host copies `factory`, which is
    /// destroyed when the call returns.
    virtual void registerView(const QString &name, const QString &documentPath,
                              const ViewModelFactory &factory) = 0;
};
