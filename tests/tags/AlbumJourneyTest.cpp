#include "controls/DropDownList.h"
#include "controls/ReportListView.h"
#include "engines/tagfile/SampleFiles.h"
#include "tags/frmID3E.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QLineEdit>

namespace {

/// The editor over the real component and real files.
TEST(AlbumJourneyTest, anAlbumOfBothKindsIsOpenedChangedAndSaved)
{
    TestDesktop system;
    const QByteArray picture =
        samples::frame23("APIC", samples::latin1("image/png") + QByteArray("\0\3\0data", 7));
    const QByteArray oldTag = samples::id3v2(3, samples::frame23("TIT2", samples::latin1("One")) + picture);
    const QByteArray audio = samples::mp3Frames(2000);
    const QString mp3 = system.write(QStringLiteral("Álbum/日本 'ö\".mp3"), oldTag + audio);
    const QString ogg =
        system.write(QStringLiteral("Álbum/no extension"), samples::made(QStringLiteral("ogg")));
    const QString vanishing = system.write(QStringLiteral("Álbum/v.mp3"), audio);
    const QString readOnly = system.write(QStringLiteral("Álbum/r.mp3"), audio);
    const QString link = system.folder() + QStringLiteral("/link.mp3");
    ASSERT_TRUE(QFile::link(mp3, link));

    auto window = makeForm<frmID3E>(system.desktop(), std::make_unique<engines::AudioInformation>());
    window->showModeless();
    const auto click = [&](const char *name) {
        control<QAbstractButton>(*window, QString::fromLatin1(name))->click();
    };
    const auto type = [&](const char *name, const QString &text) {
        control<QLineEdit>(*window, QString::fromLatin1(name))->setText(text);
    };
    system.dialogs.expectFiles({mp3, vanishing, readOnly, ogg, link});
    click("cmdOpen");
    auto *list = control<ReportListView>(*window, QStringLiteral("ListView1"));
    ASSERT_EQ(list->rowCount(), 5);
    EXPECT_EQ(list->text(1, 1), QStringLiteral("One"));
    ASSERT_TRUE(QFile::remove(vanishing));
    ASSERT_TRUE(QFile::setPermissions(readOnly, QFile::ReadOwner));
    list->selectRow(4);
    system.dialogs.expectInput(QStringLiteral("Please enter the title for track 4 :"), QString(),
                               QStringLiteral("Zwei"));
    click("cmdEdit");
    type("txtAlbum", QStringLiteral("専辑"));
    type("txtArtist", QStringLiteral("Künstler"));
    type("txtYear", QStringLiteral("1984"));
    type("txtComment", QStringLiteral("Kommentar"));
    control<DropDownList>(*window, QStringLiteral("cboGenre"))->setListIndex(52);
    system.dialogs.expectBox(QStringLiteral("Saved Successfully!"));
    click("cmdSave");

    engines::AudioInformation tags;
    for (const auto &[path, title] : {std::pair{mp3, QStringLiteral("One")}, {ogg, QStringLiteral("Zwei")}}) {
        tags.ReadTags(path);
        EXPECT_EQ(tags.TagTitle(), title);
        EXPECT_EQ(tags.TagAlbum(), QStringLiteral("専辑"));
        EXPECT_EQ(tags.TagArtist(), QStringLiteral("Künstler"));
        EXPECT_EQ(tags.TagYear(), 1984);
        EXPECT_EQ(tags.TagGenre(), 52);
    }
    const QByteArray saved = samples::content(mp3);
    EXPECT_TRUE(saved.chopped(128).endsWith(audio));
    EXPECT_TRUE(saved.contains(picture));
    EXPECT_TRUE(saved.contains(samples::frame23("TRCK", samples::latin1("5")))); // the link came last
    EXPECT_TRUE(samples::content(ogg).contains("TRACKNUMBER=4"));
    EXPECT_EQ(samples::content(readOnly), audio);
    EXPECT_FALSE(QFile::exists(vanishing));
}

} // namespace
