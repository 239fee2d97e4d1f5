#pragma once

#include "INavigationService.h"

#include <QtCore/QMap>
#include <QtCore/QString>

/// The views that the library registers, by name.
class ViewRegistry final : public INavigationService
{
public:
    struct View
    {
        QString documentPath;
        ViewModelFactory makeViewModel;
    };

    void showView(void *context, const QString &target, const QVariant &argument) override;
    void registerView(const QString &name, const QString &documentPath,
                      const ViewModelFactory &factory) override;

    const QMap<QString, View> &views() const { return registered; }

private:
    QMap<QString, View> registered;
};
