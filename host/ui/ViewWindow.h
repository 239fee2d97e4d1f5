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
/// full screen first. It opens on a second screen if there is one, and nothing is remembered.
class ViewWindow final : public HostWindow
{
    Q_OBJECT
    /// What the dashboard of the view said, the newest last, with file and line in front.
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

    /// Ends the view at once. The window itself goes with it, or, if its document is still waiting
    /// for a dialog, as soon as that has returned.
    void end();

    /// A folder got another path, both in native separators: a file below it is followed there.
    void folderMoved(const QString &from, const QString &to);

    /// The argument that would show the same again: the file, if the view has one.
    QVariant argument() const;

    /// Adds a message about a document on disk if that lies in the folder of the view's.
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
