#pragma once

#include "ui/HostWindow.h"

#include <memory>

class IViewModel;
class QVariant;

/// A view of the library in a window: the document, and behind it the view model.
class ViewWindow final : public HostWindow
{
    Q_OBJECT

public:
    /// `frameless` leaves moving and closing to the document.
    ViewWindow(const QString &name, Navigation &navigation, std::unique_ptr<IViewModel> viewModel,
               bool frameless);
    ~ViewWindow() override;

    /// Loads the view's document, with an argument for the view model, and shows the window.
    void openView(const QString &documentPath, const QVariant &argument);

    /// Hands an argument to the view model.
    void setArgument(const QVariant &argument);

protected:
    void restoreFullScreen() override;

private:
    std::unique_ptr<IViewModel> viewModel;
};
