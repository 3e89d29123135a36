#include "ConverterFixture.h"
#include "engines/audiofile/AudioFile.h"
#include "engines/codecs/Recipe.h"
#include "platform/qt/QtDesktop.h"
#include "testkit/Encoding.h"
#include "testkit/Logged.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <sys/stat.h>

namespace {

/// The window over the real component and real events.
class ConverterJourney : public ConverterFixture
{
protected:
    static constexpr qsizetype Frames = 110'000; // two seconds and a half

    ConverterJourney()
    {
        realSlot.form()->showModeless();
        window = realSlot.form().get();
        press(u"cmdNext"_s);
    }

    QString put(const QString &name, const std::vector<qint16> &sound)
    {
        return system.write(name, testkit::encode(*codecs::wavRecipe(), {}, sound));
    }
    testkit::Decoded made(const QString &name) { return testkit::decodeFile(output(name)); }
    /// From the last step back to the choice of the format, and forth again with another one.
    void takeFormat(const QString &option)
    {
        while (shownFrames() != QStringList{u"frmOutFmt"_s})
            press(shownFrames() == QStringList{u"frmSource"_s} ? u"cmdNext"_s : u"cmdLast"_s);
        choose(option);
        for (int step = 3; step < 6; ++step)
            press(u"cmdNext"_s);
    }
    void convert()
    {
        system.dialogs.expectBox(u"Converting Finished!!"_s, BoxAnswer::Ok, u"Finished Converting!"_s);
        press(u"cmdNext"_s);
    }
    /// Runs once the current file is a good part done.
    void midway(std::function<void()> action)
    {
        auto *watch = new QTimer(window);
        QObject::connect(watch, &QTimer::timeout, window, [this, watch, action] {
            if (text(u"lblCurPer"_s).chopped(1).toInt() < 20)
                return;
            watch->stop();
            action();
        });
        watch->start(0);
    }

    QtEventPump pump{system.end};
    const Desktop real{system.dialogs, system.shell, pump,          system.clock,   system.version,
                       system.paths,   system.end,   system.border, system.registry};
    FormSlot<frmMain1> realSlot{[this] {
        return makeForm<frmMain1>(real, std::make_unique<audiofile::AudioFile>(),
                                  std::make_unique<audiofile::AudioFile>());
    }};
};

TEST_F(ConverterJourney, goodFilesBecomeEachOfTheFourFormatsAndABrokenOneIsPassedOver)
{
    const auto sound = testkit::music(44100, 2, Frames);
    const QString good = put(u"in/Größe \"日本\".wav"_s, sound);
    const QString broken = system.write(u"in/broken.wav"_s, QByteArray(5000, 'x'));
    const QString last = put(u"in/last.wav"_s, sound);
    add({good, broken, last});
    const std::pair<QString, QString> formats[] = {{u"rdDesMP3"_s, u"mp3"_s},
                                                   {u"rdDesWAV"_s, u"wav"_s},
                                                   {u"rdDesWMA"_s, u"wma"_s},
                                                   {u"rdDesOGG"_s, u"ogg"_s}};
    for (const auto &[option, ending] : formats) {
        SCOPED_TRACE(ending.toStdString());
        takeFormat(option);
        EXPECT_FALSE(text(u"skOutputFormatString"_s).isEmpty());
        convert();
        EXPECT_EQ(text(u"skConvertedFiles"_s), u"3"_s);
        EXPECT_EQ(text(u"lblTotalPer"_s), u"100%"_s);
        EXPECT_TRUE(text(u"skInputFormat"_s).contains(u"44100"_s)) << text(u"skInputFormat"_s).toStdString();
        for (const QString &name : {u"Größe \"日本\"."_s, u"last."_s}) {
            const testkit::Decoded file = made(name + ending);
            EXPECT_TRUE(file.clean);
            EXPECT_NEAR(double(file.frames()) / file.rate, double(Frames) / 44100, 0.1);
        }
        EXPECT_FALSE(QFile::exists(output(u"broken."_s + ending)));
    }
    EXPECT_EQ(made(u"last.wav"_s).samples, sound);
    EXPECT_EQ(QDir(system.folder() + u"/output"_s).entryList(QDir::Files | QDir::Hidden).size(), 8);
}

TEST_F(ConverterJourney, aDamagedFileStaysWhenItIsConvertedOntoItself)
{
    const auto sound = testkit::music(44100, 2, Frames * 4);
    const QByteArray mp3 = testkit::encode(*codecs::mp3Recipe({}), {}, sound);
    const QByteArray damaged = mp3.left(mp3.size() / 10);
    const QString pipe = system.folder() + u"/pipe.mp3"_s;
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    const QString whole = system.write(u"output/whole.mp3"_s, mp3);
    const QString part = system.write(u"output/part.mp3"_s, damaged);
    add({pipe, whole, part, system.write(u"in/other.mp3"_s, damaged)});
    takeFormat(u"rdDesMP3"_s);
    choose(u"rdOverwrite"_s);
    convert();
    EXPECT_EQ(text(u"skConvertedFiles"_s), u"4"_s);
    const auto content = [&](const QString &name) {
        QFile file(output(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QString logged = takeLogged("tonelift.convert").join(u'\n');
    EXPECT_TRUE(logged.contains(pipe) && logged.contains(part + u" is damaged"_s)) << qPrintable(logged);
    EXPECT_EQ(content(u"part.mp3"_s), damaged);
    EXPECT_NE(content(u"whole.mp3"_s), mp3);
    EXPECT_EQ(made(u"whole.mp3"_s).frames(), Frames * 4);
    EXPECT_GT(made(u"other.mp3"_s).frames(), Frames / 4); // what could be read of it
    EXPECT_EQ(QDir(system.folder() + u"/output"_s).entryList(QDir::Files | QDir::Hidden).size(), 3);
}

TEST_F(ConverterJourney, aStopLeavesAShortFileThatCanBePlayed)
{
    const auto sound = testkit::music(44100, 2, Frames * 12);
    add({put(u"in/long.wav"_s, sound)});
    takeFormat(u"rdDesWAV"_s);
    system.dialogs.expectBox(u"Converting Stopped!"_s);
    midway([this] { press(u"cmdNext"_s); });
    press(u"cmdNext"_s);
    const testkit::Decoded file = made(u"long.wav"_s);
    ASSERT_GT(file.samples.size(), sound.size() / 6);
    ASSERT_LT(file.samples.size(), sound.size());
    EXPECT_TRUE(std::equal(file.samples.begin(), file.samples.end(), sound.begin()));
}

TEST_F(ConverterJourney, closingTheWindowLeavesTheSameAndASecondWindowStarts)
{
    const auto sound = testkit::music(44100, 2, Frames * 12);
    add({put(u"in/long.wav"_s, sound), put(u"in/next.wav"_s, sound)});
    takeFormat(u"rdDesOGG"_s);
    midway([this] { window->close(); });
    press(u"cmdNext"_s);
    deleteUnloaded();
    EXPECT_FALSE(window);
    EXPECT_TRUE(made(u"long.ogg"_s).clean);
    EXPECT_GT(made(u"long.ogg"_s).frames(), Frames);
    EXPECT_LT(made(u"long.ogg"_s).frames(), Frames * 12);
    EXPECT_EQ(QDir(system.folder() + u"/output"_s).entryList(QDir::Files | QDir::Hidden),
              QStringList{u"long.ogg"_s});
    realSlot.form()->showModeless();
    EXPECT_TRUE(realSlot.isLoaded());
}

} // namespace
