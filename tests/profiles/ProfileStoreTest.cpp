#include "ProfilesFixture.h"

#include <QtTest/QtTest>

#include <set>

class ProfileStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyHomeGivesAnEmptyStoreAndIsLeftAlone()
    {
        ProfilesFixture f;
        f.start();
        QCOMPARE(f.store->revision(), 1);
        QCOMPARE(f.store->activeProfileId(), -1);
        QVERIFY(f.store->profileHeaders().empty());
        QVERIFY(!f.store->profileHeader(0));
        QVERIFY(!f.store->profile(-1));
        QVERIFY(f.engine.documents.isEmpty());
        QVERIFY(!QFileInfo::exists(f.home.path("/Documents/Orvalentix")));
        QVERIFY(!QFileInfo::exists(ProfilesFixture::builtInRoot()));
        f.store->activateRecentProfileForVehicle("Car"_q);
        QCOMPARE(f.store->revision(), 1);
    }

    void builtInProfilesGetTheFirstIdsAndTheListIsSortedByName()
    {
        ProfilesFixture f;
        f.addUser({"alpha"_q, "Zulu"_q, "Classic"_q});
        ProfilesFixture::addBuiltIn("Mid"_q);
        f.start();
        QCOMPARE(f.names(), (QStringList{"Classic"_q, "Mid"_q, "Zulu"_q, "alpha"_q}));
        const auto mid = f.store->profile(0);
        QCOMPARE(mid->name, "Mid"_q);
        QVERIFY(mid->builtIn);
        QCOMPARE(mid->directory, ProfilesFixture::builtInRoot() + "/Mid"_q);
        QCOMPARE(mid->qmlPath, mid->directory + "/Dash.qml"_q);
        QCOMPARE(mid->previewPath, mid->directory + "/preview.png"_q);
        std::set<int> ids;
        for (const auto &header : f.store->profileHeaders())
            ids.insert(header.id);
        QCOMPARE(ids, (std::set<int>{0, 1, 2, 3}));
    }

    void aDirectoryWithoutBothFilesIsNotListedAndTakesNoId()
    {
        ProfilesFixture f;
        f.addUser({"Whole"_q, ".hidden"_q});
        writeFile(f.userPath("NoPreview/Dash.qml"_q), "");
        writeFile(f.userPath("NoDocument/preview.png"_q), "");
        writeFile(f.userPath("file"_q), "");
        f.start();
        QCOMPARE(f.names(), QStringList{"Whole"_q});
        QCOMPARE(f.id("Whole"_q), 0);
    }

    void theRecentProfileBecomesActiveElseTheFirst_data()
    {
        QTest::addColumn<QString>("recent");
        QTest::addColumn<QString>("active");
        QTest::newRow("none") << QString() << "Classic"_q;
        QTest::newRow("unknown") << "Gone"_q
                                 << "Classic"_q;
        QTest::newRow("exact") << "Second"_q
                               << "Second"_q;
        QTest::newRow("other case") << "SECOND"_q
                                    << "Second"_q;
        QTest::newRow("exact before other case") << "classic"_q
                                                 << "classic"_q;
        QTest::newRow("capitals come first") << "CLASSIC"_q
                                             << "Classic"_q;
    }

    void theRecentProfileBecomesActiveElseTheFirst()
    {
        QFETCH(QString, recent);
        QFETCH(QString, active);
        ProfilesFixture f;
        ProfilesFixture::addBuiltIn("Classic"_q);
        f.addUser({"classic"_q, "Second"_q});
        ProfilesFixture::setRecentName(recent);
        f.start();
        QCOMPARE(f.activeName(), active);
        QCOMPARE(f.engine.documents,
                 QStringList{f.store->profile(f.store->activeProfileId())->qmlPath});
        QCOMPARE(ProfilesFixture::recentName(), recent);
        QVERIFY(f.store->profileNameExists("cLASSIC"_q));
        QVERIFY(!f.store->profileNameExists("Classi"_q));
    }

    void assignmentsComeBackAfterARestartWhateverTheNames()
    {
        QStringList names{"Plain"_q, "General"_q, "per%cent"_q, "br]ack[et"_q,
                          "😀 ü"_q,   "semi;=x"_q, "Groß"_q};
#ifdef Q_OS_UNIX
        names += {"line\nfeed"_q, R"(back\s)"_q, R"(semi;colon="x")"_q};
#endif
        ProfilesFixture f;
        f.addUser(names);
        f.start();
        for (const QString &name : qAsConst(names)) {
            f.provider.name = name + "/ , \"@%1\" é😀\n"_q;
            f.counter.count += 10'000;
            QVERIFY(f.act(name, DashboardProfileAction::Activate).ok);
            f.store->activateRecentProfileForVehicle("@Variant(%1)"_q.arg(name));
            f.store->activateRecentProfileForVehicle(" @"_q + name);
        }
        const Assignments before = f.assignments();
        QCOMPARE(before.size(), names.size());
        QCOMPARE(f.storedAssignments(), before);
        f.start();
        QCOMPARE(f.assignments(), before);
    }

    void aFileIsReadAsFarAsItCanBe_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("vehicles");
        const QByteArray one = "[Alpha]\nVehicle.0.Name=A\nVehicle.1.Name=B\nVehicleCount=";
        QTest::newRow("empty") << QByteArray() << QStringList();
        QTest::newRow("whole") << one + "2\n" << QStringList{"A"_q, "B"_q};
        QTest::newRow("other case") << "[aLPHA]" + one.mid(7) + "2\n" << QStringList{"A"_q, "B"_q};
        QTest::newRow("count below") << one + "1\n" << QStringList{"A"_q};
        QTest::newRow("count beyond") << one + "3\n" << QStringList{""_q, "A"_q, "B"_q};
        QTest::newRow("two billion") << one + "2000000000\n" << QStringList{""_q, "A"_q, "B"_q};
        QTest::newRow("too big") << one + "99999999999\n" << QStringList{""_q, "A"_q, "B"_q};
        QTest::newRow("negative") << one + "-1\n" << QStringList();
        QTest::newRow("no number") << one + "many\n" << QStringList();
        // Serialised objects ask for all memory, exhaust the stack or need a display, however they
        // are written.
        const QByteArray variant = R"(Variant(\0\0\0\t\x7f\xff\xff\xff))";
        const QByteArray pixmap = R"(@Variant(\0\0\0\x41\0\0\0\x1))";
        const QByteArray lists = "@Variant(" + QByteArray(R"(\0\0\0\t\0\0\0\x1)").repeated(50'000);
        QTest::newRow("serialised count") << one + "@" + variant << QStringList();
        QTest::newRow("serialised vehicle")
            << one + "2\nVehicle.1.Name=@" + variant << QStringList{""_q, "A"_q};
        int spelling = 0;
        for (const QByteArray &value :
             {pixmap, lists + ")", " \"@" + variant, "a, @" + variant, "\\\n@" + variant,
              "\\\r\n@" + variant, "\\x40" + variant, "\\x10040" + variant, "\\100" + variant,
              "\\200100" + variant, "@\\x56" + variant.mid(1)}) {
            QTest::addRow("serialised, spelt %d", ++spelling) << one + "2\n[x]\ny=" + value + '\n'
                                                              << QStringList{"A"_q, "B"_q};
        }
        QTest::newRow("serialised only in looks")
            << QByteArray(
                   "[Alpha]\nVehicle.0.Name=@@Variant(1)\nVehicle.1.Name=\"a, @Variant(2)\"\n"
                   "Vehicle.2.Name=mail@Variant(3)\nVehicleCount=3\n")
            << QStringList{"@Variant(1)"_q, "a, @Variant(2)"_q, "mail@Variant(3)"_q};
        QTest::newRow("count missing")
            << QByteArray("[Alpha]\nVehicle.0.Name=A\n") << QStringList();
        QTest::newRow("sparse") << QByteArray("[Alpha]\nVehicle.1999999999.Name=A\n"
                                              "Vehicle.01.Name=B\nVehicleCount=2000000000\n")
                                << QStringList{""_q, "A"_q};
        QTest::newRow("unknown groups") << "[A/B]\nx=1\n[C\\D]\nx=1\n" + one + "1\n[%5d%0A]\nx=2\n"
                                        << QStringList{"A"_q};
        QTest::newRow("binary") << QByteArray("\0\xff[\x80]=\n\0\n", 8).repeated(5000)
                                << QStringList();
    }

    void aFileIsReadAsFarAsItCanBe()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, vehicles);
        ProfilesFixture f;
        f.addUser({"Alpha"_q, "Beta"_q});
        writeFile(f.iniPath(), content);
        f.start();
        QStringList read = f.store->profile(f.id("Alpha"_q))->vehicles.values();
        read.sort();
        QCOMPARE(read, vehicles);
        f.store->activateRecentProfileForVehicle("New"_q);
        QCOMPARE(f.storedAssignments(), f.assignments());
    }

    void aFileCutOffAnywhereIsNoFaultAndTheNextSaveIsWhole()
    {
        ProfilesFixture f(fastFolder());
        f.addUser({"Alpha"_q, "Beta %é"_q});
        f.start();
        for (const char *const vehicle : {"one", "twö", "@three, \"3\"", "fo\x01ur\n"}) {
            f.act("Alpha"_q, DashboardProfileAction::Activate);
            f.store->activateRecentProfileForVehicle(QString::fromUtf8(vehicle));
            f.counter.count += 9000;
            f.provider.name = QString::fromUtf8(vehicle) + "b"_q;
            f.act("Beta %é"_q, DashboardProfileAction::Activate);
        }
        const QByteArray whole = readFile(f.iniPath());
        QVERIFY(whole.size() > 200);
        for (int size = 0; size < whole.size(); ++size) {
            writeFile(f.iniPath(), whole.left(size));
            f.start();
            f.store->activateRecentProfileForVehicle("New"_q);
            QVERIFY(f.assignments().value(f.activeName()).contains("New"_q));
            QCOMPARE(f.storedAssignments(), f.assignments());
        }
    }

    void aLargeFileIsReadInTimeThatFollowsItsSize()
    {
        ProfilesFixture f;
        f.addUser({"Alpha"_q});
        QByteArray content = "[Alpha]\nVehicleCount=100000\n";
        for (int i = 0; i < 100'000; ++i) {
            content += "Vehicle." + QByteArray::number(i) + ".Name=" + QByteArray(180, 'v') +
                       QByteArray::number(i) + '\n';
        }
        QVERIFY(content.size() > 20'000'000);
        writeFile(f.iniPath(), content);
        f.start();
        QCOMPARE(f.store->profile(0)->vehicles.size(), 100'000);
    }

    void whatCannotBeReadGivesNoProfilesAndNoVehicles()
    {
        NEEDS_POSIX();
        const Unprivileged user;
        ProfilesFixture f;
        f.addUser({"Alpha"_q});
        QDir().mkpath(f.iniPath());
        f.start();
        f.store->activateRecentProfileForVehicle("Car"_q);
        QCOMPARE(f.assignments().value("Alpha"_q), QSet<QString>{"Car"_q});
        QVERIFY(QFileInfo(f.iniPath()).isDir());

        QDir().rmdir(f.iniPath());
        writeFile(f.iniPath(), "[Alpha]\nVehicle.0.Name=A\nVehicleCount=1\n");
        QFile::setPermissions(f.iniPath(), {});
        QVERIFY(f.start().profile(0)->vehicles.isEmpty());

        QFile::setPermissions(f.userPath(), {});
        QVERIFY(f.start().profileHeaders().empty());
        QFile::setPermissions(f.userPath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(QDir(f.userPath()).removeRecursively());
        writeFile(f.home.data("/Dashboards"), "a file in the root's place");
        QVERIFY(f.start().profileHeaders().empty());
    }

    void thousandsOfProfilesAreListed()
    {
#ifdef Q_OS_WIN
        // Wine looks a name up by reading all of its directory.
        constexpr int Count = 1000;
#else
        constexpr int Count = 10'000;
#endif
        ProfilesFixture f(fastFolder());
        for (int i = 0; i < Count; ++i) {
            const QString directory = f.userPath("P%1"_q.arg(i));
            writeFile(directory + "/Dash.qml"_q, "");
            writeFile(directory + "/preview.png"_q, "");
        }
        f.start();
        QCOMPARE(f.store->profileHeaders().size(), std::size_t(Count));
        QVERIFY(f.store->profileNameExists("p%1"_q.arg(Count - 1)));
    }
};

QTEST_GUILESS_MAIN(ProfileStoreTest)
#include "ProfileStoreTest.moc"
