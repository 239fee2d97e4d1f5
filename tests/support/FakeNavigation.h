#pragma once

#include "plugin/INavigationService.h"

#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <tuple>
#include <vector>

/// A host's registry of views that shows nothing and records its calls.
struct FakeNavigation final : INavigationService
{
    QStringList views;                       ///< Name and document of each, separated by a space.
    std::vector<ViewModelFactory> factories; ///< Copies; the originals are destroyed.
    std::vector<std::tuple<void *, QString, QVariantMap>> shown; ///< Context, target, argument.

    void showView(void *context, const QString &target, const QVariant &argument) override
    {
        shown.emplace_back(context, target, argument.toMap());
    }
    void registerView(const QString &name, const QString &documentPath,
                      const ViewModelFactory &factory) override
    {
        views += name + QLatin1Char(' ') + documentPath;
        factories.push_back(factory);
    }
};
