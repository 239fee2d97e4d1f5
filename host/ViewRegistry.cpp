#include "ViewRegistry.h"

#include <QtCore/QDebug>
#include <QtCore/QVariant>

void ViewRegistry::showView(void * /*context*/, const QString &target,
                            const QVariant & /*argument*/)
{
    qWarning().noquote() << "There is no view named" << target;
}

void ViewRegistry::registerView(const QString &name, const QString &documentPath,
                                const ViewModelFactory &factory)
{
    registered.insert(name, {documentPath, factory});
}
