#include "tags/frmID3E.h"

#include "base/Task.h"
#include "controls/DropDownList.h"
#include "controls/ReportListView.h"
#include "testkit/FakeNCTAudioInformation.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QDropEvent>
#include <QMimeData>
#include <QProgressBar>
#include <future>

namespace {

using Kind = FakeNCTAudioInformation::Kind;

QString text(const char *words)
{
    return QString::fromUtf8(words);
}

class frmID3ETest : public ::testing::Test
{
protected:
    frmID3ETest()
    {
        auto own = std::make_unique<FakeNCTAudioInformation>(system.log);
        AInfo = own.get();
        window = makeForm<frmID3E>(system.desktop(), std::move(own));
        list = control<ReportListView>(*window, text("ListView1"));
        window->showModeless();
    }

    /// A file of the album, under a path of the platform.
    QString file(const QString &name, const FakeNCTAudioInformation::File &tags)
    {
        const QString path = QStringLiteral("/music/") + name;
        AInfo->files.insert(path, tags);
        return path;
    }

    QString song(int number)
    {
        return file(QStringLiteral("%1.mp3").arg(number),
                    {.album = QStringLiteral("Album %1").arg(number),
                     .artist = QStringLiteral("Artist %1").arg(number),
                     .title = QStringLiteral("Title %1").arg(number),
                     .comment = QStringLiteral("Comment %1").arg(number),
                     .year = 2000 + number,
                     .genre = static_cast<qint16>(number)});
    }

    void open(const QStringList &files)
    {
        system.dialogs.expectFiles(files);
        click("cmdOpen");
        EXPECT_TRUE(system.dialogs.isDone());
    }

    void openSongs(int count)
    {
        QStringList songs;
        for (int number = 1; number <= count; ++number)
            songs.append(song(number));
        open(songs);
        system.log.take();
    }

    void click(const char *name) { control<QAbstractButton>(*window, text(name))->click(); }
    QLineEdit *box(const char *name) { return control<QLineEdit>(*window, text(name)); }
    int genre() { return control<DropDownList>(*window, text("cboGenre"))->listIndex(); }

    /// What each row shows, with a star where it is ticked.
    QStringList rows() const
    {
        QStringList shown;
        for (int row = 1; row <= list->rowCount(); ++row)
            shown.append(list->text(row, 0) + (list->isChecked(row) ? u'*' : u' ') + list->text(row, 1));
        return shown;
    }

    void expectInformation(const char *words) { system.dialogs.expectWholeBox({.text = text(words)}); }

    TestDesktop system;
    FakeNCTAudioInformation *AInfo = nullptr;
    std::shared_ptr<frmID3E> window;
    ReportListView *list = nullptr;
};

TEST_F(frmID3ETest, theWindowOpensEmptyWithTheGenresAndWithoutItsHiddenControls)
{
    EXPECT_EQ(window->windowTitle(), QStringLiteral("ID3 Editor"));
    EXPECT_EQ(list->rowCount(), 0);
    auto *genres = control<DropDownList>(*window, text("cboGenre"));
    EXPECT_EQ(genres->count(), 148);
    EXPECT_EQ(genres->listIndex(), 0);
    EXPECT_EQ(genres->itemText(147), QStringLiteral("Synthpop"));
    for (const char *name : {"txtComposer", "txtCopyright", "Frame3", "optV1", "optV2"})
        EXPECT_FALSE(control<QWidget>(*window, text(name))->isVisible()) << name;
}

TEST_F(frmID3ETest, openedFilesMakeRowsAndTheLastOneFillsTheAlbum)
{
    const QString last = file(QStringLiteral("a b/日本 'ü\".ogg"), {.kind = Kind::Ogg,
                                                                    .album = QStringLiteral(" Al "),
                                                                    .artist = QStringLiteral("Ar "),
                                                                    .title = QStringLiteral(" Last "),
                                                                    .comment = QStringLiteral(" C"),
                                                                    .year = 0,
                                                                    .genre = 147});
    system.pump.actions[1] = [&] {
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        EXPECT_EQ(list->rowCount(), 0);
    };
    system.pump.actions[2] = [&] { EXPECT_EQ(list->rowCount(), 2); };
    open({song(1), last});
    EXPECT_EQ(system.pump.calls, 2);
    EXPECT_FALSE(QGuiApplication::overrideCursor());
    EXPECT_EQ(rows(), (QStringList{text("1 Title 1"), text("2 Last")}));
    EXPECT_EQ(list->text(2, 2), text("日本 'ü\".ogg"));
    EXPECT_EQ(list->text(2, 3), text("/music/a b/"));
    EXPECT_EQ(box("txtAlbum")->text(), text("Al"));
    EXPECT_EQ(box("txtArtist")->text(), text("Ar"));
    EXPECT_EQ(box("txtComment")->text(), text("C"));
    EXPECT_EQ(box("txtYear")->text(), text("0"));
    EXPECT_EQ(genre(), 147);
    EXPECT_EQ(list->selectedRow(), 1);
    EXPECT_EQ(system.log.calls().mid(0, 10),
              (QStringList{text("AInfo.IsAudioFile(/music/1.mp3)"), text("AInfo.IsMP3File(/music/1.mp3)"),
                           text("AInfo.IsOGGFile(/music/1.mp3)"), text("AInfo.ReadTags(/music/1.mp3)"),
                           text("AInfo.TagTitle"), text("AInfo.TagArtist"), text("AInfo.TagAlbum"),
                           text("AInfo.TagGenre"), text("AInfo.TagComment"), text("AInfo.TagYear")}));
    const OpenFiles &request = system.dialogs.lastFiles();
    EXPECT_EQ(request.title, text("Open Audio Files MP3 and OGG"));
    EXPECT_EQ(request.filters, (QStringList{text("MP3 Files(*.mp3)"), text("OGG Vorbis Files(*.ogg)"),
                                            text("MP3 and OGG Files(*.mp3 *.ogg)")}));
    EXPECT_EQ(request.filter, 0);
}

TEST_F(frmID3ETest, whatCanNotBeTakenIsToldAndTheBatchGoesOn)
{
    const QString text1 = file(QStringLiteral("text.mp3"), {.kind = Kind::NoAudio});
    const QString wav = file(QStringLiteral("a.wav"), {.kind = Kind::OtherAudio});
    const QString strange = file(QStringLiteral("strange.mp3"), {.album = text("S"),
                                                                 .artist = text("SA"),
                                                                 .title = text("ST"),
                                                                 .comment = text("SC"),
                                                                 .year = 1977,
                                                                 .genre = 148});
    open({song(1)});
    system.dialogs.expectFiles({text1, wav, song(1), QStringLiteral("/music/1.MP3"), strange, song(2)});
    system.dialogs.expectWholeBox({.text = text("The following file is not an audio file:\n/music/text.mp3"),
                                   .icon = BoxIcon::Critical});
    system.dialogs.expectWholeBox(
        {.text = text("The following file is not an MP3 or OGG Vorbis file:\n/music/a.wav"),
         .icon = BoxIcon::Critical});
    AInfo->files[QStringLiteral("/music/1.MP3")] = AInfo->files[song(1)];
    click("cmdOpen");
    EXPECT_EQ(rows(), (QStringList{text("1 Title 1"), text("2 Title 1"), text("3 ST"), text("4 Title 2")}));

    open({strange, song(3), song(1)}); // all but one are there already
    EXPECT_EQ(box("txtAlbum")->text(), text("Album 3"));
    open({}); // cancelled
    EXPECT_EQ(list->rowCount(), 5);
    const QString another = file(QStringLiteral("another.mp3"), AInfo->files[strange]);
    open({another}); // a genre outside the list ends the taking over of the album
    EXPECT_EQ(box("txtAlbum")->text(), text("S"));
    EXPECT_EQ(box("txtYear")->text(), text("1977"));
    EXPECT_EQ(genre(), 3);
    EXPECT_EQ(box("txtComment")->text(), text("Comment 3"));
}

TEST_F(frmID3ETest, longTextsAreCutAtTheirPlace)
{
    const QString head = text("🎧");
    open({file(QStringLiteral("long.mp3"), {.album = QString(101, u'a'),
                                            .artist = QString(49, u'b') + head,
                                            .title = QString(99, u't') + head,
                                            .comment = QString(256, u'c'),
                                            .year = 12345})});
    EXPECT_EQ(box("txtAlbum")->text(), QString(100, u'a'));
    EXPECT_EQ(box("txtArtist")->text(), QString(49, u'b')); // no half of a character
    EXPECT_EQ(list->text(1, 1), QString(99, u't'));
    EXPECT_EQ(box("txtComment")->text(), QString(255, u'c'));
    EXPECT_EQ(box("txtYear")->text(), text("1234"));
    EXPECT_EQ(box("txtAlbum")->maxLength(), 100);
    EXPECT_EQ(box("txtArtist")->maxLength(), 50);
    EXPECT_EQ(box("txtComment")->maxLength(), 255);
    // What isn't touched isn't cut in the file either.
    AInfo->files.insert(text("/music/b.mp3"), {.title = text("b")});
    open({text("/music/b.mp3")});
    click("cmdDown"); // rows change places
    open({});
    const auto saved = [&](const char *name) {
        system.dialogs.expectBox(text("Saved Successfully!"));
        click("cmdSave");
        return AInfo->files[text(name)];
    };
    box("txtAlbum")->setText(text("Album"));
    box("txtArtist")->setText(text("Artist"));
    EXPECT_EQ(saved("/music/long.mp3").title, QString(99, u't') + head);
    EXPECT_EQ(saved("/music/b.mp3").title, text("b"));
    AInfo->files.insert(text("/music/c.mp3"), {.album = QString(101, u'a'),
                                               .artist = QString(60, u'b'),
                                               .title = text("c"),
                                               .comment = QString(256, u'c')});
    open({text("/music/c.mp3")});
    FakeNCTAudioInformation::File file = saved("/music/c.mp3");
    EXPECT_EQ(file.album.size() + file.artist.size() + file.comment.size(), 101 + 60 + 256);
    box("txtArtist")->setText(QString(49, u'b'));
    list->setText(2, 1, QString(98, u't'));
    EXPECT_EQ(saved("/music/c.mp3").artist, QString(49, u'b'));
    EXPECT_EQ(AInfo->files[text("/music/long.mp3")].title, QString(98, u't'));
}

TEST_F(frmID3ETest, aWindowClosedWhileFilesAreAddedTakesNoMore)
{
    system.pump.actions[1] = [&] { window->close(); };
    open({song(1), song(2)});
    EXPECT_EQ(system.pump.calls, 1);
    EXPECT_EQ(list->rowCount(), 0);
    EXPECT_FALSE(QGuiApplication::overrideCursor());
}

TEST_F(frmID3ETest, tickedFilesAreRemovedAndTheRestIsNumberedAnew)
{
    expectInformation("There are no files in the list.");
    click("cmdRemove");
    openSongs(5);
    expectInformation("Please check some files from the list for removing.");
    click("cmdRemove");
    list->setChecked(2, true);
    list->setChecked(3, true);
    list->selectRow(3);
    click("cmdRemove");
    EXPECT_EQ(rows(), (QStringList{text("1 Title 1"), text("2 Title 4"), text("3 Title 5")}));
    EXPECT_GT(list->selectedRow(), 0);
    click("Command1");
    EXPECT_EQ(rows().join(u' '), text("1*Title 1 2*Title 4 3*Title 5"));
    list->setChecked(2, false);
    click("Command1"); // whatever was ticked by hand
    EXPECT_EQ(rows().join(u' '), text("1 Title 1 2 Title 4 3 Title 5"));
    click("Command1");
    click("cmdRemove");
    EXPECT_EQ(list->rowCount(), 0);
}

TEST_F(frmID3ETest, filesMoveButNumbersAndTicksStay)
{
    const char *nothing = "There are no files in the list!\nPlease add some files first!";
    expectInformation(nothing);
    click("cmdUp");
    expectInformation(nothing);
    click("cmdDown");
    open({song(1)});
    const char *top = "The current selected row is already at the top,\nCan not move up any more!";
    const char *bottom = "The current selected row is already at the bottom,\nCan not move down any more!";
    expectInformation(top);
    click("cmdUp");
    expectInformation(bottom);
    click("cmdDown");
    open({song(2), song(3)});
    list->setChecked(1, true);
    list->selectRow(3);
    click("cmdUp");
    click("cmdUp");
    EXPECT_EQ(rows(), (QStringList{text("1*Title 3"), text("2 Title 1"), text("3 Title 2")}));
    EXPECT_EQ(list->text(1, 2), text("3.mp3"));
    EXPECT_EQ(list->selectedRow(), 1);
    EXPECT_EQ(window->focusWidget(), list);
    expectInformation(top);
    click("cmdUp");
    click("cmdDown");
    EXPECT_EQ(rows(), (QStringList{text("1*Title 1"), text("2 Title 3"), text("3 Title 2")}));
    EXPECT_EQ(list->selectedRow(), 2);
}

TEST_F(frmID3ETest, titlesAreTypedByDoubleClickReturnAndButton)
{
    const QString prompt = text("Please enter the title for track 2 :");
    Q_EMIT list->listDoubleClicked(); // nothing without rows
    expectInformation("No Files in the list for edit.");
    click("cmdEdit");
    openSongs(2);
    list->selectRow(2);
    system.dialogs.expectInput(prompt, text("Title 2"), text("  New "));
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                       list->visualItemRect(list->topLevelItem(1)).center());
    EXPECT_EQ(system.dialogs.lastInput().title, text("Enter CD Tracks Title"));
    system.dialogs.expectInput(prompt, text("New"), {}); // cancelled
    QTest::keyClick(list, Qt::Key_Return);
    system.dialogs.expectInput(prompt, text("New"), text("  "));
    click("cmdEdit");
    EXPECT_EQ(rows(), (QStringList{text("1 Title 1"), text("2 New")}));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->topLevelItem(0)).center());
    EXPECT_EQ(list->selectedRow(), 1);
    EXPECT_EQ(box("txtAlbum")->text(), text("Album 2")); // a single click shows nothing of the file
}

TEST_F(frmID3ETest, savingRefusesAtTheFirstFault)
{
    expectInformation("There are no files opened in the list");
    click("cmdSave");
    openSongs(1);
    box("txtAlbum")->setText(text("   "));
    box("txtArtist")->clear();
    expectInformation("Please enter the text string for album.");
    click("cmdSave");
    box("txtAlbum")->setText(text("A"));
    expectInformation("Please enter the text string for artist.");
    click("cmdSave");
    EXPECT_EQ(system.log.calls(), QStringList());
}

TEST_F(frmID3ETest, savingWritesEveryRowWithItsPlaceAsTrack)
{
    openSongs(3);
    list->setChecked(1, true);
    list->selectRow(3);
    click("cmdUp");
    list->setText(1, 1, {}); // a title may be empty
    box("txtAlbum")->setText(text(" Album "));
    box("txtArtist")->setText(text(" Artist "));
    box("txtComment")->setText(text(" Comment "));
    box("txtYear")->setText(text("1999"));
    control<DropDownList>(*window, text("cboGenre"))->setListIndex(17);
    AInfo->files[song(3)].writable = false;
    AInfo->files.remove(text("/music/1.mp3"));
    const FakeNCTAudioInformation::File untouched = AInfo->files[text("/music/3.mp3")];
    system.dialogs.expectWholeBox({.text = text("Saved Successfully!")}, BoxAnswer::Ok,
                                  [&] { EXPECT_FALSE(QGuiApplication::overrideCursor()); });
    click("cmdSave");
    EXPECT_EQ(system.log.take().mid(0, 8),
              (QStringList{text("AInfo.TagTitle = "), text("AInfo.TagAlbum = Album"),
                           text("AInfo.TagArtist = Artist"), text("AInfo.TagTrack = 1"),
                           text("AInfo.TagGenre = 17"), text("AInfo.TagYear = 1999"),
                           text("AInfo.TagComment = Comment"), text("AInfo.WriteTags(/music/1.mp3)")}));
    EXPECT_EQ(AInfo->files[text("/music/3.mp3")].title, untouched.title);
    const FakeNCTAudioInformation::File &saved = AInfo->files[text("/music/2.mp3")];
    EXPECT_EQ(saved.title, text("Title 2"));
    EXPECT_EQ(saved.track, 3);
    EXPECT_EQ(saved.year, 1999);
    EXPECT_EQ(rows(), (QStringList{text("1*"), text("2 Title 3"), text("3 Title 2")}));
    const auto markOf = [&](int row) { return list->topLevelItem(row - 1)->toolTip(2); };
    EXPECT_EQ(markOf(1), text("Not saved: File not found"));
    EXPECT_EQ(markOf(2), text("Not saved: Permission denied"));
    EXPECT_EQ(markOf(3), QString());
    EXPECT_FALSE(list->topLevelItem(1)->icon(2).isNull());
    AInfo->files[text("/music/3.mp3")].writable = true;
}

TEST_F(frmID3ETest, aLongSavingShowsHowFarItIsAndCanBeBrokenOff)
{
    const std::function<void()> ways[] = {
        [&] { QTest::mouseClick(control<QWidget>(*window, text("cmdClose")), Qt::LeftButton); },
        [&] { QTest::keyClick(list, Qt::Key_Escape); },
        [&] { window->close(); },
    };
    openSongs(3);
    auto *progress = control<QProgressBar>(*window, text("prgSave"));
    for (const auto &breakOff : ways) {
        int writings = 0;
        AInfo->onWrite = [&](TagWriting &writing) {
            writing.written = 1;
            writing.expected = 2;
            if (++writings == 1)
                return;
            QMetaObject::invokeMethod(window.get(), [&] {
                click("cmdSave"); // nothing else runs meanwhile
                QTest::mouseClick(control<QWidget>(*window, text("cmdOpen")), Qt::LeftButton);
                QTest::keyClicks(box("txtAlbum"), text("x"));
                if (&breakOff == ways) { // it takes a second until something is shown
                    EXPECT_TRUE(waitFor([&] { return progress->isVisible(); }));
                    EXPECT_EQ(progress->value(), 500); // one of three, and half of the second
                }
                breakOff();
            });
            std::promise<void> stopped;
            const std::stop_callback callback(writing.stop, [&] { stopped.set_value(); });
            stopped.get_future().wait();
            throw TaskCancelled();
        };
        expectInformation("Cancelled: 1 of 3 files are saved.");
        click("cmdSave");
        EXPECT_TRUE(window->isVisible());
        EXPECT_FALSE(progress->isVisible());
        EXPECT_EQ(box("txtAlbum")->text(), text("Album 3"));
        EXPECT_EQ(writings, 2);
    }
    AInfo->onWrite = nullptr;
    system.dialogs.expectBox(text("Saved Successfully!"), BoxAnswer::Ok, ProgramTitle,
                             [&] { EXPECT_FALSE(progress->isVisible()); });
    click("cmdSave");
}

TEST_F(frmID3ETest, anEmptyYearLeavesTheOneOfTheFileBefore)
{
    openSongs(2);
    box("txtYear")->clear();
    system.dialogs.expectBox(text("Saved Successfully!"));
    click("cmdSave");
    EXPECT_EQ(AInfo->files[text("/music/1.mp3")].year, 2002); // read last
    EXPECT_FALSE(system.log.calls().join(u' ').contains(text("TagYear")));
}

TEST_F(frmID3ETest, theYearTakesDigitsAloneAndFourOfThem)
{
    QTest::keyClicks(box("txtYear"), text("1a9-9.99"));
    EXPECT_EQ(box("txtYear")->text(), text("1999"));
    QTest::keyClick(box("txtYear"), Qt::Key_Backspace);
    EXPECT_EQ(box("txtYear")->text(), text("199"));
}

TEST_F(frmID3ETest, droppedFilesAreTakenLikeOpenedOnesAndFoldersAreSearched)
{
    for (const char *name : {"drop/b.MP3", "drop/cd 2/a.ogg", "drop/cover.jpg"})
        AInfo->files.insert(system.write(text(name), "x"), {.title = text(name)});
    const QString plain = file(QStringLiteral("plain"), {.title = text("plain")});
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(plain), QUrl::fromLocalFile(system.folder() + text("/drop")),
                  QUrl(text("http://a.example/b.mp3"))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.get(), &drop);
    EXPECT_EQ(list->rowCount(), 0); // the other program is let go first
    QCoreApplication::processEvents();
    EXPECT_EQ(rows(), (QStringList{text("1 plain"), text("2 drop/b.MP3"), text("3 drop/cd 2/a.ogg")}));
    QMimeData words;
    words.setText(text("no file"));
    QDragEnterEvent other(QPoint(5, 5), Qt::CopyAction, &words, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.get(), &other);
    EXPECT_FALSE(other.isAccepted());
}

TEST_F(frmID3ETest, theKeyboardReachesEverything)
{
    openSongs(2);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ(rows(), (QStringList{text("1 Title 1"), text("2*Title 2")}));
    QStringList reached;
    for (int i = 0; i < 14; ++i) {
        reached.append(window->focusWidget()->objectName());
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(reached.join(u' '),
              text("ListView1 cmdOpen cmdRemove cmdEdit cmdUp cmdDown Command1 txtAlbum txtArtist cboGenre "
                   "txtYear txtComment cmdSave cmdClose"));
    box("txtAlbum")->setFocus();
    QTest::keyClick(box("txtAlbum"), Qt::Key_Return); // presses nothing
    QTest::keyClick(window.get(), Qt::Key_Escape);    // closes nothing
    EXPECT_TRUE(window->isVisible());
    window->activateWindow();
    ASSERT_TRUE(waitFor([&] { return window->isActiveWindow(); }));
    QTest::keyClick(window.get(), Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(waitFor([&] { return !window->isVisible(); })); // and asks nothing
}

} // namespace
