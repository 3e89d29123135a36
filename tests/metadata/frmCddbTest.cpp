#include "metadata/frmCddb.h"

#include "base/Deployment.h"
#include "controls/DropDownList.h"
#include "metadata/MetadataFixture.h"
#include "settings/SettingsKeys.h"
#include "testkit/FakeCDDB.h"
#include "testkit/FakeCDRipperX.h"

#include <QPlainTextEdit>
#include <QTabBar>
#include <thread>

namespace {

/// Sees whether a window is painted.
class PaintWatch : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted = true;
        return false;
    }

    std::atomic<bool> painted = false;
};

class frmCddbTest : public MetadataFixture<frmCddb>
{
protected:
    frmCddbTest()
    {
        engine.discId = QStringLiteral("1801c203");
        host.names = QStringList{QStringLiteral("Track01.mp3"), QStringLiteral("Track02.mp3"),
                                 QStringLiteral("Track03.mp3")};
        disc.DiscSeconds = 452;
        disc.TrackOffsets = QStringLiteral("150|15150|30150");
    }

    void open()
    {
        auto owned = std::make_unique<FakeCDDB>(system.log);
        client = owned.get();
        client->entry = {.album = QStringLiteral("Album"),
                         .artist = QStringLiteral("Artist"),
                         .category = QStringLiteral("rock"),
                         .genre = QStringLiteral(" folk-rock"),
                         .year = QStringLiteral("1999"),
                         .comments = QStringLiteral("Remark"),
                         .titles = QStringLiteral("One|Two|Three|"),
                         .discLength = 452,
                         .trackCount = 3};
        show(makeForm<frmCddb>(system.desktop(), frmCddb::Parts{host, disc, settings, AInfo, engine},
                               std::move(owned)));
    }

    /// What a submission needs.
    void fillIn()
    {
        type("txtAlbum", QStringLiteral("a"));
        type("txtArtist", QStringLiteral("b"));
        type("txtYear", QStringLiteral("1"));
        type("txtEmail", QStringLiteral("a@b.com"));
        for (int row = 1; row <= 3; ++row)
            at<ReportListView>("ListView1")->setText(row, 1, QStringLiteral("title"));
    }

    /// All of the record that lookups and editing write.
    QString record() const
    {
        return QStringList{disc.Album, disc.Artist,  QString::number(disc.GenreIndex),
                           disc.Year,  disc.Comment, disc.TrackTitles}
            .join(u'~');
    }

    /// What stands behind the connection's properties in the log.
    QStringList exchange() { return system.log.take().mid(8); }

    FakeCDRipperX engine{system.log};
    FakeCDDB *client = nullptr; ///< of the window that is open
};

const QString LookedUp = QStringLiteral("Album~Artist~81~1999~Remark~One|Two|Three|");

TEST_F(frmCddbTest, opensOnTheServerPageWithItsDefaultsAndTheDisc)
{
    disc.Album = QStringLiteral("A");
    disc.Artist = QStringLiteral("B");
    disc.Year = QStringLiteral("2001");
    disc.Comment = QStringLiteral("C");
    disc.GenreIndex = 17;
    disc.TrackTitles = QStringLiteral("Uno|Due");
    open();
    EXPECT_EQ(text("txtAlbum") + text("txtArtist") + text("txtYear") + text("txtComm"),
              QStringLiteral("AB2001C"));
    EXPECT_EQ(at<DropDownList>("cboGenre")->listIndex(), 17);
    EXPECT_EQ(titles(),
              (QStringList{QStringLiteral("1 Uno"), QStringLiteral("2 Due"), QStringLiteral("3 Track03")}));

    EXPECT_EQ(text("txtID"), engine.discId);
    EXPECT_EQ(text("txtTime"), QStringLiteral("30"));
    EXPECT_EQ(at<DropDownList>("cboHost")->count(), 13);
    EXPECT_EQ(at<DropDownList>("cboHost")->currentText(), Deployment::FreeDbHosts.constFirst());
    EXPECT_EQ(at<DropDownList>("cboCate")->count(), 11);
    EXPECT_EQ(at<DropDownList>("cboCate")->currentText(), QStringLiteral("classical"));

    const char *pages[] = {"pic_0", "pic_1", "pic_2"};
    for (int tab : {0, 2, 1}) {
        at<QTabBar>("TabStrip1")->setCurrentIndex(tab);
        for (int page = 0; page < 3; ++page)
            EXPECT_EQ(at<QWidget>(pages[page])->isVisible(), page == tab);
    }
}

TEST_F(frmCddbTest, aLookupFillsTheRecordShowsItAndCloses)
{
    open();
    client->onCall = [&] {
        ASSERT_TRUE(QGuiApplication::overrideCursor());
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    };
    system.pump.actions[1] = [&] { EXPECT_EQ(record(), LookedUp); };
    const QString report =
        QStringLiteral("Album: Album\nArtist: Artist\nCategory: rock\nGenre:  folk-rock\nYear: 1999\n"
                       "Disk Length: 452\nComments: Remark\nTracks: 3\nTitles: \nTitle 01: One\n"
                       "Title 02: Two\nTitle 03: Three");
    system.dialogs.expectWholeBox({.text = QStringLiteral("Downloaded Successfully!")}, BoxAnswer::Ok, [&] {
        EXPECT_FALSE(QGuiApplication::overrideCursor());
        EXPECT_EQ(at<QPlainTextEdit>("txtTitles")->toPlainText(), report);
    });
    click("cmdGet");
    EXPECT_EQ(record(), LookedUp);
    EXPECT_TRUE(window->isUnloaded());
    EXPECT_EQ(system.log.take(),
              (QStringList{QStringLiteral("CDDB.UseProxy = False"), QStringLiteral("CDDB.ProxyServer = "),
                           QStringLiteral("CDDB.ProxyPort = "), QStringLiteral("CDDB.NeedLogin = False"),
                           QStringLiteral("CDDB.ProxyUser = "), QStringLiteral("CDDB.ProxyPassword = "),
                           QStringLiteral("CDDB.TimeOut = 30"),
                           QStringLiteral("CDDB.HostName = ") + Deployment::FreeDbHosts.constFirst(),
                           QStringLiteral("CDDB.QueryDisc(1801c203)"),
                           QStringLiteral("UpdateFileNamesWithTitles")}));
}

TEST_F(frmCddbTest, theWindowIsPaintedBeforeTheClientBlocksIt)
{
    open();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    PaintWatch watch;
    window->installEventFilter(&watch);
    client->onCall = [&] { EXPECT_TRUE(watch.painted); };
    client->status = 9;
    for (const char *button : {"cmdGet", "cmdSubmit"}) {
        watch.painted = false;
        fillIn();
        click(button);
    }
}

TEST_F(frmCddbTest, titlesWithoutAClosingSeparatorLoseTheLastInTheReportOnly)
{
    open();
    client->entry.titles = QStringLiteral("One|Two");
    system.dialogs.expectBox(QStringLiteral("Downloaded Successfully!"), BoxAnswer::Ok, ProgramTitle, [&] {
        const QString shown = at<QPlainTextEdit>("txtTitles")->toPlainText();
        EXPECT_TRUE(shown.endsWith(QStringLiteral("Titles: \nTitle 01: One"))) << shown.toStdString();
    });
    click("cmdDownload");
    EXPECT_EQ(disc.TrackTitles, QStringLiteral("One|Two"));
}

TEST_F(frmCddbTest, theServerPageIsHandedOverAsItStands)
{
    open();
    at<TickBox>("chkProxy")->setTicked(true);
    at<TickBox>("chkLogin")->setTicked(true);
    type("txtServer", QStringLiteral(" proxy "));
    type("txtPort", QString());
    type("txtUser", QStringLiteral("jane"));
    type("txtPass", QStringLiteral(" pw "));
    type("txtTime", QString());
    type("txtID", QStringLiteral(" id "));
    at<DropDownList>("cboHost")->setListIndex(12);
    client->status = 77; // no code that is known: no word
    click("cmdGet");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(system.log.take(),
              (QStringList{QStringLiteral("CDDB.UseProxy = True"),
                           QStringLiteral("CDDB.ProxyServer =  proxy "), QStringLiteral("CDDB.ProxyPort = "),
                           QStringLiteral("CDDB.NeedLogin = True"), QStringLiteral("CDDB.ProxyUser = jane"),
                           QStringLiteral("CDDB.ProxyPassword =  pw "), QStringLiteral("CDDB.TimeOut = "),
                           QStringLiteral("CDDB.HostName = ") + Deployment::FreeDbHosts[12],
                           QStringLiteral("CDDB.QueryDisc( id )")}));
}

TEST_F(frmCddbTest, aFailedLookupSaysSoAndLeavesEverything)
{
    open();
    const QString before = record();
    const std::pair<int, MessageBox> rows[] = {
        {CDDB::NotFound, {.text = QStringLiteral("No CD Information")}},
        {CDDB::NoConnection,
         {.text = QStringLiteral("Can not connect to the server"), .icon = BoxIcon::Critical}},
        {CDDB::OtherFailure, {.text = QStringLiteral("Unknown Error!"), .icon = BoxIcon::Critical}},
    };
    for (const auto &[status, box] : rows) {
        client->status = static_cast<qint16>(status);
        system.dialogs.expectWholeBox(box);
        click("cmdGet");
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(record(), before);
    }
}

TEST_F(frmCddbTest, aLookupPassesOverEveryFailingStatement)
{
    open();
    client->failing = QStringLiteral("ProxyServer");
    client->failingRead = QStringLiteral("Year");
    client->onCall = [] { throw RunTimeFailure(RunTimeFailure::InvalidCall); };
    system.dialogs.expectBox(QStringLiteral("Downloaded Successfully!"));
    click("cmdGet");
    EXPECT_FALSE(QGuiApplication::overrideCursor());
    EXPECT_EQ(record(), QStringLiteral("Album~Artist~81~~Remark~One|Two|Three|"));
    EXPECT_EQ(system.log.take().size(), 10); // the rest was written all the same
    EXPECT_TRUE(window->isUnloaded());
}

TEST_F(frmCddbTest, clicksThatWaitedForTheLookupStartNoSecondOne)
{
    open();
    system.pump.actions[1] = [&] { click("cmdGet"); };
    system.dialogs.expectBox(QStringLiteral("Downloaded Successfully!"));
    click("cmdGet");
    EXPECT_EQ(exchange(), (QStringList{QStringLiteral("CDDB.QueryDisc(1801c203)"),
                                       QStringLiteral("UpdateFileNamesWithTitles")}));
}

TEST_F(frmCddbTest, anExchangeCanBeBrokenOffAndNothingElseRunsMeanwhile)
{
    disc.Album = QStringLiteral("Old");
    const struct
    {
        const char *button;
        std::function<void()> breakOff;
    } rows[] = {
        {"cmdGet", [&] { click("OKButton"); }},
        {"cmdGet", [&] { QTest::mouseClick(at<QWidget>("OKButton"), Qt::LeftButton); }},
        {"cmdDownload", [&] { QTest::keyClick(window->focusWidget(), Qt::Key_Escape); }},
        {"cmdGet", [&] { window->close(); }},
        {"cmdSubmit", [&] { window->close(); }},
    };
    for (const auto &row : rows) {
        open();
        fillIn();
        const QString before = record();
        client->onStop = [&] {
            QMetaObject::invokeMethod(
                window.get(),
                [&] {
                    for (const char *other : {"cmdGet", "cmdSubmit"}) {
                        click(other);
                        QTest::mouseClick(at<QWidget>(other), Qt::LeftButton);
                    }
                    clickTitle(1);
                    Q_EMIT at<ReportListView>("ListView1")->returnPressed();
                    QTest::keyClicks(at<QLineEdit>("txtAlbum"), QStringLiteral("x"));
                    row.breakOff();
                },
                Qt::QueuedConnection);
        };
        click(row.button);
        EXPECT_TRUE(window->isVisible());
        EXPECT_FALSE(QGuiApplication::overrideCursor());
        EXPECT_EQ(record(), before);
        EXPECT_EQ(text("txtAlbum"), QStringLiteral("a"));
        const QStringList calls = system.log.take();
        EXPECT_EQ(calls.filter(QStringLiteral("Disc(")).size(), 1);
        EXPECT_FALSE(calls.contains(QStringLiteral("UpdateFileNamesWithTitles")));
        window->close();
        EXPECT_TRUE(window->isUnloaded());
    }
}

TEST_F(frmCddbTest, theWindowGoesOnPaintingWhileTheServiceIsAsked)
{
    open();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    PaintWatch watch;
    client->onStop = [&] {
        QMetaObject::invokeMethod(window.get(), [&] {
            window->installEventFilter(&watch);
            window->update();
        });
        while (!watch.painted)
            std::this_thread::yield();
        QMetaObject::invokeMethod(window.get(), [&] { click("OKButton"); });
    };
    click("cmdGet");
    EXPECT_TRUE(watch.painted);
}

TEST_F(frmCddbTest, commandsBehindALookupDoNotTouchWhatItFetched)
{
    open();
    system.pump.actions[1] = [&] {
        click("OKButton");
        click("cmdSubmit");
        clickTitle(1);
        window->close();
    };
    system.dialogs.expectBox(QStringLiteral("Downloaded Successfully!"));
    click("cmdGet");
    EXPECT_EQ(record(), LookedUp);
    EXPECT_TRUE(window->isUnloaded());
}

TEST_F(frmCddbTest, anotherDiscIsAskedForAndNeverGetsTheTitlesOfTheOneBefore)
{
    const QString other = QStringLiteral("0500b401");
    disc.Album = QStringLiteral("Old");
    disc.TrackTitles = QStringLiteral("Uno|Due|Tre");
    const auto exchangeDiscs = [&] {
        engine.discId = other;
        host.names = QStringList{QStringLiteral("Track01.mp3")};
    };
    const QString before = record();
    const auto reopen = [&] {
        engine.discId = QStringLiteral("1801c203");
        host.names = QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
        open();
        system.log.take();
    };

    reopen();
    exchangeDiscs();
    client->status = CDDB::NotFound;
    system.dialogs.expectBox(QStringLiteral("No CD Information"));
    click("cmdGet");
    EXPECT_EQ(exchange(), QStringList{QStringLiteral("CDDB.QueryDisc(%1)").arg(other)});
    EXPECT_EQ(titles(), QStringList{QStringLiteral("1 Track01")});
    EXPECT_EQ(text("txtAlbum"), QString());

    reopen();
    client->onCall = exchangeDiscs;
    system.dialogs.expectWholeBox(
        {.text = QStringLiteral("The disc was changed meanwhile, please try again.")});
    click("cmdGet");
    EXPECT_EQ(text("txtID"), other);
    EXPECT_EQ(record(), before);

    reopen();
    fillIn();
    exchangeDiscs();
    system.log.take();
    system.dialogs.expectWholeBox(
        {.text = QStringLiteral("The disc was changed, please enter what is on the new one.")});
    click("cmdSubmit");
    EXPECT_EQ(system.log.take(), QStringList());

    reopen();
    fillIn();
    client->onCall = exchangeDiscs;
    system.dialogs.expectBox(QStringLiteral("Submitted Successfully!")); // for the disc that was there
    click("cmdSubmit");
    EXPECT_EQ(record(), before);

    reopen();
    exchangeDiscs();
    type("txtTime", QStringLiteral("77"));
    type("txtAlbum", QStringLiteral("typed for the disc before"));
    click("OKButton");
    EXPECT_TRUE(window->isUnloaded());
    EXPECT_EQ(record(), before);
    EXPECT_EQ(settings.read(Ini::Timeout), QStringLiteral("77"));

    reopen();
    engine.discId = QStringLiteral("00000000"); // the drive is empty: what was typed isn't lost
    type("txtAlbum", QStringLiteral("New"));
    click("OKButton");
    EXPECT_EQ(disc.Album, QStringLiteral("New"));
}

TEST_F(frmCddbTest, closeKeepsTheServerPageAndTheSubmissionPage)
{
    open();
    type("txtAlbum", QStringLiteral(" New "));
    type("txtArtist", QStringLiteral(" Name "));
    type("txtYear", QStringLiteral(" 99 "));
    type("txtComm", QStringLiteral(" c "));
    at<DropDownList>("cboGenre")->setListIndex(3);
    system.dialogs.expectInput(QStringLiteral("Please enter the title of tracks 2:"),
                               QStringLiteral("Track02"), QStringLiteral(" Second "));
    at<QTabBar>("TabStrip1")->setCurrentIndex(2);
    clickTitle(2);
    EXPECT_EQ(system.dialogs.lastInput().title, QStringLiteral("enter title of tracks 2"));
    at<TickBox>("chkProxy")->setTicked(true);
    type("txtServer", QStringLiteral("proxy.example"));
    type("txtTime", QString());
    click("OKButton");

    EXPECT_TRUE(window->isUnloaded());
    EXPECT_EQ(record(), QStringLiteral("New~Name~3~99~c~Track01|Second|Track03"));
    EXPECT_EQ(system.log.take(), QStringList{QStringLiteral("UpdateFileNamesWithTitles")});
    EXPECT_EQ(settings.read(Ini::UseProxy), QStringLiteral("1"));
    EXPECT_EQ(settings.read(Ini::ProxyNeedLogin), QStringLiteral("0"));

    open();
    EXPECT_TRUE(at<TickBox>("chkProxy")->isTicked());
    EXPECT_EQ(text("txtServer"), QStringLiteral("proxy.example"));
    EXPECT_EQ(text("txtTime"), QStringLiteral("30")); // an emptied key is gone
}

TEST_F(frmCddbTest, theCloseBoxAndASuccessfulLookupKeepNothingOfTheServerPage)
{
    open();
    type("txtTime", QStringLiteral("99"));
    type("txtAlbum", QStringLiteral("typed"));
    window->close();
    EXPECT_EQ(disc.Album, QString());

    open();
    QTest::keyClick(window.get(), Qt::Key_Escape); // there is no button to leave without a word
    EXPECT_TRUE(window->isVisible());
    type("txtTime", QStringLiteral("99"));
    system.dialogs.expectBox(QStringLiteral("Downloaded Successfully!"));
    click("cmdGet");
    EXPECT_EQ(settings.read(Ini::Timeout), QStringLiteral("30"));
}

TEST_F(frmCddbTest, theProxyControlsFollowTheirTicks)
{
    open();
    const auto expectEnabled = [this](bool server, bool account) {
        for (const char *name : {"txtServer", "txtPort", "chkLogin", "Label1_5", "Label1_4", "Label1_3"})
            EXPECT_EQ(at<QWidget>(name)->isEnabled(), server) << name;
        for (const char *name : {"txtUser", "txtPass", "Label1_2", "Label1_1"})
            EXPECT_EQ(at<QWidget>(name)->isEnabled(), account) << name;
    };
    expectEnabled(false, false);
    click("chkProxy");
    expectEnabled(true, false);
    click("chkLogin");
    expectEnabled(true, true);
    click("chkProxy");
    expectEnabled(false, false);
    EXPECT_TRUE(at<TickBox>("chkLogin")->isTicked());
}

TEST_F(frmCddbTest, storedServerSettingsAreReadAndBadOnesPassedOver)
{
    settings.write(Ini::UseProxy, QStringLiteral("1"));
    settings.write(Ini::ProxyServer, QStringLiteral("proxy"));
    settings.write(Ini::ProxyPort, QStringLiteral("8080"));
    settings.write(Ini::ProxyUserName, QStringLiteral("jane"));
    settings.write(Ini::ProxyPassword, QStringLiteral("pw"));
    for (const char *bad : {"yes", "3", "-1"}) {
        settings.write(Ini::ProxyNeedLogin, QString::fromLatin1(bad));
        open();
        EXPECT_TRUE(at<TickBox>("chkProxy")->isTicked());
        EXPECT_FALSE(at<TickBox>("chkLogin")->isTicked());
        EXPECT_EQ(text("txtServer") + text("txtPort") + text("txtUser") + text("txtPass"),
                  QStringLiteral("proxy8080janepw"));
        EXPECT_TRUE(at<QWidget>("txtServer")->isEnabled());
        EXPECT_FALSE(at<QWidget>("txtUser")->isEnabled());
        EXPECT_EQ(at<QLineEdit>("txtPass")->displayText(), QStringLiteral("**"));
    }
}

TEST_F(frmCddbTest, theNumberBoxesTakeDigitsAlone)
{
    open();
    click("chkProxy");
    const std::pair<const char *, QString> rows[] = {{"txtYear", QStringLiteral("1234")},
                                                     {"txtPort", QStringLiteral("12345")},
                                                     {"txtTime", QStringLiteral("123")}};
    for (const auto &[name, kept] : rows) {
        type(name, QString());
        QTest::keyClicks(at<QLineEdit>(name), QStringLiteral("a1-2.3b4 5c6"));
        EXPECT_EQ(text(name), kept);
    }
}

class SubmissionTest : public frmCddbTest
{
protected:
    SubmissionTest()
    {
        disc.TrackTitles = QStringLiteral("One | Two|Three");
        open();
        type("txtAlbum", QStringLiteral(" Album "));
        type("txtArtist", QStringLiteral(" Artist "));
        type("txtYear", QStringLiteral(" 99 "));
        type("txtComm", QStringLiteral(" Comment "));
        type("txtEmail", QStringLiteral(" jane@example.org "));
        at<DropDownList>("cboGenre")->setListIndex(17);
        at<DropDownList>("cboCate")->setListIndex(9);
    }

    void expectRefusal(const QString &refusal)
    {
        system.dialogs.expectWholeBox({.text = refusal});
        click("cmdSubmitCDDB");
        EXPECT_EQ(system.log.take(), QStringList());
        EXPECT_TRUE(window->isVisible());
    }

    void setTitles(const QStringList &titles)
    {
        for (int row = 1; row <= titles.size(); ++row)
            at<ReportListView>("ListView1")->setText(row, 1, titles[row - 1]);
    }
};

TEST_F(SubmissionTest, sendsThePageAndTakesItIntoTheRecord)
{
    bool pumped = false;
    system.pump.actions[1] = [&] { pumped = QGuiApplication::overrideCursor() != nullptr; };
    system.dialogs.expectWholeBox({.text = QStringLiteral("Submitted Successfully!")});
    click("cmdSubmit");
    EXPECT_TRUE(pumped);
    EXPECT_FALSE(QGuiApplication::overrideCursor());
    EXPECT_EQ(exchange(),
              (QStringList{
                  QStringLiteral("CDDB.Album = Album"), QStringLiteral("CDDB.Category = rock"),
                  QStringLiteral("CDDB.DiscLength = 452"),
                  QStringLiteral("CDDB.TrackOffsets = 150|15150|30150"), QStringLiteral("CDDB.Year = 99"),
                  QStringLiteral("CDDB.Titles = One | Two|Three"), QStringLiteral("CDDB.Artist = Artist"),
                  QStringLiteral("CDDB.TrackCount = 3"), QStringLiteral("CDDB.Genre = Rock"),
                  QStringLiteral("CDDB.Comments = Comment"), QStringLiteral("CDDB.Email = jane@example.org"),
                  QStringLiteral("CDDB.SubmitDisc(1801c203)"), QStringLiteral("UpdateFileNamesWithTitles")}));
    EXPECT_EQ(record(), QStringLiteral("Album~Artist~17~99~Comment~One | Two|Three"));
    EXPECT_TRUE(window->isUnloaded());
}

TEST_F(SubmissionTest, aRefusalOrFailureLeavesTheWindow)
{
    const QString before = record();
    const std::pair<int, const char *> rows[] = {{CDDB::Refused, "Submission Rejected"},
                                                 {CDDB::NoConnection, "Can not connect to the server"},
                                                 {CDDB::OtherFailure, "Unknown Error!"}};
    for (const auto &[status, said] : rows) {
        client->status = static_cast<qint16>(status);
        system.dialogs.expectWholeBox({.text = QString::fromLatin1(said), .icon = BoxIcon::Critical});
        click("cmdSubmitCDDB");
        EXPECT_EQ(record(), before);
    }
    client->status = 9;
    click("cmdSubmitCDDB");
    EXPECT_TRUE(window->isVisible());
}

TEST_F(SubmissionTest, theFirstFaultIsTold)
{
    type("txtAlbum", QStringLiteral("  "));
    expectRefusal(QStringLiteral("Please enter Album text"));
    type("txtAlbum", QStringLiteral("x"));
    type("txtArtist", QString());
    expectRefusal(QStringLiteral("Please enter Artist text"));
    type("txtArtist", QStringLiteral("x"));
    type("txtYear", QStringLiteral(" "));
    type("txtEmail", QStringLiteral(" "));
    expectRefusal(QStringLiteral("Please enter Year text"));
    type("txtYear", QStringLiteral("1"));
    expectRefusal(QStringLiteral("Please enter Email address"));
    EXPECT_EQ(text("txtEmail"), QString());
    type("txtEmail", QStringLiteral("  jane@nowhere "));
    expectRefusal(QStringLiteral("The email address is not correct, please enter it again."));
    EXPECT_EQ(text("txtEmail"), QStringLiteral("jane@nowhere"));
}

TEST_F(SubmissionTest, titlesAreTestedRowByRow)
{
    const QString empty = QStringLiteral("Please fill in all the titles, and every title can not be empty.");
    const QString generic =
        QStringLiteral("Please enter correct titles, you can not enter title like \"track\", "
                       "\"track01\", \"track-1\", etc.");
    const std::pair<QStringList, QString> rows[] = {
        {{QStringLiteral("a"), QStringLiteral(" "), QStringLiteral("Track 3")}, empty},
        {{QStringLiteral("a"), QStringLiteral("Track"), QString()}, generic},
        {{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("  Tracker")}, generic},
    };
    for (const auto &[typed, refusal] : rows) {
        setTitles(typed);
        expectRefusal(refusal);
    }
    setTitles({QStringLiteral("track 1"), QStringLiteral("TRACK 2"), QStringLiteral("My Track")});
    system.dialogs.expectBox(QStringLiteral("Submitted Successfully!"));
    click("cmdSubmitCDDB");
    EXPECT_EQ(disc.TrackTitles, QStringLiteral("track 1|TRACK 2|My Track"));
}

TEST_F(SubmissionTest, aFailureOfTheClientIsFatal)
{
    client->onCall = [] { throw RunTimeFailure(RunTimeFailure::InvalidCall); };
    system.dialogs.expectBox(QStringLiteral("Run-time error '5':\n\nInvalid procedure call or argument"));
    click("cmdSubmitCDDB");
    EXPECT_TRUE(system.log.take().contains(QStringLiteral("end 1")));
    EXPECT_FALSE(QGuiApplication::overrideCursor());
}

TEST_F(SubmissionTest, clicksThatWaitedStartNoSecondOne)
{
    system.pump.actions[1] = [&] { click("cmdSubmit"); };
    client->status = 9;
    click("cmdSubmit");
    EXPECT_EQ(system.log.take().filter(QStringLiteral("SubmitDisc")).size(), 1);
}

} // namespace
