#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

#include <utility>

/// While it lives every translatable text of one context is told in capitals.
class Shouter : public QTranslator
{
public:
    explicit Shouter(QByteArray context)
        : spoken(std::move(context))
    {
        QCoreApplication::installTranslator(this);
    }
    ~Shouter() override { QCoreApplication::removeTranslator(this); }
    Shouter(const Shouter &) = delete;
    Shouter &operator=(const Shouter &) = delete;

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return context == spoken ? QString::fromUtf8(text).toUpper() : QString();
    }

private:
    const QByteArray spoken;
};
