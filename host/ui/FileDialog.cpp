#include "FileDialog.h"

#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>

#include <utility>

FileDialog::FileDialog(HostWindow &parent, const QString &title, QString filter,
                       const QString &startPath)
    : HostWindow(QStringLiteral("FileDialog"), parent.navigation())
    , parent(parent)
    , filterText(std::move(filter))
{
    setTitle(title);
    setTransientParent(&parent);
    setModality(Qt::WindowModal);
    setFlag(Qt::Dialog);
    // Minimised alone it would leave its parent blocked.
    setCanBeMinimized(false);
    setFlag(Qt::WindowMaximizeButtonHint, false);
    // As its parent; a setting of its own would make no sense.
    setFlag(Qt::WindowStaysOnTopHint, parent.isStayOnTop());

    QString directory = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!startPath.isEmpty()) {
        const QFileInfo start(startPath);
        directory = start.absolutePath();
        name = start.fileName();
    }
    while (!QFileInfo(directory).isDir() && !QFileInfo(directory).isRoot())
        directory = QFileInfo(directory).path();
    if (!QFileInfo(directory).isDir()) // The drive is missing, too.
        directory = QDir::homePath();
    folder = QUrl::fromLocalFile(directory);
}

QString FileDialog::choose()
{
    QEventLoop loop;
    connect(this, &HostWindow::closed, &loop, &QEventLoop::quit);
    // A window below a modal one can't be closed, but it can be hidden.
    connect(&parent, &QWindow::visibleChanged, &loop, &QEventLoop::quit);
    open(QUrl(QStringLiteral("qrc:/qml/FileDialog.qml")));
    if (isVisible()) {
        const WaitingDocument guard(parent);
        loop.exec();
    }
    return QDir::toNativeSeparators(chosen);
}

QStringList FileDialog::namePatterns() const
{
    static const QRegularExpression brackets(QStringLiteral("\\(([^()]*)\\)\\s*$"));
    const QString patterns = brackets.match(filterText).captured(1);
    const QStringList list = patterns.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return list.isEmpty() ? QStringList{QStringLiteral("*")} : list;
}

QVariantList FileDialog::places()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString dashboards = documents + QStringLiteral("/Orvalentix/Halvorin/Dashboards");
    QVariantList list;
    const auto add = [&list](const QString &name, const QString &path) {
        if (QFileInfo(path).isDir()) {
            list += QVariantMap{{QStringLiteral("name"), name},
                                {QStringLiteral("folder"), QUrl::fromLocalFile(path)}};
        }
    };
    add(tr("My dashboards"), dashboards);
    add(tr("Documents"), documents);
    add(tr("Home"), QDir::homePath());
    const QFileInfoList drives = QDir::drives();
    for (const QFileInfo &drive : drives)
        add(QDir::toNativeSeparators(drive.path()), drive.path());
    return list;
}

bool FileDialog::accept(const QUrl &file)
{
    if (!QFileInfo(file.toLocalFile()).isFile())
        return false;
    chosen = file.toLocalFile();
    close();
    return true;
}

QUrl FileDialog::typed(const QString &path, const QUrl &folder)
{
    const QString text = QDir::fromNativeSeparators(path);
    const QString home =
        text.startsWith(QLatin1String("~/")) ? QDir::homePath() + text.mid(1) : text;
    return QUrl::fromLocalFile(QDir::cleanPath(QDir(folder.toLocalFile()).absoluteFilePath(home)));
}

bool FileDialog::isFolder(const QUrl &address)
{
    return QFileInfo(address.toLocalFile()).isDir();
}

QString FileDialog::nativePath(const QUrl &address)
{
    return QDir::toNativeSeparators(address.toLocalFile());
}

QString FileDialog::fileName(const QUrl &address)
{
    return address.fileName();
}
