#include "views/ViewModel.h"

void ViewModel::setWindow(QWindow *newWindow)
{
    if (window != nullptr)
        window->disconnect(this);
    window = newWindow;
    if (newWindow != nullptr)
        connect(newWindow, &QWindow::visibleChanged, this, &ViewModel::followVisibility);
}
