#include "WindowSession.h"

#include "Cluster.h"
#include "Options.h"
#include "Terminal.h"
#include "ui/ViewWindow.h"

#include <QtCore/QDir>
#include <QtGui/QGuiApplication>

namespace {

void showView(const Options &options, Cluster &cluster)
{
    const QString path = options.viewPath;
    const QVariant argument =
        path.isEmpty() ? QVariant() : QVariant(QDir::current().absoluteFilePath(path));
    cluster.navigation.showView(options.view, argument);
    HostWindow *window = cluster.navigation.window(options.view);
    if (window != nullptr && options.size)
        window->resize(*options.size);
}

} // namespace

int runWindows(const Options &options, const GaugeLibrary &library)
{
    Cluster cluster(options, library, options.units == Options::Units::Mph);
    const bool dashboardThere = cluster.chooseDashboard();
    if (!dashboardThere && options.mode == Options::Mode::View) {
        printError(QStringLiteral("There are no dashboards beside the program, nor of your own."));
        return 1;
    }
    showView(options, cluster);
    cluster.startTelemetry();
    return QGuiApplication::exec();
}
