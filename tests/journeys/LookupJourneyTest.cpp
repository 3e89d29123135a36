#include "controls/DropDownList.h"
#include "journeys/Journey.h"
#include "testkit/TestDecoder.h"
#include "testkit/http/LoopbackServer.h"

#include <QAction>
#include <QTabBar>

namespace {

/// A disc looked up, edited by hand and submitted, against a server on the loopback.
class LookupJourney : public Journey
{
protected:
    /// Triggers a command and runs `inside` in the modal window that it opens.
    void inWindow(const char *action, const std::function<void(QWidget &)> &inside)
    {
        QTimer::singleShot(0, &main(), [&] {
            QWidget *window = QApplication::activeModalWidget();
            ASSERT_TRUE(window);
            inside(*window);
            if (window->isVisible())
                window->close();
        });
        control<QAction>(main(), QLatin1String(action))->trigger();
    }

    void press(QWidget &window, const char *name)
    {
        control<QPushButton>(window, QLatin1String(name))->click();
    }

    void useLoopback(QWidget &window)
    {
        auto *hosts = control<DropDownList>(window, QStringLiteral("cboHost"));
        hosts->addEntry(server.host());
        hosts->setListIndex(hosts->count() - 1);
    }

    QByteArray entry =
        "210 rock OK, CD database entry follows\r\n# xmcd\r\n#\r\n# Disc length: 30 seconds\r\n#\r\n"
        "DISCID=00000000\r\nDTITLE=Die K\xc3\xbcnstler / Erstes Album\r\nDYEAR=1987\r\n"
        "DGENRE=Rock\r\nTTITLE0=Sch\xc3\xb6n: so?\r\nTTITLE1=\xe6\x97\xa5\xe6\x9c\xac\r\n"
        "EXTD=\r\nEXTT0=\r\nEXTT1=\r\nPLAYORDER=\r\n.\r\n";
    LoopbackServer server{[this](const HttpRequest &request) {
        HttpResponse response;
        response.body = "401 No such CD entry.\r\n";
        if (request.method == "POST")
            response.body = "200 OK, submission has been received.\r\n";
        else if (request.target.contains("rock"))
            response.body = entry;
        return response;
    }};
};

TEST_F(LookupJourney, aDiscIsLookedUpRippedEditedAndSubmitted)
{
    insert(demodisc::shortDisc(2));
    start(2);

    system.dialogs.expectBox(QStringLiteral("Downloaded Successfully!"));
    inWindow("Toolbar1_3", [&](QWidget &window) {
        EXPECT_EQ(window.objectName(), QStringLiteral("frmCddb"));
        useLoopback(window);
        press(window, "cmdDownload");
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(list().text(1, SaveAsColumn), QStringLiteral("Schön_ so_.mp3"));

    click("rdFormat_4");
    click("chkAll");
    expectCompleted();
    rip();
    EXPECT_EQ(files(), (QStringList{QStringLiteral("Schön_ so_.ogg"), QStringLiteral("日本.ogg")}));
    const auto tags = testkit::decodeFile(folder() + QStringLiteral("日本.ogg")).tags;
    EXPECT_EQ(tags.value(QStringLiteral("title")), QStringLiteral("日本"));
    EXPECT_EQ(tags.value(QStringLiteral("artist")), QStringLiteral("Die Künstler"));
    EXPECT_EQ(tags.value(QStringLiteral("album")), QStringLiteral("Erstes Album"));
    EXPECT_EQ(tags.value(QStringLiteral("genre")), QStringLiteral("Rock"));
    EXPECT_EQ(tags.value(QStringLiteral("date")).left(4), QStringLiteral("1987"));

    inWindow("Toolbar1_2", [&](QWidget &window) {
        EXPECT_EQ(window.objectName(), QStringLiteral("frmTrack"));
        control<QLineEdit>(window, QStringLiteral("txtAlbum"))->setText(QStringLiteral("Zweites Album"));
        press(window, "OKButton");
    });
    EXPECT_EQ(main().discInfo().Album, QStringLiteral("Zweites Album"));

    system.dialogs.expectBox(QStringLiteral("Submitted Successfully!"));
    inWindow("mnuToolsSub_3", [&](QWidget &window) {
        useLoopback(window);
        control<QLineEdit>(window, QStringLiteral("txtEmail"))
            ->setText(QStringLiteral("someone@example.com"));
        press(window, "cmdSubmit");
    });
    const HttpRequest sent = server.requests().constLast();
    EXPECT_EQ(sent.method, "POST");
    EXPECT_TRUE(sent.body.contains("DTITLE=Die K\xc3\xbcnstler / Zweites Album"));
    EXPECT_TRUE(sent.body.contains("TTITLE1=\xe6\x97\xa5\xe6\x9c\xac"));
}

} // namespace
