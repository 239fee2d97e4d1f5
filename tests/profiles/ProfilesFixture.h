#pragma once

#include "profiles/DashboardProfilesManager.h"

#include "Fakes.h"
#include "support/FakeCounter.h"
#include "support/SettingsGroup.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMap>

using Assignments = QMap<QString, QSet<QString>>;

/// A home with dashboards, and a store over them that runs by a clock in the test's hand.
class ProfilesFixture
{
public:
    TemporaryHome home;
    FakeEngine engine;
    FakeProvider provider;
    FakeCounter counter;
    std::unique_ptr<DashboardProfilesManager> store;
    QStringList signalLog;

    explicit ProfilesFixture(const QString &parent = QDir::tempPath())
        : home(parent)
    {
        QDir(builtInRoot()).removeRecursively();
    }
    ~ProfilesFixture() { QDir(builtInRoot()).removeRecursively(); }
    ProfilesFixture(const ProfilesFixture &) = delete;
    ProfilesFixture &operator=(const ProfilesFixture &) = delete;

    static QString builtInRoot()
    {
        return QCoreApplication::applicationDirPath() + "/Dashboards"_q;
    }
    QString userPath(const QString &name = {}) const { return home.data("/Dashboards/") + name; }
    /// As messages spell it.
    QString shownPath(const QString &name = {}) const
    {
        return QDir::toNativeSeparators(userPath(name));
    }
    QString iniPath() const { return home.data("/dashboardsExtra.ini"); }

    static QStringList assets()
    {
        return {"0.svg"_q, "Needle.svg"_q, "dial.svg"_q, "sub/face.svg"_q, "zero.svg"_q};
    }
    static void addDashboard(const QString &directory)
    {
        writeFile(directory + "/Dash.qml"_q, "Item {}");
        writeFile(directory + "/preview.png"_q, "png");
        const QStringList files = assets();
        for (const QString &file : files)
            writeFile(directory + u'/' + file, QByteArray(20'000, 's'));
    }
    void addUser(const QStringList &names) const
    {
        for (const QString &name : names)
            addDashboard(userPath(name));
    }
    static void addBuiltIn(const QString &name) { addDashboard(builtInRoot() + u'/' + name); }

    /// Starts the store, or starts it again.
    DashboardProfilesManager &start()
    {
        store.reset();
        engine.documents.clear();
        signalLog.clear();
        store = std::make_unique<DashboardProfilesManager>(&engine, &provider, counter);
        using Store = DashboardAbstractProfilesManager;
        QObject::connect(store.get(), &Store::profileListChanged, store.get(),
                         [this] { signalLog += "list"_q; });
        QObject::connect(store.get(), &Store::profileModified, store.get(),
                         [this](auto id) { signalLog += "modified %1"_q.arg(id); });
        QObject::connect(store.get(), &Store::newProfileActivated, store.get(),
                         [this](auto id) { signalLog += "activated %1"_q.arg(id); });
        return *store;
    }

    /// The id of the first profile of this name, or -1.
    DashboardProfileHeader::Id id(const QString &name) const
    {
        for (const DashboardProfileHeader &header : store->profileHeaders()) {
            if (header.name == name)
                return header.id;
        }
        return DashboardProfileHeader::NoId;
    }
    DashboardActionResult act(const QString &name, int action, const QVariant &parameter = {}) const
    {
        return store->performAction(id(name), action, parameter);
    }
    QStringList names() const
    {
        QStringList result;
        for (const DashboardProfileHeader &header : store->profileHeaders())
            result += header.name;
        return result;
    }
    QString activeName() const
    {
        const auto header = store->profileHeader(store->activeProfileId());
        return header ? header->name : QString();
    }

    /// What the store has in memory.
    Assignments assignments() const
    {
        Assignments result;
        for (const DashboardProfileHeader &header : store->profileHeaders()) {
            const auto profile = store->profile(header.id);
            if (profile && !profile->vehicles.isEmpty())
                result[header.name] += profile->vehicles;
        }
        return result;
    }
    /// What its file says; a vehicle that is missing there is an empty text.
    Assignments storedAssignments() const
    {
        Assignments result;
        // Under a name of its own: QSettings takes a path with the same size and time to the
        // millisecond for the file that it has read before.
        const QTemporaryDir place(home.path("/copy-XXXXXX"));
        QFile::copy(iniPath(), place.filePath("copy.ini"_q));
        QSettings file(place.filePath("copy.ini"_q), QSettings::IniFormat);
        const QStringList groups = file.childGroups();
        for (const QString &group : groups) {
            file.beginGroup(group);
            for (int i = 0; i < file.value("VehicleCount"_q).toInt(); ++i)
                result[group] += file.value("Vehicle.%1.Name"_q.arg(i)).toString();
            file.endGroup();
        }
        return result;
    }
    static QString recentName()
    {
        return openSettingsGroup("Dashboard"_q)->value("RecentProfile"_q, "(none)"_q).toString();
    }
    static void setRecentName(const QString &name)
    {
        openSettingsGroup("Dashboard"_q)->setValue("RecentProfile"_q, name);
    }
    /// Hidden entries of the user's root: none, but while a copy is under way.
    QStringList leftovers() const
    {
        return QDir(userPath())
            .entryList({".*"_q}, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};
