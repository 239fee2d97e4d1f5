#pragma once

#include <memory>

class QString;
class QVariant;

/// One group of the application's settings, open for a moment: its destructor writes what was set.
/// Settings that can't be written are not reported. One thread at a time.
///
/// If the settings are a file, only texts are read from it, and other values stay as they are.
class SettingsGroup
{
public:
    /// Opens the user's settings at `group`, or at their root if it is empty.
    explicit SettingsGroup(const QString &group);
    ~SettingsGroup();
    SettingsGroup(const SettingsGroup &) = delete;
    SettingsGroup &operator=(const SettingsGroup &) = delete;

    QVariant value(const QString &key, const QVariant &defaultValue) const;

    /// `value` is a text or converts to one.
    void setValue(const QString &key, const QVariant &value);
    void remove(const QString &key);

private:
    struct Store;
    std::unique_ptr<Store> store;
};

/// Opens the user's settings of the application at `group`, or at their root if it is empty. Never
/// null. Any thread.
std::unique_ptr<SettingsGroup> openSettingsGroup(const QString &group);
