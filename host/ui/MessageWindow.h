#pragma once

#include "HostWindow.h"

/// A message for the user in a window of its own, with one button. GUI thread.
class MessageWindow final : public HostWindow
{
    Q_OBJECT
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)

public:
    explicit MessageWindow(Navigation &navigation);
    /// The document goes before what it reads.
    ~MessageWindow() override;

    /// Shows the message in place of the last one.
    void tell(const QString &newMessage);

    QString message() const { return text; }

Q_SIGNALS:
    void messageChanged();

private:
    QString text;
};
