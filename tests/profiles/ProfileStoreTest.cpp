#include "ProfilesFixture.h"

#include <QtTest/QtTest>

#include <tuple>

using Action = DashboardProfileAction::Code;

class ProfileStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyHomeGivesAnEmptyStoreAndIsLeftAlone()
    {
        ProfilesFixture f;
        f.start();
        f.report("Car"_q);
        QCOMPARE(f.store->revision(), 1);
        QCOMPARE(f.store->activeProfileId(), -1);
        QVERIFY(!f.store->profileHeader(0) && !f.store->profile(-1));
        QVERIFY(f.engine.documents.isEmpty());
        QVERIFY(!QFileInfo::exists(f.home.path("/Documents/Orvalentix")));
        QVERIFY(!QFileInfo::exists(ProfilesFixture::builtInPath()));
    }

    void wholeDashboardsAreListedByNameAndBuiltInOnesHaveTheFirstIds()
    {
        ProfilesFixture f({"alpha"_q, "Zulu"_q, ".hidden"_q}, {"Mid"_q});
        for (const char *const file : {"NoPreview/Dash.qml", "NoDocument/preview.png", "file"})
            writeFile(f.userPath(QString::fromLatin1(file)), "");
        f.start();
        QCOMPARE(f.state(), "Mid* Zulu alpha"_q);
        QCOMPARE(f.id("Zulu"_q) + f.id("alpha"_q), 1 + 2);
        const auto mid = f.store->profile(0);
        QVERIFY(mid->name == "Mid"_q && mid->builtIn);
        QCOMPARE(mid->directory, ProfilesFixture::builtInPath("Mid"_q));
        QCOMPARE(mid->qmlPath, mid->directory + "/Dash.qml"_q);
        QCOMPARE(mid->previewPath, mid->directory + "/preview.png"_q);
        QVERIFY(f.store->profileNameExists("zULU"_q) && !f.store->profileNameExists("Zul"_q));
    }

    void theRecentProfileBecomesActiveElseTheFirst()
    {
        ProfilesFixture f({"classic"_q, "Second"_q}, {"Classic"_q});
        const std::vector<std::pair<QString, QString>> rows{
            {""_q, "Classic"_q},        {"Gone"_q, "Classic"_q},    {"SECOND"_q, "Second"_q},
            {"classic"_q, "classic"_q}, {"CLASSIC"_q, "Classic"_q}, {"Gone/Second"_q, "Second"_q}};
        for (const auto &[recent, expected] : rows) {
            ProfilesFixture::setRecentName(recent);
            f.start();
            const auto active = f.store->profile(f.store->activeProfileId());
            QCOMPARE(active->name, expected);
            QCOMPARE(f.engine.documents, QStringList{active->qmlPath});
            QCOMPARE(ProfilesFixture::recentName(), recent);
        }
    }

    void everyActionHasItsEffectsAndNoOthers()
    {
        // The vehicle V is the current one and belongs to B, the user's own. A is built in.
        const std::vector<std::tuple<QString, QString, int, QString>> rows{
            {"A"_q, "A"_q, Action::Activate, "+0"_q},
            {"A"_q, "B"_q, Action::Activate, "+0 recent=B document=B activated 1"_q},
            {"B"_q, "A"_q, Action::Activate,
             "+1 saved recent=A document=A activated 0 modified 0 modified 1"_q},
            {"A"_q, "A"_q, Action::Copy, "+1 list"_q},
            {"A"_q, "B"_q, Action::Rename, "+1 saved list modified 1"_q},
            {"B"_q, "B"_q, Action::Rename, "+1 saved recent=New document=New list modified 1"_q},
            {"A"_q, "B"_q, Action::Remove, "+1 list modified 1"_q},
            {"B"_q, "B"_q, Action::Remove, "+1 recent=A document=A list modified 1 activated 0"_q},
            {"B alone"_q, "B"_q, Action::Remove,
             "+1 recent=(none) document= list modified 0 activated -1"_q}};
        for (const auto &[active, profile, action, expected] : rows) {
            ProfilesFixture f({"B"_q}, active == "B alone"_q ? QStringList() : QStringList{"A"_q});
            writeFile(f.iniPath(), "[B]\nVehicle.0.Name=V\nVehicleCount=1\n");
            ProfilesFixture::setRecentName(active);
            f.start();
            QFile::remove(f.iniPath());
            f.provider.name = "V"_q;
            QVERIFY(f.act(profile, action, "New"_q).ok);
            QCOMPARE(f.effects(), expected);
        }
    }

    void aCopyIsTheUsersOwnStandsAtTheEndAndStaysThereWhenRenamed()
    {
        ProfilesFixture f({"Own"_q}, {"Built"_q});
        writeFile(ProfilesFixture::builtInPath("Built/.hidden/file"_q), "hidden");
        QFile::setPermissions(ProfilesFixture::builtInPath("Built/Dash.qml"_q), QFile::ReadOwner);
        f.start();
        for (const QString &name : {"Built"_q, "console"_q, "com10"_q, "%1 %2"_q})
            QVERIFY(f.act("Built"_q, Action::Copy, name).ok);
        QVERIFY(f.isWhole("%1 %2"_q));
        QCOMPARE(readFile(f.userPath("com10/.hidden/file"_q)), QByteArray("hidden"));
        QVERIFY(f.store->performAction(2, Action::Rename, QVariant(42)).ok);
        QCOMPARE(f.state(), "Built* Own 42 console com10 %1 %2"_q);
        QCOMPARE(f.store->profile(2)->previewPath, f.userPath("42/preview.png"_q));
        QVERIFY(f.act("42"_q, Action::Remove).ok);
        QVERIFY(!QFileInfo::exists(f.userPath("42"_q)));
    }

    void pathsMayBeLongAndInAnyScript()
    {
        const QTemporaryDir place(fastFolder() + "/gauge-XXXXXX"_q);
        const QString parent = place.filePath(QString(150, u'x'));
        QDir().mkpath(parent);
        ProfilesFixture f({"A"_q}, {}, parent);
        f.start();
        f.report("V"_q);
        const QString name(60, u'n');
        QVERIFY(f.act("A"_q, Action::Copy, name).ok);
        QVERIFY(f.act("A"_q, Action::Rename, "Größe 仪表盘 🏎"_q).ok);
        QCOMPARE(f.savedState(), "Größe 仪表盘 🏎*(V) "_q + name);
        QVERIFY(f.act(name, Action::Remove).ok);
        QVERIFY(!QFileInfo::exists(f.userPath(name)) && f.leftovers().isEmpty());
    }

    void aFailureHasItsMessageAndChangesNothing()
    {
        ProfilesFixture f({"User"_q}, {"Built"_q});
        QDir().mkpath(f.userPath("Other"_q));
        f.start();
        const auto shown = [&](const QString &name) {
            return QDir::toNativeSeparators(f.userPath(name));
        };
        const auto fails = [&](int id, int action, const QString &name, const QString &message) {
            const auto result = f.store->performAction(id, action, name);
            QVERIFY(!result.ok);
            QCOMPARE(result.message, message);
        };
        const QString notRenamed = "Failed to rename '%1' to '%2'"_q.arg(shown("User"_q));
        fails(0, -1, {}, "Unsupported action: -1"_q);
        fails(99, Action::Activate, {}, "Profile not found"_q);
        fails(99, Action::Rename, "New"_q, "Dashboard does not exist"_q);
        fails(-1, Action::Remove, {}, "Dashboard does not exist"_q);
        fails(99, Action::Copy, "New"_q, "Dashboard does not exist"_q);
        fails(99, Action::Copy, {}, "Name cannot be empty"_q);
        fails(99, Action::Copy, "User"_q, "Dashboard with given name already exists"_q);
        fails(0, Action::Rename, "New"_q, "Built-in profile cannot be renamed"_q);
        fails(0, Action::Remove, {}, "Built-in profile cannot be removed"_q);
        fails(1, Action::Rename, "User"_q, notRenamed.arg("User"_q));
        fails(1, Action::Rename, "Other"_q, notRenamed.arg("Other"_q));
        for (const char *const name : {"a/b", "a\\b", "a..b", "..", "a:b", " a", "a ", "a.", "."})
            fails(0, Action::Copy, QString::fromLatin1(name), "Name is not correct"_q);
        QStringList unfit{QString(300, u'x'), "a"_q + QChar(0) + u'b'};
#ifdef Q_OS_WIN
        unfit += {"con"_q, "Nul.txt"_q, "com1"_q, "com¹"_q, "CONIN$"_q, "what?"_q, "tab\tbed"_q};
#else
        unfit += {QString(100, QChar(0x20AC)), QString(QChar(0xD800)), ".hidden"_q};
#endif
        for (const QString &name : qAsConst(unfit)) {
            fails(99, Action::Copy, name, "Failed to create '%1'"_q.arg(shown(name)));
            fails(1, Action::Rename, name, notRenamed.arg(name));
        }
        QFile::remove(f.userPath("User/preview.png"_q));
        fails(1, Action::Copy, "New"_q, "'New' is not a valid dashboard"_q);
        QVERIFY(QDir(f.userPath("User"_q)).removeRecursively());
        fails(1, Action::Copy, "New"_q,
              "Failed to copy '%1' to '%2'"_q.arg(shown("User"_q), shown("New"_q)));
        QCOMPARE(f.store->revision(), 1);
        QVERIFY(f.signalLog.isEmpty() && f.leftovers().isEmpty());
        QCOMPARE(QDir(f.userPath()).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
                 QStringList{"Other"_q});

        // What is gone can still be activated and removed.
        QVERIFY(f.act("User"_q, Action::Activate).ok);
        QVERIFY(f.act("User"_q, Action::Remove).ok);
        QCOMPARE(f.state(), "Built*"_q);
    }

#ifndef Q_OS_WIN // No limit of file sizes and other permissions there, and no links in Wine.
    void aFullOrReadOnlyDiskLosesNothingAndLeavesNothingBehind()
    {
        const Unprivileged user;
        ProfilesFixture f({"A"_q});
        f.start();
        const auto fails = [&](int action, const char *message) {
            QVERIFY(f.act("A"_q, action, "New"_q).message.startsWith(QLatin1String(message)));
            QVERIFY(!QFileInfo::exists(f.userPath("New"_q)));
            QVERIFY(f.leftovers().isEmpty());
        };
        {
            const FullDisk disk(5000);
            fails(Action::Copy, "Failed to copy '");
        }
        const auto readOnly = QFile::ReadOwner | QFile::ExeOwner;
        QFile::setPermissions(f.userPath(), readOnly);
        fails(Action::Copy, "Failed to create '");
        fails(Action::Rename, "Failed to rename '");
        fails(Action::Remove, "Failed to remove '");
        QFile::setPermissions(f.userPath(), readOnly | QFile::WriteOwner);
        QFile::setPermissions(f.userPath("A/sub"_q), QFile::ReadOwner);
        fails(Action::Copy, "Failed to copy '");
        QFile::setPermissions(f.userPath("A/sub"_q), readOnly);
        fails(Action::Remove, "Failed to remove '");
        QVERIFY(f.isWhole("A"_q));
        QFile::setPermissions(f.userPath("A/sub"_q), readOnly | QFile::WriteOwner);
        QCOMPARE(f.savedState(), "A*"_q);
    }

    void aRemovedLinkLeavesItsTargetAlone()
    {
        ProfilesFixture f({"A"_q});
        const QString elsewhere = f.home.path("/elsewhere");
        ProfilesFixture::addDashboard(elsewhere);
        // What killed copies have left, among it a reserved name.
        for (const char *const left : {"Free", ".staging..left/Free", ".staging..left/A"})
            QDir().mkpath(f.userPath(QString::fromLatin1(left)));
        for (const char *const link : {"Linked", "Second", ".staging..left/X"})
            QFile::link(elsewhere, f.userPath(QString::fromLatin1(link)));
        f.start();
        QVERIFY(f.act("Second"_q, Action::Rename, "Free"_q).ok);
        QVERIFY(f.act("Linked"_q, Action::Copy, "Copied"_q).ok);
        QVERIFY(!QFileInfo(f.userPath("Copied"_q)).isSymLink());
        QVERIFY(f.act("Linked"_q, Action::Remove).ok);
        QVERIFY(!QFileInfo(f.userPath("Linked"_q)).isSymLink());
        QVERIFY(QFileInfo::exists(elsewhere + "/sub/face.svg"_q));
        QVERIFY(f.isWhole("A"_q) && f.leftovers().isEmpty());
    }
#endif
};

QTEST_GUILESS_MAIN(ProfileStoreTest)
#include "ProfileStoreTest.moc"
