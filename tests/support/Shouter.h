#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

/// While it lives, every translatable text of one context is in capitals.
class Shouter : public QTranslator
{
public:
    explicit Shouter(const char *context)
        : spoken(context)
    {
        QCoreApplication::installTranslator(this);
    }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return context == spoken ? QString::fromUtf8(text).toUpper() : QString();
    }

private:
    const QByteArray spoken;
};
