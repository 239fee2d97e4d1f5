#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtQml/qqml.h>

/// What a document says to the test: `import Probe 1.0`. It also tells whether documents live on
/// after they should be gone.
class Probe : public QObject
{
    Q_OBJECT

public:
    explicit Probe(QObject *parent = nullptr)
        : QObject(parent)
    {
        ++alive;
    }
    ~Probe() override { --alive; }

    static void registerType() { qmlRegisterType<Probe>("Probe", 1, 0, "Probe"); }

    Q_INVOKABLE void report(const QVariant &value) { reports.append(value); }

    /// Deletes an object as C++ code behind a document may do, which QML itself forbids.
    Q_INVOKABLE void dispose(QObject *object) { object->deleteLater(); }

    static inline int alive = 0;
    static inline QVariantList reports;
};
