#include "ClassicUIBridge.h"

#include "FileDialog.h"

#include <QtQml/qqml.h>

void ClassicUIBridge::registerType()
{
    static const int id =
        qmlRegisterType<ClassicUIBridge>("ClassicUIBridge", 1, 0, "ClassicUIBridge");
    Q_UNUSED(id)
}

QString ClassicUIBridge::getExistingFile(QObject *window, const QString &title,
                                         const QString &filter, const QString &startPath)
{
    auto *parent = qobject_cast<HostWindow *>(window);
    if (parent == nullptr)
        return {};
    FileDialog dialog(*parent, title, filter, startPath);
    return dialog.choose();
}
