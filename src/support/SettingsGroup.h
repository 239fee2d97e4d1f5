#pragma once

#include <memory>

class QString;
class QVariant;

/// One group of the application's settings, open for a moment: what was set is flushed when the
/// object goes. A store that can't be written is not reported. One thread at a time.
///
/// Where the settings are a file, only texts are read from it, and what else it holds stays there
/// as it is.
class SettingsGroup
{
public:
    /// Opens the user's settings at `group`, or at their root if it is empty.
    explicit SettingsGroup(const QString &group);
    ~SettingsGroup();
    SettingsGroup(const SettingsGroup &) = delete;
    SettingsGroup &operator=(const SettingsGroup &) = delete;

    QVariant value(const QString &key, const QVariant &defaultValue) const;

    /// Values are texts, or have a text that stands for them.
    void setValue(const QString &key, const QVariant &value);
    void remove(const QString &key);

private:
    struct Store;
    std::unique_ptr<Store> store;
};

/// Opens the user's settings of the application at `group`, or at their root if it is empty. Never
/// null. Any thread.
std::unique_ptr<SettingsGroup> openSettingsGroup(const QString &group);
