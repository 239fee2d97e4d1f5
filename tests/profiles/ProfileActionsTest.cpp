#include "ProfilesFixture.h"

#include <QtTest/QtTest>

#include <atomic>
#include <thread>
#include <vector>

using Action = DashboardProfileAction::Code;

class ProfileActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyActionHasItsEffectsAndNoOthers_data()
    {
        QTest::addColumn<QString>("profile");
        QTest::addColumn<int>("action");
        QTest::addColumn<QString>("vehicle");
        QTest::addColumn<int>("revisions");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QString>("recent");
        QTest::addColumn<QStringList>("documents");
        QTest::addColumn<QString>("signalled");
        const QString same = "(untouched)"_q;
        const QStringList none;
        // The built-in profile has id 0; %1 is the id of B and %2 that of C.
        QTest::newRow("activate the active one")
            << "A"_q << int(Action::Activate) << "V"_q << 0 << false << same << none << ""_q;
        QTest::newRow("activate") << "B"_q << int(Action::Activate) << "V"_q << 0 << false << "B"_q
                                  << QStringList{"B/Dash.qml"_q} << "activated %1"_q;
        QTest::newRow("activate, a vehicle moves")
            << "C"_q << int(Action::Activate) << "V"_q << 1 << true << "C"_q
            << QStringList{"C/Dash.qml"_q} << "activated %2,modified ids"_q;
        QTest::newRow("copy") << "A"_q << int(Action::Copy) << ""_q << 1 << false << same << none
                              << "list"_q;
        QTest::newRow("rename") << "B"_q << int(Action::Rename) << ""_q << 1 << true << same << none
                                << "list,modified %1"_q;
        QTest::newRow("remove") << "B"_q << int(Action::Remove) << ""_q << 1 << false << same
                                << none << "list,modified %1"_q;
    }

    void everyActionHasItsEffectsAndNoOthers()
    {
        QFETCH(QString, profile);
        QFETCH(int, action);
        QFETCH(QString, vehicle);
        QFETCH(QString, signalled);
        ProfilesFixture f;
        ProfilesFixture::addBuiltIn("A"_q);
        f.addUser({"B"_q, "C"_q});
        writeFile(f.iniPath(), "[B]\nVehicle.0.Name=V\nVehicleCount=1\n");
        f.start();
        f.engine.documents.clear();
        QFile::remove(f.iniPath());
        ProfilesFixture::setRecentName("(untouched)"_q);
        f.provider.name = vehicle;
        const int b = f.id("B"_q);
        const int c = f.id("C"_q);
        signalled.replace("modified ids"_q,
                          "modified %1,modified %2"_q.arg(std::min(b, c)).arg(std::max(b, c)));
        signalled.replace("%1"_q, QString::number(b)).replace("%2"_q, QString::number(c));

        const auto result = f.act(profile, action, "New"_q);
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        QVERIFY(result.message.isEmpty());
        QTEST(f.store->revision() - 1, "revisions");
        QTEST(QFileInfo::exists(f.iniPath()), "saved");
        QTEST(ProfilesFixture::recentName(), "recent");
        QStringList documents = f.engine.documents;
        documents.replaceInStrings(f.userPath(), QString());
        QTEST(documents, "documents");
        QCOMPARE(f.signalLog.join(u','), signalled);
    }

    void aRenameOfTheActiveProfileGoesToEngineSettingsAndFile()
    {
        ProfilesFixture f;
        f.addUser({"A"_q, "B"_q});
        f.start();
        f.store->activateRecentProfileForVehicle("V"_q);
        const int id = f.id("A"_q);
        f.engine.documents.clear();
        QVERIFY(f.act("A"_q, Action::Rename, "Z"_q).ok);
        const auto renamed = f.store->profile(id);
        QCOMPARE(renamed->name, "Z"_q);
        QCOMPARE(renamed->directory, f.userPath("Z"_q));
        QCOMPARE(renamed->previewPath, f.userPath("Z/preview.png"_q));
        QCOMPARE(f.engine.documents, QStringList{f.userPath("Z/Dash.qml"_q)});
        QCOMPARE(ProfilesFixture::recentName(), "Z"_q);
        QCOMPARE(f.storedAssignments(), (Assignments{{"Z"_q, {"V"_q}}}));
        QCOMPARE(f.names(), (QStringList{"Z"_q, "B"_q}));
        f.start();
        QCOMPARE(f.names(), (QStringList{"B"_q, "Z"_q}));
        QCOMPARE(f.activeName(), "Z"_q);
    }

    void theRemovalOfTheActiveProfileMakesTheFirstOneActive()
    {
        ProfilesFixture f;
        f.addUser({"A"_q, "B"_q});
        f.start();
        const int a = f.id("A"_q);
        const int b = f.id("B"_q);
        f.engine.documents.clear();
        QVERIFY(f.act("A"_q, Action::Remove).ok);
        QCOMPARE(f.activeName(), "B"_q);
        QCOMPARE(ProfilesFixture::recentName(), "B"_q);
        QVERIFY(!QFileInfo::exists(f.userPath("A"_q)));
        QVERIFY(f.act("B"_q, Action::Remove).ok);
        QCOMPARE(f.store->activeProfileId(), -1);
        QVERIFY(f.store->profileHeaders().empty());
        QCOMPARE(ProfilesFixture::recentName(), "(none)"_q);
        QCOMPARE(f.engine.documents, (QStringList{f.userPath("B/Dash.qml"_q), QString()}));
        QCOMPARE(f.signalLog.join(u','), "list,modified %1,activated %2,"
                                         "list,modified %2,activated -1"_q.arg(a)
                                             .arg(b));
        QVERIFY(f.leftovers().isEmpty());
    }

    void aCopyIsTheUsersOwnAndStandsAtTheEnd()
    {
        ProfilesFixture f;
        ProfilesFixture::addBuiltIn("Classic"_q);
        writeFile(ProfilesFixture::builtInRoot() + "/Classic/.hidden/file"_q, "hidden");
        QFile::setPermissions(ProfilesFixture::builtInRoot() + "/Classic/Dash.qml"_q,
                              QFile::ReadOwner);
        f.start();
        QVERIFY(f.act("Classic"_q, Action::Copy, "Classic"_q).ok);
        QCOMPARE(f.names(), (QStringList{"Classic"_q, "Classic"_q}));
        const auto copy = f.store->profile(1);
        QVERIFY(!copy->builtIn);
        QCOMPARE(copy->directory, f.userPath("Classic"_q));
        QCOMPARE(readFile(f.userPath("Classic/.hidden/file"_q)), QByteArray("hidden"));
        QCOMPARE(f.store->activeProfileId(), 0);
        QVERIFY(f.leftovers().isEmpty());
        QVERIFY(f.store->performAction(1, Action::Rename, "Mine"_q).ok);
        QVERIFY(f.store->performAction(1, Action::Remove, {}).ok);
        QVERIFY(!QFileInfo::exists(f.userPath("Mine"_q)));
    }

    void aFailureHasItsMessageAndChangesNothing_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("action");
        QTest::addColumn<QVariant>("parameter");
        QTest::addColumn<QString>("message");
        const QVariant none;
        const QString empty = "Name cannot be empty"_q;
        const QString wrong = "Name is not correct"_q;
        const QString missing = "Dashboard does not exist"_q;
        const QString unsupported = "Unsupported action: "_q;
        const auto row = [](const char *name, int id, int action, const QVariant &parameter,
                            const QString &message) {
            QTest::newRow(name) << id << action << parameter << message;
        };
        row("code 4", 0, 4, none, unsupported + u'4');
        row("code -1", 0, -1, none, unsupported + "-1"_q);
        row("activate", 99, Action::Activate, none, "Profile not found"_q);
        row("rename", 99, Action::Rename, "New"_q, missing);
        row("remove", -1, Action::Remove, none, missing);
        row("copy", 99, Action::Copy, "New"_q, missing);
        row("copy to nothing", 99, Action::Copy, none, empty);
        row("copy to a list", 0, Action::Copy, QVariantList{1, 2}, empty);
        row("rename to nothing", 99, Action::Rename, ""_q, empty);
        row("taken", 99, Action::Copy, "User"_q, "Dashboard with given name already exists"_q);
        row("built-in", 0, Action::Rename, "New"_q, "Built-in profile cannot be renamed"_q);
        row("built in", 0, Action::Remove, none, "Built-in profile cannot be removed"_q);
        row("same name", 1, Action::Rename, "User"_q, "Failed to rename '%1' to 'User'"_q);
        row("present", 1, Action::Rename, "Other"_q, "Failed to rename '%1' to 'Other'"_q);
        for (const char *const name : {"a/b", "a\\b", "a..b", "..", "a:b", " a", "a ", "a.", "."}) {
            row(name, 0, Action::Copy, QString::fromUtf8(name), wrong);
            row(name, 99, Action::Rename, QString::fromUtf8(name), wrong);
        }
        QStringList unfit{QString(300, u'x'), "a"_q + QChar(0) + u'b'};
#ifdef Q_OS_WIN
        unfit += {"con"_q, "Nul.txt"_q, "com1"_q, "what?"_q, "tab\tbed"_q, "a\"b"_q, "<a>"_q};
#else
        unfit += {QString(100, QChar(0x20AC)), QString(QChar(0xD800)), ".hidden"_q};
#endif
        for (const QString &name : qAsConst(unfit)) {
            row("unfit to copy", 99, Action::Copy, name, "Failed to create '%2%3'"_q);
            row("unfit to rename", 1, Action::Rename, name, "Failed to rename '%1' to '%3'"_q);
        }
    }

    void aFailureHasItsMessageAndChangesNothing()
    {
        QFETCH(int, id);
        QFETCH(int, action);
        QFETCH(QVariant, parameter);
        QFETCH(QString, message);
        ProfilesFixture f;
        ProfilesFixture::addBuiltIn("Built"_q);
        f.addUser({"User"_q});
        QDir().mkpath(f.userPath("Other"_q));
        f.start();
        message.replace("%1"_q, f.shownPath("User"_q)).replace("%2"_q, f.shownPath());
        message.replace("%3"_q, parameter.toString());
        const auto result = f.store->performAction(id, action, parameter);
        QVERIFY(!result.ok);
        QCOMPARE(result.message, message);
        QCOMPARE(f.store->revision(), 1);
        QVERIFY(f.signalLog.isEmpty());
        QCOMPARE(QDir(f.userPath()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 (QStringList{"Other"_q, "User"_q}));
        QVERIFY(f.leftovers().isEmpty());
    }

    void namesThatOnlyLookOddAreTaken()
    {
        NEEDS_POSIX();
        ProfilesFixture f;
        f.addUser({"A"_q});
        f.start();
        const QStringList odd{"what?*"_q, "con"_q, "ünï😀"_q, "a.b"_q, "%1 %2"_q};
        for (const QString &name : odd) {
            QVERIFY(f.act("A"_q, Action::Copy, name).ok);
            QVERIFY(QFileInfo::exists(f.userPath(name + "/sub/face.svg"_q)));
        }
        QVERIFY(f.act("A"_q, Action::Activate).ok);
        f.counter.count = 1;
        QVERIFY(f.act("what?*"_q, Action::Rename, QVariant(42)).ok);
        QVERIFY(f.names().contains("42"_q));
    }

    void aCopyOnAFullDiskLeavesNothingBehind()
    {
        NEEDS_POSIX();
        ProfilesFixture f;
        f.addUser({"A"_q});
        f.start();
        {
            const FullDisk disk(5000);
            QCOMPARE(f.act("A"_q, Action::Copy, "New"_q).message,
                     "Failed to copy '%1' to '%2'"_q.arg(f.shownPath("A"_q), f.shownPath("New"_q)));
        }
        QVERIFY(f.leftovers().isEmpty());
        QVERIFY(f.act("A"_q, Action::Copy, "New"_q).ok);
    }

    void aCopyThatFailsLeavesNothingBehind()
    {
        ProfilesFixture f;
        f.addUser({"A"_q, "Lost"_q, "Gone"_q});
        f.start();
        const auto copy = [&](const QString &name) { return f.act(name, Action::Copy, "New"_q); };
        QFile::remove(f.userPath("Lost/preview.png"_q));
        QCOMPARE(copy("Lost"_q).message, "'New' is not a valid dashboard"_q);
        QDir(f.userPath("Gone"_q)).removeRecursively();
        QCOMPARE(copy("Gone"_q).message,
                 "Failed to copy '%1' to '%2'"_q.arg(f.shownPath("Gone"_q), f.shownPath("New"_q)));
        QVERIFY(!QFileInfo::exists(f.userPath("New"_q)));
        QVERIFY(f.leftovers().isEmpty());
        QCOMPARE(f.store->revision(), 1);
        QVERIFY(copy("A"_q).ok);
    }

    void aRootThatCannotBeWrittenIsReported()
    {
        NEEDS_POSIX();
        const Unprivileged user;
        ProfilesFixture f;
        f.addUser({"A"_q});
        f.start();
        QFile::setPermissions(f.userPath(), QFile::ReadOwner | QFile::ExeOwner);
        QCOMPARE(f.act("A"_q, Action::Copy, "New"_q).message,
                 "Failed to create '%1'"_q.arg(f.userPath("New"_q)));
        QCOMPARE(f.act("A"_q, Action::Rename, "New"_q).message,
                 "Failed to rename '%1' to 'New'"_q.arg(f.userPath("A"_q)));
        QCOMPARE(f.act("A"_q, Action::Remove).message,
                 "Failed to remove '%1'"_q.arg(f.userPath("A"_q)));
        QCOMPARE(f.names(), QStringList{"A"_q});
        QVERIFY(QFileInfo::exists(f.userPath("A/sub/face.svg"_q)));
        const auto all = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        QFile::setPermissions(f.userPath(), all);
        QFile::setPermissions(f.userPath("A"_q), QFile::ReadOwner | QFile::ExeOwner);
        QVERIFY(!f.act("A"_q, Action::Remove).ok);
        QVERIFY(QFileInfo::exists(f.userPath("A/sub/face.svg"_q)));
        QFile::setPermissions(f.userPath("A"_q), all);

        f.addUser({"B"_q});
        f.start();
        QFile::setPermissions(f.userPath("B/sub"_q), QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(!f.act("B"_q, Action::Copy, "New"_q).ok);
        QVERIFY(!QFileInfo::exists(f.userPath("New"_q)));
        QFile::setPermissions(f.userPath("B/sub"_q), QFile::ReadOwner | QFile::ExeOwner);
        QVERIFY(!f.act("B"_q, Action::Remove).ok);
        f.start();
        QVERIFY(f.names().contains("B"_q));
        QVERIFY(QFileInfo::exists(f.userPath("B/sub/face.svg"_q)));
        QVERIFY(f.leftovers().isEmpty());
        QFile::setPermissions(f.userPath("B/sub"_q), all);
    }

    void aLinkIsRemovedAndNotWhatItPointsAt()
    {
        NEEDS_POSIX();
        ProfilesFixture f;
        ProfilesFixture::addDashboard(f.home.path("/elsewhere"));
        QDir().mkpath(f.userPath());
        QFile::link(f.home.path("/elsewhere"), f.userPath("Linked"_q));
        QFile::link(f.home.path("/elsewhere"), f.userPath("Second"_q));
        f.start();
        QVERIFY(f.act("Linked"_q, Action::Copy, "Copied"_q).ok);
        QVERIFY(!QFileInfo(f.userPath("Copied"_q)).isSymLink());
        QVERIFY(f.act("Second"_q, Action::Rename, "Renamed"_q).ok);
        QVERIFY(f.act("Linked"_q, Action::Remove).ok);
        QVERIFY(!QFileInfo(f.userPath("Linked"_q)).isSymLink());
        QVERIFY(QFileInfo::exists(f.home.path("/elsewhere/sub/face.svg")));
        QDir(f.home.path("/elsewhere")).removeRecursively();
        QVERIFY(f.act("Renamed"_q, Action::Remove).ok);
        QVERIFY(!QFileInfo(f.userPath("Renamed"_q)).isSymLink());
    }

    void aLinkAmongTheLeavingsOfACopyIsNotFollowed()
    {
        NEEDS_POSIX();
        ProfilesFixture f;
        f.addUser({"A"_q});
        ProfilesFixture::addDashboard(f.home.path("/elsewhere"));
        QDir().mkpath(f.userPath(".staging..left"_q));
        QFile::link(f.home.path("/elsewhere"), f.userPath(".staging..left/X"_q));
        f.start();
        QVERIFY(f.act("A"_q, Action::Copy, "B"_q).ok);
        QVERIFY(QFileInfo::exists(f.home.path("/elsewhere/sub/face.svg")));
        QVERIFY(f.leftovers().isEmpty());
    }

    void whatAKilledCopyReservedIsFreeForARename()
    {
        ProfilesFixture f;
        f.addUser({"A"_q});
        QDir().mkpath(f.userPath("Zed"_q));
        QDir().mkpath(f.userPath(".staging..left/Zed"_q));
        f.start();
        QVERIFY(f.act("A"_q, Action::Rename, "Zed"_q).ok);
        QCOMPARE(f.names(), QStringList{"Zed"_q});
        QVERIFY(f.leftovers().isEmpty());
    }

    void aDirectoryThatIsAlreadyGoneIsStillActivatedAndRemoved()
    {
        ProfilesFixture f;
        f.addUser({"A"_q, "B"_q});
        f.start();
        QDir(f.userPath("B"_q)).removeRecursively();
        QVERIFY(f.act("B"_q, Action::Activate).ok);
        QCOMPARE(f.engine.documents.last(), f.userPath("B/Dash.qml"_q));
        QVERIFY(f.act("B"_q, Action::Remove).ok);
        QCOMPARE(f.names(), QStringList{"A"_q});
    }

    void ofManyCopiesToOneNameOneWinsWhole()
    {
        ProfilesFixture f(fastFolder());
        f.addUser({"A"_q});
        f.start();
        for (int round = 0; round < 20; ++round) {
            const QString name = "Copy%1"_q.arg(round);
            std::atomic<int> winners = 0;
            std::atomic<int> losers = 0;
            std::vector<std::thread> threads;
            threads.reserve(6);
            for (int i = 0; i < 6; ++i) {
                threads.emplace_back([&] {
                    const auto result = f.act("A"_q, Action::Copy, name);
                    winners += result.ok ? 1 : 0;
                    losers += result.message == "Dashboard with given name already exists"_q;
                });
            }
            for (std::thread &thread : threads)
                thread.join();
            QCOMPARE(winners.load(), 1);
            QCOMPARE(losers.load(), 5);
            QCOMPARE(f.names().count(name), 1);
            QCOMPARE(readFile(f.userPath(name + "/sub/face.svg"_q)).size(), 20'000);
        }
        QVERIFY(f.leftovers().isEmpty());
    }

    void aSlotMayCallBackIntoTheStore()
    {
        ProfilesFixture f;
        f.addUser({"A"_q, "B"_q});
        f.start();
        int calls = 0;
        connect(f.store.get(), &DashboardAbstractProfilesManager::profileModified, this,
                [&](DashboardProfileHeader::Id id) {
                    ++calls;
                    // Another thread finds the lock free.
                    std::thread([&] { QVERIFY(!f.store->profile(id)); }).join();
                    f.act("A"_q, Action::Copy, "C"_q);
                });
        QVERIFY(f.act("B"_q, Action::Remove).ok);
        QCOMPARE(calls, 1);
        QCOMPARE(f.names(), (QStringList{"A"_q, "C"_q}));
    }
};

QTEST_GUILESS_MAIN(ProfileActionsTest)
#include "ProfileActionsTest.moc"
