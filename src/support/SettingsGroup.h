#pragma once

#include <memory>

class QSettings;
class QString;
class QVariant;

/// One group of the application's settings, open for a moment: what was set is flushed when the
/// object goes. A store that can't be written is not reported. One thread at a time.
class SettingsGroup
{
public:
    explicit SettingsGroup(std::unique_ptr<QSettings> settings);
    ~SettingsGroup();
    SettingsGroup(const SettingsGroup &) = delete;
    SettingsGroup &operator=(const SettingsGroup &) = delete;

    QVariant value(const QString &key, const QVariant &defaultValue) const;
    void setValue(const QString &key, const QVariant &value);
    void remove(const QString &key);

private:
    std::unique_ptr<QSettings> settings;
};

/// Opens the user's settings of the application at `group`, or at their root if it is empty. Never
/// null. Any thread.
std::unique_ptr<SettingsGroup> openSettingsGroup(const QString &group);
