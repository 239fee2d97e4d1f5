#pragma once

#include "IDashboardEngine.h"

#include <QtCore/QLibrary>
#include <QtCore/QString>

#include <memory>

class INavigationService;

/// The library GAUGE64, loaded at run time and met only through its exports. Stays loaded to the
/// end of the process, since the QML types that it registers live there.
class GaugeLibrary
{
public:
    /// Loads the library that lies in `directory`.
    explicit GaugeLibrary(const QString &directory);

    /// Why the library can't be used; empty if it can. The operations below need it usable.
    const QString &error() const { return errorText; }

    std::unique_ptr<IDashboardEngine> createEngine(bool useMph, bool hardwareAcceleration) const;
    void init(INavigationService &navigation, IDashboardEngine &engine) const;

private:
    template<typename Function> Function resolve(const char *name);

    QLibrary library;
    QString errorText;
    IDashboardEngine *(*createE)(bool, bool) = nullptr;
    void (*initialise)(INavigationService *, IDashboardEngine *) = nullptr;
};
