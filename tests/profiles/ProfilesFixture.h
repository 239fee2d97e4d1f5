#pragma once

#include "profiles/DashboardProfilesManager.h"

#include "FakeProvider.h"
#include "support/FakeCounter.h"
#include "support/FakeEngine.h"
#include "support/SettingsGroup.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <array>

/// A home with dashboards, and a store over them that runs by the test's clock. One at a time: the
/// built-in dashboards lie beside the program.
class ProfilesFixture
{
public:
    TemporaryHome home;
    FakeEngine engine;
    FakeProvider provider;
    FakeCounter counter;
    std::unique_ptr<DashboardProfilesManager> store;
    QStringList signalLog; ///< "list", "modified 1", "activated 1", in order.
    QString recentAtStart; ///< Of the settings.

    explicit ProfilesFixture(const QStringList &users = {}, const QStringList &builtIns = {},
                             const QString &parent = fastFolder())
        : home(parent)
    {
        QDir(builtInPath()).removeRecursively();
        for (const QString &name : builtIns)
            addDashboard(builtInPath(name));
        for (const QString &name : users)
            addDashboard(userPath(name));
    }
    ~ProfilesFixture() { QDir(builtInPath()).removeRecursively(); }
    Q_DISABLE_COPY(ProfilesFixture)

    static QString builtInPath(const QString &name = {})
    {
        return QCoreApplication::applicationDirPath() + "/Dashboards/"_q + name;
    }
    QString userPath(const QString &name = {}) const { return home.data("/Dashboards/") + name; }
    QString iniPath() const { return home.data("/dashboardsExtra.ini"); }

    static void addDashboard(const QString &directory)
    {
        for (const char *const file : Files)
            writeFile(directory + QString::fromLatin1(file), QByteArray(20'000, 's'));
    }
    bool isWhole(const QString &user) const
    {
        return std::all_of(Files.begin(), Files.end(), [&](const char *file) {
            return readFile(userPath(user) + QString::fromLatin1(file)).size() == 20'000;
        });
    }

    /// Starts the store, or starts it again.
    void start()
    {
        recentAtStart = recentName();
        engine.documents.clear();
        signalLog.clear();
        store = std::make_unique<DashboardProfilesManager>(&engine, &provider, counter);
        using Store = DashboardAbstractProfilesManager;
        const auto log = [this](auto signal, auto slot) {
            QObject::connect(store.get(), signal, store.get(), slot, Qt::DirectConnection);
        };
        log(&Store::profileListChanged, [this] { signalLog += "list"_q; });
        log(&Store::profileModified, [this](int id) { signalLog += "modified %1"_q.arg(id); });
        log(&Store::newProfileActivated, [this](int id) { signalLog += "activated %1"_q.arg(id); });
    }

    /// The id of the first profile of this name, or -1.
    int id(const QString &name) const
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
    void report(const QString &vehicle) const { store->activateRecentProfileForVehicle(vehicle); }

    /// What happened after the start: "+1 saved recent=B document=B list modified 1". Only a new
    /// file counts as saved.
    QString effects() const
    {
        QStringList result{"+%1"_q.arg(store->revision() - 1)};
        if (QFileInfo::exists(iniPath()))
            result += "saved"_q;
        if (recentName() != recentAtStart)
            result += "recent="_q + recentName();
        const QStringList documents = engine.documents.mid(1);
        for (const QString &document : documents)
            result += "document="_q + document.section(u'/', -2, -2);
        return (result + signalLog).join(u' ');
    }

    /// The list with a star at the active profile, and the vehicles in memory: "A(V W) B* C(X)".
    QString state() const { return stateOf(*store); }

    /// The same as the next start would find it.
    QString savedState()
    {
        FakeEngine other;
        return stateOf(DashboardProfilesManager(&other, &provider, counter));
    }
    static QString recentName()
    {
        return openSettingsGroup("Dashboard"_q)->value("RecentProfile"_q, "(none)"_q).toString();
    }
    static void setRecentName(const QString &name)
    {
        openSettingsGroup("Dashboard"_q)->setValue("RecentProfile"_q, name);
    }
    /// Hidden files and folders of the store: none, but while a copy is under way.
    QStringList leftovers() const
    {
        const auto kinds = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        return QDir(userPath()).entryList({".*"_q}, kinds) +
               QDir(home.data()).entryList({".*"_q}, kinds);
    }

private:
    static constexpr std::array<const char *, 5> Files{"/Dash.qml", "/0.svg", "/dial.svg",
                                                       "/sub/face.svg", "/preview.png"};

    static QString stateOf(const DashboardProfilesManager &store)
    {
        QStringList result;
        for (const DashboardProfileHeader &header : store.profileHeaders()) {
            QStringList vehicles = store.profile(header.id)->vehicles.values();
            vehicles.sort();
            const bool isActive = header.id == store.activeProfileId();
            result += header.name + (isActive ? "*"_q : ""_q) +
                      (vehicles.isEmpty() ? ""_q : u'(' + vehicles.join(u' ') + u')');
        }
        return result.join(u' ');
    }
};
