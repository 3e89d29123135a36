#include "ConverterFixture.h"

#include <QLineEdit>

namespace {

class JobTest : public ConverterFixture
{
protected:
    /// Opens the window and goes to its last step with sources of these names, of two seconds each.
    void openJob(const QStringList &names = {u"a ä.mp3"_s})
    {
        open();
        QStringList paths;
        for (const QString &name : names) {
            paths.append(u"/in/"_s + name);
            reader->sources[paths.last()] = {.rate = 8000, .channels = 2, .frames = 16000, .seconds = 2};
        }
        goToLastStep(paths);
    }
    /// Presses the button and expects the box of a job that ran to its end.
    void convert(ScriptedDialogs::Meanwhile meanwhile = {})
    {
        system.dialogs.expectBox(u"Converting Finished!!"_s, BoxAnswer::Ok, u"Finished Converting!"_s,
                                 std::move(meanwhile));
        press(u"cmdNext"_s);
    }
    /// What came of a destination: the number of values written to it; "-" where it doesn't exist.
    QString written(const QString &name)
    {
        QFile file(output(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : u"-"_s;
    }
    /// The destinations that were opened, by name.
    QStringList openedOf(const QStringList &calls)
    {
        QStringList names;
        for (const QString &call : calls) {
            if (call.startsWith(u"FileW.OpenWrite"_s))
                names.append(QFileInfo(call.chopped(1)).fileName());
        }
        return names;
    }
    /// The n-th reading of samples (from 1) fails.
    static void failAtRead(FakeNCTAudioFile &reader, int n)
    {
        reader.during = [n](const QString &call) mutable {
            if (call.startsWith(u"FileR.ReadSamples"_s) && --n == 0)
                throw RunTimeFailure(RunTimeFailure::DeviceIoError);
        };
    }
    QString percents() { return text(u"lblCurPer"_s) + u' ' + text(u"lblTotalPer"_s); }
    bool isIdle() { return nextCaption() == u"&Convert"_s && isEnabled(u"cmdLast"_s); }
    void noExplorer() { tick(u"chkExplorer"_s, false); }
};

TEST_F(JobTest, aFileGoesAcrossSecondBySecond)
{
    openJob();
    atPass(1, [&] {
        EXPECT_EQ(nextCaption(), u"&Stop"_s);
        EXPECT_FALSE(isEnabled(u"cmdLast"_s));
    });
    atPass(2, [&] { EXPECT_EQ(window->cursor().shape(), Qt::WaitCursor); });
    convert([&] {
        EXPECT_TRUE(isIdle());
        EXPECT_FALSE(get<QTimer>(u"tmUsed"_s)->isActive());
    });
    EXPECT_EQ(system.log.take(), (QStringList{u"FileR.OpenRead(/in/a ä.mp3)"_s,
                                              u"FileR.Status -> 0"_s,
                                              u"FileR.FormatString -> Format of /in/a ä.mp3"_s,
                                              u"FileW.OpenWrite("_s + output(u"a ä.wav"_s) + u')',
                                              u"FileW.Status -> 0"_s,
                                              u"FileR.ChannelCount -> 2"_s,
                                              u"FileR.SampleRate -> 8000"_s,
                                              u"FileW.SetInputFormat(8000, 2)"_s,
                                              u"FileR.SampleRate -> 8000"_s,
                                              u"FileR.ChannelCount -> 2"_s,
                                              u"FileR.ReadSamples(16000)"_s,
                                              u"FileW.WriteSamples(16000)"_s,
                                              u"FileR.SamplesPerSecond -> 16000"_s,
                                              u"FileR.DurationSeconds -> 2"_s,
                                              u"FileR.DurationSeconds -> 2"_s,
                                              u"FileR.ReadSamples(16000)"_s,
                                              u"FileW.WriteSamples(16000)"_s,
                                              u"FileR.SamplesPerSecond -> 16000"_s,
                                              u"FileR.DurationSeconds -> 2"_s,
                                              u"FileR.DurationSeconds -> 2"_s,
                                              u"FileR.ReadSamples(16000)"_s,
                                              u"FileW.CloseFile"_s,
                                              u"FileR.CloseFile"_s,
                                              u"explore "_s + system.folder() + u"/output"_s}));
    EXPECT_EQ(written(u"a ä.wav"_s), u"32000"_s);
    EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(text(u"skInputFormat"_s), u"Format of /in/a ä.mp3"_s);
    EXPECT_EQ(text(u"skConvertingFile"_s), u"/in/a ä.mp3"_s);
}

TEST_F(JobTest, theBarsShowTheFileAndTheJob)
{
    openJob({u"a.mp3"_s, u"b.mp3"_s});
    noExplorer();
    reader->sources[u"/in/a.mp3"_s].seconds = 3; // what it tells is longer than what it holds
    reader->sources[u"/in/b.mp3"_s].seconds = 1; // what it tells is shorter
    const auto *box = get<QWidget>(u"picCur"_s);
    const auto *bar = get<QWidget>(u"lblCurBar"_s);
    QStringList seen;
    for (int pass = 1; pass <= 13; ++pass) {
        atPass(pass, [&, box, bar] {
            seen.append(percents() + u' ' + text(u"skConvertedFiles"_s));
            EXPECT_NEAR(bar->width(), box->width() * text(u"lblCurPer"_s).chopped(1).toInt() / 100.0, 3);
        });
    }
    convert();
    EXPECT_EQ(seen, (QStringList{u"0% 0% 0"_s, u"0% 0% 0"_s, u"33% 17% 0"_s, u"33% 17% 0"_s, u"67% 33% 0"_s,
                                 u"67% 33% 0"_s, u"100% 50% 0"_s, u"0% 50% 1"_s, u"100% 100% 1"_s,
                                 u"100% 100% 1"_s, u"100% 100% 1"_s, u"100% 100% 1"_s, u"100% 100% 1"_s}));
    EXPECT_EQ(text(u"skConvertedFiles"_s), u"2"_s);
    EXPECT_EQ(get<QWidget>(u"lblTotalBar"_s)->width(), get<QWidget>(u"picTotal"_s)->width());
    window->resize(window->width() + 200, window->height());
    EXPECT_TRUE(waitFor([&] { return bar->width() == box->width(); })); // the bars grow with the window
    press(u"cmdLast"_s);
    press(u"cmdNext"_s);
    EXPECT_EQ(percents(), u"0% 0%"_s);
}

TEST_F(JobTest, theTimerCountsTheSecondsOfEachJobAnew)
{
    openJob();
    noExplorer();
    auto *timer = get<QTimer>(u"tmUsed"_s);
    EXPECT_EQ(timer->interval(), 1000);
    EXPECT_FALSE(timer->isActive());
    for (int pass : {3, 5})
        atPass(pass, [timer] { fireTimer(timer); });
    convert();
    EXPECT_EQ(text(u"skTime"_s), u"2"_s);
    choose(u"rdOverwrite"_s);
    atPass(2, [&] { EXPECT_EQ(text(u"skTime"_s), u"0"_s); });
    convert();
}

TEST_F(JobTest, aFileThatFailsIsPassedOverAndCounted)
{
    struct Case
    {
        const char *what;
        std::function<void(FakeNCTAudioFile &reader, FakeNCTAudioFile &writer, const QString &destination)>
            arrange;
        bool dropped; ///< what was being written
    };
    const QString source = u"/in/bad.mp3"_s;
    const Case cases[] = {
        {"no such source", [&](auto &reader, auto &, auto &) { reader.sources.remove(source); }, false},
        {"unwritable", [](auto &, auto &writer, auto &path) { writer.unwritable.append(path); }, false},
        {"broken in its middle", [](auto &reader, auto &, auto &) { failAtRead(reader, 2); }, true},
        {"no duration", [&](auto &reader, auto &, auto &) { reader.sources[source].seconds = 0; }, true},
        {"a second that no number holds",
         [&](auto &reader, auto &, auto &) { reader.sources[source].rate = 1500000000; }, true},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        openJob({u"bad.mp3"_s});
        noExplorer();
        c.arrange(*reader, *writer, output(u"bad.wav"_s));
        convert();
        EXPECT_EQ(written(u"bad.wav"_s), u"-"_s);
        const QStringList calls = system.log.take();
        EXPECT_EQ(calls.last(), u"FileR.CloseFile"_s);
        EXPECT_EQ(calls.contains(u"FileW.DropFile"_s), c.dropped);
        EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
        EXPECT_FALSE(calls.contains(u"FileW.CloseFile"_s)); // nothing half done gets its name
        EXPECT_EQ(text(u"skConvertedFiles"_s), u"1"_s);
        window->unload();
        deleteUnloaded();
    }
}

TEST_F(JobTest, theNextFileIsConvertedAfterAFailingOne)
{
    openJob({u"1.mp3"_s, u"2.mp3"_s, u"3.mp3"_s});
    noExplorer();
    reader->sources.remove(u"/in/1.mp3"_s);
    failAtRead(*reader, 1);
    convert();
    EXPECT_EQ(written(u"1.wav"_s) + written(u"2.wav"_s) + written(u"3.wav"_s), u"--32000"_s);
    EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(JobTest, aSourceWithoutAudioGivesAnEmptyFileAndAFullBar)
{
    openJob();
    noExplorer();
    reader->sources[u"/in/a ä.mp3"_s].frames = 0;
    convert();
    EXPECT_EQ(written(u"a ä.wav"_s), u"0"_s);
    EXPECT_EQ(percents(), u"100% 100%"_s);
}

TEST_F(JobTest, aDestinationThatExistsIsTreatedAsChosen)
{
    const MessageBox question{.text =
                                  u"The following file is already existed, do you want to overwrite it?\n"_s,
                              .icon = BoxIcon::Question,
                              .buttons = BoxButtons::YesNo,
                              .preset = BoxAnswer::No};
    system.write(u"output/a.wav"_s, "old");
    openJob({u"a.mp3"_s, u"a.ogg"_s}); // of one stem: the second meets what the first has made
    noExplorer();
    choose(u"rdSkip"_s);
    convert();
    EXPECT_EQ(system.log.take(), QStringList());
    EXPECT_EQ(written(u"a.wav"_s), u"old"_s);
    EXPECT_EQ(text(u"skConvertedFiles"_s) + percents(), u"20% 0%"_s); // both bars stand still
    choose(u"rdPrompt"_s);
    system.dialogs.expectWholeBox(question, BoxAnswer::No);
    system.dialogs.expectWholeBox(question, BoxAnswer::Yes);
    convert();
    EXPECT_EQ(openedOf(system.log.take()), QStringList{u"a.wav"_s});
    EXPECT_EQ(written(u"a.wav"_s), u"32000"_s);
    choose(u"rdOverwrite"_s);
    convert();
    EXPECT_EQ(openedOf(system.log.take()), (QStringList{u"a.wav"_s, u"a.wav"_s}));
}

TEST_F(JobTest, aStopEndsTheJobAtTheEndOfItsPassAndLeavesWhatIsWritten)
{
    openJob({u"a.mp3"_s, u"b.mp3"_s});
    system.dialogs.expectWholeBox({.text = u"Converting Stopped!"_s}, BoxAnswer::Ok, [&] {
        EXPECT_FALSE(get<QTimer>(u"tmUsed"_s)->isActive());
        EXPECT_EQ(written(u"a.wav"_s), u"-"_s); // the file is still being written
    });
    atPass(3, [&] {
        press(u"cmdNext"_s);
        // A quick hand can't start the job inside itself, nor change the step under it.
        press(u"cmdNext"_s);
        press(u"cmdLast"_s);
    });
    press(u"cmdNext"_s);
    EXPECT_EQ(openedOf(system.log.calls()), QStringList{u"a.wav"_s});
    EXPECT_EQ(system.log.take().mid(15), (QStringList{u"FileW.CloseFile"_s, u"FileR.CloseFile"_s}));
    EXPECT_EQ(written(u"a.wav"_s), u"16000"_s);
    EXPECT_EQ(percents() + u' ' + text(u"skConvertedFiles"_s), u"50% 25% 0"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmConvert"_s});
    EXPECT_TRUE(isIdle());
    // The same job can be started again; what the stop has left exists by then.
    noExplorer();
    choose(u"rdSkip"_s);
    convert();
    EXPECT_EQ(written(u"a.wav"_s) + u' ' + written(u"b.wav"_s), u"16000 32000"_s);
}

TEST_F(JobTest, aStopSparesASourceThatIsItsOwnDestination)
{
    open();
    const QString path = output(u"a.wav"_s);
    QDir().mkpath(QFileInfo(path).path());
    QFile source(path);
    ASSERT_TRUE(source.open(QIODevice::WriteOnly) && source.write("sound") == 5);
    source.close();
    reader->sources[path] = {.rate = 8000, .channels = 2, .frames = 16000, .seconds = 2};
    goToLastStep({path});
    choose(u"rdOverwrite"_s);
    system.dialogs.expectBox(u"Converting Stopped!"_s);
    atPass(3, [&] { press(u"cmdNext"_s); });
    press(u"cmdNext"_s);
    EXPECT_EQ(written(u"a.wav"_s), u"sound"_s);
    convert();
    EXPECT_EQ(written(u"a.wav"_s), u"32000"_s);
}

TEST_F(JobTest, aSourceGivesWayOnlyToWhatWasMadeOfTheWholeOfIt)
{
    for (const bool damaged : {false, true}) {
        SCOPED_TRACE(damaged);
        const QString itself = system.write(u"output/a.wav"_s, "sound");
        const QString other = system.write(u"in/b.wav"_s, "sound");
        system.write(u"output/b.wav"_s, "old");
        open();
        for (const QString &path : {itself, other})
            reader->sources[path] = {
                .rate = 8000, .channels = 2, .frames = 16000, .seconds = 2, .damaged = damaged};
        goToLastStep({itself, other});
        noExplorer();
        choose(u"rdOverwrite"_s);
        convert();
        EXPECT_EQ(written(u"a.wav"_s), damaged ? u"sound"_s : u"32000"_s);
        EXPECT_EQ(written(u"b.wav"_s), u"32000"_s);
        EXPECT_EQ(system.log.take().contains(u"FileW.DropFile"_s), damaged);
        window->unload();
        deleteUnloaded();
    }
}

TEST_F(JobTest, aStopGetsThroughWhileASourceIsWaitedFor)
{
    for (const QString &call : {u"FileR.OpenRead"_s, u"FileR.ReadSamples"_s}) {
        SCOPED_TRACE(call.toStdString());
        openJob();
        system.dialogs.expectBox(u"Converting Stopped!"_s);
        int passes = 0;
        reader->during = [&](const QString &now) {
            if (!now.startsWith(call))
                return;
            atPass(3, [&] { press(u"cmdNext"_s); });
            while (reader->whileReading())
                ++passes;
            reader->sources.clear();
        };
        press(u"cmdNext"_s);
        EXPECT_EQ(passes, 2);
        EXPECT_TRUE(isIdle());
        EXPECT_EQ(system.log.take().last(), u"FileR.CloseFile"_s);
        EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
        window->unload();
        deleteUnloaded();
    }
}

TEST_F(JobTest, aStopBeforeTheFirstFileConvertsNothing)
{
    openJob();
    system.dialogs.expectBox(u"Converting Stopped!"_s);
    atPass(1, [&] { press(u"cmdNext"_s); });
    press(u"cmdNext"_s);
    EXPECT_EQ(system.log.take(), QStringList());
    EXPECT_TRUE(isIdle());
}

TEST_F(JobTest, closingAtAnyPassEndsTheJobAndFreesAll)
{
    // 1: before the job; 2: before its first source is open; then each pass of the first file.
    const QString leftByPass[] = {u"-"_s, u"-"_s, u"16000"_s, u"16000"_s, u"32000"_s, u"32000"_s, u"32000"_s};
    for (int pass = 1; pass <= 7; ++pass) {
        SCOPED_TRACE(pass);
        openJob({u"a.mp3"_s, u"b.mp3"_s});
        QFile::remove(output(u"a.wav"_s));
        atPass(pass, [&] {
            window->close();
            deleteUnloaded();
            ASSERT_TRUE(window); // its handler still runs
            EXPECT_TRUE(window->isHidden());
        });
        press(u"cmdNext"_s);
        deleteUnloaded();
        EXPECT_FALSE(window);
        EXPECT_FALSE(reader);
        EXPECT_FALSE(writer);
        EXPECT_EQ(written(u"a.wav"_s), leftByPass[pass - 1]);
        EXPECT_EQ(written(u"b.wav"_s), u"-"_s);
        EXPECT_FALSE(system.log.take().join(u' ').contains(u"explore"_s));
    }
}

TEST_F(JobTest, aFinishedJobDoesWhatTheTicksSay)
{
    openJob();
    tick(u"chkExit"_s);
    tick(u"chkShut"_s);
    convert();
    const QStringList calls = system.log.take();
    EXPECT_EQ(calls.mid(calls.size() - 2),
              (QStringList{u"explore "_s + system.folder() + u"/output"_s, u"end 0"_s}));
    deleteUnloaded();
    EXPECT_FALSE(window);
}

TEST_F(JobTest, theWindowAloneMayCloseOrTheWholeProgramEnd)
{
    openJob();
    noExplorer();
    tick(u"chkExit"_s);
    convert();
    EXPECT_FALSE(system.end.isEnding());
    EXPECT_FALSE(slot.isLoaded());
    openJob();
    noExplorer();
    choose(u"rdSkip"_s);
    tick(u"chkShut"_s);
    convert();
    EXPECT_TRUE(system.end.isEnding());
    EXPECT_TRUE(slot.isLoaded()); // nothing is closed: the program just ends
}

TEST_F(JobTest, aFolderThatCannotBeMadeIsToldForTheJobAndForEachFile)
{
    const QString blocked = system.write(u"file"_s, "x") + u"/deeper"_s;
    const QString told = u"Create directory error: "_s + blocked;
    openJob({u"a.mp3"_s, u"b.mp3"_s});
    noExplorer();
    get<QLineEdit>(u"txtFolder"_s)->setText(blocked);
    for (const QString &name : {u"a.wav"_s, u"b.wav"_s})
        writer->unwritable.append(blocked + u'/' + name);
    system.dialogs.expectBox(told, BoxAnswer::Ok, u"Error"_s);
    for (int file = 0; file < 2; ++file)
        system.dialogs.expectBox(told + u'/', BoxAnswer::Ok, u"Error"_s);
    convert();
    EXPECT_EQ(text(u"skConvertedFiles"_s), u"2"_s);
}

TEST_F(JobTest, aJobOfNoFilesSaysSoAndDoesNothing)
{
    openJob();
    get<QListWidget>(u"lstFile"_s)->clear();
    system.dialogs.expectWholeBox({.text = u"No files in the list, please add files to convert!"_s});
    press(u"cmdNext"_s);
    EXPECT_EQ(nextCaption(), u"&Stop"_s);
    EXPECT_FALSE(isEnabled(u"cmdLast"_s));
    EXPECT_EQ(system.log.take(), QStringList());
}

} // namespace
