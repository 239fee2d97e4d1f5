#pragma once

#include "HostWindow.h"

#include <QtCore/QStringList>

#include <memory>

class IViewModel;
class QVariant;

/// A view of the library in a window: the document, and behind it the view model.
///
/// A frameless window, such as the live dashboard's, is resized at its edges, switched to and from
/// full screen with F or F11, kept above other windows with T, and closed with Escape, which ends
/// full screen first. Without a remembered place it opens on the second screen, if there is one.
class ViewWindow final : public HostWindow
{
    Q_OBJECT
    /// The dashboard's messages as "file:line: text", oldest first.
    Q_PROPERTY(QStringList messages READ messages NOTIFY messagesChanged)

public:
    static constexpr int MostMessages = 100;

    /// `frameless` leaves moving and closing to the document.
    ViewWindow(const QString &name, Navigation &navigation, std::unique_ptr<IViewModel> viewModel,
               bool frameless);
    ~ViewWindow() override;

    /// Loads the view's document, with an argument for the view model, and shows the window.
    void openView(const QString &documentPath, const QVariant &argument);

    /// Hands an argument to the view model.
    void setArgument(const QVariant &argument);

    /// Ends the view at once and deletes the window. While the document waits for a dialog,
    /// the window is only hidden, and deleted once the dialog has returned.
    void end();

    /// A folder has moved: a shown file in it is followed there. Native separators.
    void folderMoved(const QString &from, const QString &to);

    /// The argument that shows the same again: the file's path, if the view has one.
    QVariant argument() const;

    /// Adds a message if its file lies in the folder of the view's dashboard.
    void take(const QString &file, int line, const QString &text);

    QStringList messages() const { return said; }
    Q_INVOKABLE void clearMessages();

Q_SIGNALS:
    void messagesChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    bool isFrameless() const { return flags().testFlag(Qt::FramelessWindowHint); }
    bool isFullScreen() const { return windowStates().testFlag(Qt::WindowFullScreen); }
    void tellFullScreen();
    Qt::Edges edgesAt(const QPoint &position) const;

    std::unique_ptr<IViewModel> viewModel;
    QStringList said;
};
