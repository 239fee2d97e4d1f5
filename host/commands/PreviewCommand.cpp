#include "PreviewCommand.h"

#include "OffscreenDashboard.h"
#include "SaveAsPng.h"
#include "system/Terminal.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

int makePreview(const QString &document, const QString &output, IDashboardEngine &engine)
{
    if (!QFileInfo(document).isFile()) {
        printError(
            QStringLiteral("No such dashboard: '%1'.").arg(QDir::toNativeSeparators(document)));
        return 1;
    }
    OffscreenDashboard dashboard(engine);
    if (!dashboard.load(document)) {
        const QStringList errors = dashboard.errors();
        for (const QString &error : errors)
            printError(error);
        return 1;
    }
    const QImage picture = dashboard.settled(previewState());
    if (picture.isNull()) {
        printError(QStringLiteral("The picture keeps changing."));
        return 1;
    }
    const QString path =
        output.isEmpty() ? QFileInfo(document).absoluteDir().filePath(QStringLiteral("preview.png"))
                         : output;
    const QString shown = QDir::toNativeSeparators(path);
    const QString failure = saveAsPng(picture, path);
    if (!failure.isEmpty()) {
        printError(QStringLiteral("Could not write '%1': %2").arg(shown, failure));
        return 1;
    }
    printOutput(shown);
    return 0;
}
