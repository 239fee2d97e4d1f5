#pragma once

#include <QtCore/QObject>

#include <functional>

class QUrl;
class QVariant;

/// Opens a dashboard's document in the user's code editor: Visual Studio Code if it is
/// installed, else what VISUAL names, else the desktop's editor for the file. The editor outlives
/// the program. No shell is involved. GUI thread.
class CodeEditor final : public QObject
{
    Q_OBJECT

public:
    /// Opens a URL with the desktop's default program. Returns false if there is none.
    using Desktop = std::function<bool(const QUrl &)>;

    CodeEditor();
    explicit CodeEditor(Desktop desktop);

    /// `argument` is a map: "path" names the document, "dir" its folder, which may be left out.
    void open(const QVariant &argument);

Q_SIGNALS:
    /// No editor has started; `message` is for the user.
    void failed(const QString &message);

private:
    const Desktop desktop;
};
