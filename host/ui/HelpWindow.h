#pragma once

#include "HelpPage.h"
#include "HostWindow.h"

/// The window of the help. GUI thread.
class HelpWindow final : public HostWindow
{
    Q_OBJECT
    /// The page's name.
    Q_PROPERTY(QString page READ page NOTIFY requested)
    /// The anchor of the heading to show; empty for the page's beginning.
    Q_PROPERTY(QString anchor READ anchor NOTIFY requested)

public:
    /// `navigation` is borrowed. `topic` as for `showTopic`.
    HelpWindow(const QString &topic, Navigation &navigation);
    ~HelpWindow() override;

    /// A page's name, perhaps with an anchor: "dashboards#the-editor". Empty means the
    /// dashboard guide; a missing page shows a note.
    void showTopic(const QString &topic);

    QString page() const { return pageName; }
    QString anchor() const { return pageAnchor; }

Q_SIGNALS:
    void requested();

private:
    HelpPage text;
    QString pageName;
    QString pageAnchor;
};
