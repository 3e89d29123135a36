#include "ConverterFixture.h"

#include <QMimeData>

namespace {

class SourcesTest : public ConverterFixture
{
protected:
    void openSources(const QString &option = u"rdSrcMP3"_s)
    {
        open();
        choose(option);
        press(u"cmdNext"_s);
    }
    static QString listedAlready(const QString &path)
    {
        return u"The following file is in the list already,\n"_s + path;
    }
    /// A file manager drops these.
    void drop(const QStringList &paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &path : paths)
            urls.append(QUrl::fromLocalFile(path));
        urls.append(QUrl(u"https://music.example/far.mp3"_s));
        data.setUrls(urls);
        QWidget *target = get<QListWidget>(u"lstFile"_s)->viewport();
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        enter.setDropAction(Qt::MoveAction);
        QCoreApplication::sendEvent(target, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent event(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        event.setDropAction(Qt::MoveAction);
        QCoreApplication::sendEvent(target, &event);
        EXPECT_EQ(event.dropAction(), Qt::CopyAction); // the files stay where they are
    }
};

TEST_F(SourcesTest, theDialogShowsTheFilesOfTheSourceFormat)
{
    const std::pair<QString, QString> cases[] = {{u"rdSrcMP3"_s, u"MP3 Files(*.mp3)"_s},
                                                 {u"rdSrcWAV"_s, u"WAV Files(*.wav)"_s},
                                                 {u"rdSrcWMA"_s, u"WMA Files(*.wma)"_s},
                                                 {u"rdSrcOGG"_s, u"OGG Files(*.ogg)"_s}};
    open();
    for (const auto &[option, filter] : cases) {
        choose(option);
        press(u"cmdNext"_s);
        add({});
        EXPECT_EQ(system.dialogs.lastFiles().filters, QStringList{filter});
        EXPECT_FALSE(isEnabled(u"cmdNext"_s));
        press(u"cmdLast"_s);
    }
}

TEST_F(SourcesTest, newFilesComeInOrderAndEachListedOneIsTold)
{
    openSources();
    add({u"/m/b ü.mp3"_s});
    EXPECT_TRUE(isEnabled(u"cmdNext"_s));
    system.dialogs.expectFiles({u"/m/c.mp3"_s, u"/m/b ü.mp3"_s, u"/m/B ü.mp3"_s, u"/m/c.mp3"_s});
    system.dialogs.expectWholeBox({.text = listedAlready(u"/m/b ü.mp3"_s)});
    system.dialogs.expectBox(listedAlready(u"/m/c.mp3"_s));
    press(u"cmdAdd"_s);
    EXPECT_EQ(rows(), (QStringList{u"/m/b ü.mp3"_s, u"/m/c.mp3"_s, u"/m/B ü.mp3"_s}));
}

TEST_F(SourcesTest, theSelectedRowsGoInOnePassAndAnEmptyListStopsTheWay)
{
    openSources();
    add({u"/1"_s, u"/2"_s, u"/3"_s, u"/4"_s});
    auto *list = get<QListWidget>(u"lstFile"_s);
    press(u"cmdRemove"_s); // nothing is selected
    for (int row : {1, 2})
        list->item(row)->setSelected(true);
    press(u"cmdRemove"_s);
    EXPECT_EQ(rows(), (QStringList{u"/1"_s, u"/4"_s}));
    EXPECT_TRUE(isEnabled(u"cmdNext"_s));
    list->selectAll();
    press(u"cmdRemove"_s);
    EXPECT_FALSE(isEnabled(u"cmdNext"_s));
    add({u"/1"_s});
    press(u"cmdClearAll"_s);
    EXPECT_EQ(rows(), QStringList());
    EXPECT_FALSE(isEnabled(u"cmdNext"_s));
}

TEST_F(SourcesTest, droppedFilesAndFoldersAreAddedByTheSameRules)
{
    const QString one = system.write(u"album/1 ä.mp3"_s, "x");
    const QString two = system.write(u"album/2.mp3"_s, "x");
    const QString other = system.write(u"other.wav"_s, "x");
    openSources();
    add({two});
    system.dialogs.expectBox(listedAlready(two));
    drop({system.folder() + u"/album"_s, other});
    EXPECT_EQ(rows(), QStringList{two}); // the boxes wait until the other program is free
    EXPECT_TRUE(waitFor([&] { return rows().size() == 3; }));
    EXPECT_EQ(rows(), (QStringList{two, one, other}));
    EXPECT_TRUE(isEnabled(u"cmdNext"_s));
}

TEST_F(SourcesTest, aDropThatComesAfterTheStepWasLeftAddsNothing)
{
    const QString one = system.write(u"1.mp3"_s, "x");
    openSources();
    add({u"/m/a.mp3"_s});
    drop({one});
    press(u"cmdNext"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(rows(), QStringList{u"/m/a.mp3"_s});
}

} // namespace
