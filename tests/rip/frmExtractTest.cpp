#include "rip/frmExtract.h"

#include "base/DiscInfo.h"
#include "base/Formats.h"
#include "components/VEnc.h"
#include "rip/RipHost.h"
#include "settings/SettingsStore.h"
#include "testkit/FakeCDRipperX.h"
#include "testkit/FakeNCTAudioInformation.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

struct Row
{
    QString name;
    bool checked = true;
};

class FakeHost : public RipHost
{
public:
    explicit FakeHost(CallLog &log) : m_log(log) {}

    int trackRowCount() const override { return static_cast<int>(rows.size()); }
    bool isTrackChecked(int row) const override { return rows[row - 1].checked; }
    QString trackFileName(int row) const override { return rows[row - 1].name; }
    QString outputDirectory() const override { return folder; }
    void cmdIE_Click() override { m_log.add(QStringLiteral("explore")); }

    QList<Row> rows;
    QString folder;

private:
    CallLog &m_log;
};

class FakeVEnc : public VEnc
{
public:
    explicit FakeVEnc(CallLog &log) : m_log(log) {}

    void setVqfBitRate(qint16 rate) override { m_log.add(QStringLiteral("VqfBitRate %1").arg(rate)); }
    void setVqfInputFile(const QString &path) override
    {
        m_log.add(QStringLiteral("in ") + path.section(u'/', -1));
    }
    void setVqfOutputFile(const QString &path) override
    {
        m_log.add(QStringLiteral("out ") + path.section(u'/', -1));
    }
    void VqfEncode() override { m_log.add(QStringLiteral("VqfEncode")); }

private:
    CallLog &m_log;
};

/// A job window over doubles. Its start timer is fired by the test; the modal loop is entered by `run`, whose
/// steps happen inside it.
class frmExtractTest : public ::testing::Test
{
protected:
    frmExtractTest()
    {
        host.folder = QStringLiteral("/out/");
        host.rows = {{QStringLiteral("a.mp3")}, {QStringLiteral("b.mp3"), false}, {QStringLiteral("c.mp3")}};
        engine.tracks = {{0, 1000}, {1000, 1000}, {2000, 1000}};
    }

    /// Runs a job; `during` happens once the window shows and its start timer has fired.
    void run(qint32 encType, const std::function<void()> &during)
    {
        auto venc = std::make_unique<FakeVEnc>(system.log);
        vqf = venc.get();
        auto form = makeForm<frmExtract>(system.desktop(), frmExtract::Parts{host, disc, settings, tags},
                                         std::move(venc));
        window = form.get();
        QTimer::singleShot(0, form.get(), [&] {
            fireTimer(control<QTimer>(*window, QStringLiteral("Timer1")));
            during();
            if (window->isVisible())
                window->close();
        });
        try {
            form->ShowExtract(engine, encType, nullptr);
        } catch (const ProgramEnding &) {
            EXPECT_TRUE(system.end.isEnding());
        }
        EXPECT_FALSE(form->isVisible());
    }

    template <typename Control>
    Control *at(const char *name)
    {
        return control<Control>(*window, QString::fromLatin1(name));
    }

    QString label(const char *name) { return at<QLabel>(name)->text(); }
    QStringList status()
    {
        return at<QPlainTextEdit>("txtStatus")->toPlainText().split(u'\n', Qt::SkipEmptyParts);
    }
    QStringList hiddenLog()
    {
        QStringList lines;
        auto *list = at<QListWidget>("lstStatus");
        for (int i = 0; i < list->count(); ++i)
            lines << list->item(i)->text();
        return lines;
    }

    void trackRips(int track, qint32 first = 0, qint32 last = 1000)
    {
        Q_EMIT engine.TrackStarted(host.folder + host.rows[track - 1].name, first, last, track);
        Q_EMIT engine.ExtractionStatus(CDRipperX::Progress, last);
        Q_EMIT engine.TrackFinished();
    }

    TestDesktop system;
    FakeCDRipperX engine{system.log};
    FakeHost host{system.log};
    DiscInfo disc;
    SettingsStore settings{system.paths};
    FakeNCTAudioInformation tags{system.log};
    FakeVEnc *vqf = nullptr;
    QPointer<frmExtract> window;
    const QString completed = QStringLiteral("Audio CD Ripping Completed!");
};

TEST_F(frmExtractTest, theCheckedAudioTracksAreQueuedAndStarted)
{
    host.rows = {{QStringLiteral("a.mp3")},
                 {QStringLiteral("b.mp3"), false},
                 {QStringLiteral("c.mp3")},
                 {QStringLiteral("data.mp3")},
                 {QStringLiteral("no.mp3")}};
    engine.tracks = {{0, 10}, {10, 10}, {20, 10}, {30, 10, false}, {40, 10}};
    engine.refusedTracks = {5};
    host.folder = QStringLiteral("/out"); // no separator is added
    run(EncMP3, [&] {
        EXPECT_EQ(
            system.log.take(),
            (QStringList{QStringLiteral("ClearTracks"), QStringLiteral("AddTrack 1 /outa.mp3 1"),
                         QStringLiteral("AddTrack 3 /outc.mp3 3"), QStringLiteral("AddTrack 5 /outno.mp3 5"),
                         QStringLiteral("StartExtraction")}));
        EXPECT_EQ(hiddenLog(),
                  (QStringList{QStringLiteral("Track #04 is a data track and cannot be extracted!"),
                               QStringLiteral("Track #05 could not be added for extraction!")}));
        EXPECT_EQ(window->windowTitle(), QStringLiteral("Ripping CD Track(s) to MP3 File(s) ..."));
        EXPECT_EQ(at<QLineEdit>("txtFilename")->text(), QStringLiteral("/outTrack.mp3"));
        EXPECT_EQ(label("lblTrackProgress"), QStringLiteral("Current: 0%"));
        EXPECT_EQ(label("lblTotalProgress"), QStringLiteral("   Total: 0/4"));
        EXPECT_EQ(label("sbrTime_1"), QStringLiteral("Preparing to extract audio..."));
    });
}

TEST_F(frmExtractTest, aJobShowsItsProgressAndEndsWithItsBox)
{
    system.write(QStringLiteral("settings.ini"), "[Other]\nOpen Explorer=False\n");
    run(EncWMA, [&] {
        Q_EMIT engine.ExtractionPrepared();
        EXPECT_FALSE(at<QPushButton>("cmdFilename")->isEnabled());
        EXPECT_EQ(window->cursor().shape(), Qt::WaitCursor);
        system.clock.present = system.clock.present.addSecs(65);
        Q_EMIT engine.TrackStarted(QStringLiteral("/out/c.mp3"), 2000, 3000, 3);
        Q_EMIT engine.ExtractionStatus(CDRipperX::Progress, 2125);
        EXPECT_EQ(label("sbrTime_1"), QStringLiteral("Track 03     t125 / t1000"));
        EXPECT_EQ(label("sbrTime_2"), QStringLiteral("Seconds: 65"));
        EXPECT_EQ(at<QProgressBar>("prgTrack")->value(), 12); // 12.5, a half, goes to the even neighbour
        EXPECT_EQ(label("lblTrackProgress"), QStringLiteral("Current: 12%"));
        system.clock.present = system.clock.present.addSecs(1);
        Q_EMIT engine.ExtractionStatus(0, 0);
        EXPECT_EQ(label("sbrTime_2"), QStringLiteral("Seconds: 66"));
        Q_EMIT engine.ExtractionStatus(2, 1234);
        for (int code = 3; code <= 15; ++code) {
            if (code != CDRipperX::Progress)
                Q_EMIT engine.ExtractionStatus(code, 0);
        }
        Q_EMIT engine.TrackFinished();
        EXPECT_EQ(label("lblTotalProgress"), QStringLiteral("   Total: 1/2"));
        EXPECT_EQ(at<QProgressBar>("prgTrack")->value(), 12);
        EXPECT_EQ(hiddenLog(),
                  (QStringList{
                      QStringLiteral("Preparing for Audio Extraction!"),
                      QStringLiteral("Ripping Track#03 to /out/c.mp3"),
                      QStringLiteral("Jitter Could Not Be Corrected.  1234"),
                      QStringLiteral("Speed Adjusted to Correct Error."), QStringLiteral("Read Failed."),
                      QStringLiteral("Retrying Read."), QStringLiteral("Retry Failed."),
                      QStringLiteral("File Aborted."), QStringLiteral("Buffer Could Not Be Initialized."),
                      QStringLiteral("Error Creating File."), QStringLiteral("Error Writing File."),
                      QStringLiteral("Error Closing File."),
                      QStringLiteral("Drive Could Not Be Initialized."), QStringLiteral("Ripping Cancelled."),
                      QStringLiteral("Finished Ripping Track#03 to /out/c.mp3")}));
        EXPECT_EQ(system.pump.calls, 15); // once for each report
        system.dialogs.expectWholeBox({.text = completed, .title = completed}, BoxAnswer::Ok, [&] {
            EXPECT_EQ(status(),
                      (QStringList{QStringLiteral("All files are ripped!"), QStringLiteral("Finished: c.mp3"),
                                   QStringLiteral("Start Ripping: c.mp3")}));
            EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
        });
        system.log.take();
        Q_EMIT engine.ExtractionComplete();
        EXPECT_FALSE(window->isVisible());
        EXPECT_TRUE(system.log.take().isEmpty()); // the folder stays closed, as the setting has it
    });
}

TEST_F(frmExtractTest, cancelAsksTheEngineWhileItRipsAndClosesOtherwise)
{
    run(EncWAV, [&] {
        auto *cancel = at<QPushButton>("cmdCancel");
        Q_EMIT engine.ExtractionPrepared();
        system.log.take();
        // Cancel comes through while a report lets events run, and the engine answers inside its pumping.
        system.pump.actions[1] = [&] { cancel->click(); };
        system.pump.actions[2] = [&] {
            system.dialogs.expectBox(completed, BoxAnswer::Ok, completed);
            Q_EMIT engine.ExtractionStatus(CDRipperX::Cancelled, 0);
            Q_EMIT engine.ExtractionComplete();
        };
        Q_EMIT engine.ExtractionStatus(0, 0);
        EXPECT_EQ(system.log.take(),
                  (QStringList{QStringLiteral("CancelExtraction"), QStringLiteral("explore")}));
        EXPECT_FALSE(window->isVisible());
    });
    run(EncWAV, [&] { at<QPushButton>("cmdCancel")->click(); });
}

TEST_F(frmExtractTest, theCloseBoxEndsTheWindowInEachStateAndNothingIsHeardAnyMore)
{
    run(EncMP3, [&] {
        Q_EMIT engine.ExtractionPrepared();
        system.log.take();
        system.pump.actions[system.pump.calls + 1] = [&] { window->close(); };
        EXPECT_TRUE(engine.isHeard());
        Q_EMIT engine.ExtractionStatus(0, 0);
        EXPECT_FALSE(engine.isHeard());
        Q_EMIT engine.TrackFinished();
        Q_EMIT engine.ExtractionComplete(); // no box comes
        EXPECT_TRUE(system.log.take().isEmpty());
    });
}

TEST_F(frmExtractTest, startsThatFailAreTold)
{
    engine.starts = false;
    system.dialogs.expectWholeBox({.text = QStringLiteral("Extraction could not be started.")});
    run(EncMP3, [&] { EXPECT_TRUE(window->isVisible()); });
    engine.startFailure = 5;
    system.dialogs.expectWholeBox(
        {.text = QStringLiteral("Can not start ripping, please change the options from "
                                "options dialog and try again.\nError 5 no such rate"),
         .icon = BoxIcon::Critical});
    run(EncMP3, [&] { EXPECT_TRUE(window->isVisible()); });
    for (Row &row : host.rows)
        row.checked = false;
    system.dialogs.expectWholeBox({.text = QStringLiteral("No Tracks Selected for Extraction.")});
    run(EncMP3, [&] { EXPECT_FALSE(window->isVisible()); });
}

TEST_F(frmExtractTest, aTrackWithoutLengthIsAFailureOfTheProgram)
{
    system.dialogs.expectBox(QStringLiteral("Run-time error '11':\n\nDivision by zero"));
    system.log.take();
    run(EncMP3, [&] {
        Q_EMIT engine.TrackStarted(QStringLiteral("/out/a.mp3"), 5, 5, 1);
        Q_EMIT engine.ExtractionStatus(CDRipperX::Progress, 5);
        EXPECT_TRUE(system.log.take().contains(QStringLiteral("end 1")));
    });
}

TEST_F(frmExtractTest, trackInformationGoesIntoMp3AndOggFilesOnly)
{
    disc.Album = QStringLiteral("Album");
    disc.Artist = QStringLiteral("Artist");
    disc.Year = QStringLiteral("1999");
    disc.Comment = QStringLiteral("Comment");
    disc.GenreIndex = 17;
    disc.TrackTitles = QStringLiteral("First|Second"); // the third is missing
    for (const QString &file : {QStringLiteral("/out/a.mp3"), QStringLiteral("/out/c.mp3")})
        tags.files[file] = {};
    run(EncOGG, [&] {
        system.log.take();
        trackRips(1);
        EXPECT_EQ(status().first(), QStringLiteral("Save Tracks Info to File: a.mp3"));
        disc.Year = QStringLiteral("about 2000");
        trackRips(3);
        const QString calls = system.log.take().join(u'\n');
        EXPECT_EQ(calls,
                  QStringLiteral("AInfo.TagAlbum = Album\nAInfo.TagArtist = Artist\nAInfo.TagYear = 1999\n"
                                 "AInfo.TagTrack = 1\nAInfo.TagTitle = First\nAInfo.TagComment = Comment\n"
                                 "AInfo.TagGenre = 17\nAInfo.WriteTags(/out/a.mp3)\n"
                                 "AInfo.TagAlbum = Album\nAInfo.TagArtist = Artist\nAInfo.TagTrack = 3\n"
                                 "AInfo.TagComment = Comment\nAInfo.TagGenre = 17\n"
                                 "AInfo.WriteTags(/out/c.mp3)"));
    });
    // The values that couldn't be set are those of the file before.
    EXPECT_EQ(tags.files[QStringLiteral("/out/c.mp3")].title, QStringLiteral("First"));
    EXPECT_EQ(tags.files[QStringLiteral("/out/c.mp3")].year, 1999);

    const auto isSilent = [&](qint32 encType) {
        run(encType, [&] {
            system.log.take();
            trackRips(1);
            EXPECT_TRUE(system.log.take().isEmpty()) << encType;
        });
    };
    isSilent(EncWAV);
    isSilent(EncWMA);
    disc.SaveToFiles = false;
    isSilent(EncMP3);
    disc = DiscInfo(); // nothing to save
    isSilent(EncMP3);
    disc.Album = QStringLiteral("Album");
    system.write(QStringLiteral("settings.ini"), "[Other]\nSaveID3=0\n");
    isSilent(EncMP3);
}

TEST_F(frmExtractTest, aVqfJobTurnsItsFilesOneByOneAndOpensTheFolderInAnyCase)
{
    system.write(QStringLiteral("settings.ini"), "[Other]\nOpen Explorer=False\n");
    host.folder = system.folder() + u'/';
    host.rows = {{QStringLiteral("a.wav")}, {QStringLiteral("b.WAV")}};
    for (const Row &row : host.rows)
        system.write(row.name, "RIFF");
    run(EncVQF, [&] {
        Q_EMIT engine.ExtractionPrepared();
        system.log.take();
        Q_EMIT engine.ExtractionComplete();
        EXPECT_EQ(window->windowTitle(),
                  QStringLiteral("Converting temporary WAV File(s) to VQF File(s), please wait ..."));
        Q_EMIT vqf->VqfProgress(40);
        EXPECT_EQ(label("lblTrackProgress"), QStringLiteral("Current: 40%"));
        Q_EMIT vqf->VqfProgress(130);
        EXPECT_EQ(label("lblTotalProgress"), QStringLiteral("   Total: 1/2"));
        EXPECT_EQ(at<QProgressBar>("prgTrack")->value(), 0);
        EXPECT_FALSE(QFile::exists(host.folder + QStringLiteral("a.wav")));
        EXPECT_TRUE(QFile::exists(host.folder + QStringLiteral("b.WAV")));
        Q_EMIT vqf->VqfFailed(QStringLiteral("the disk is full"));
        EXPECT_TRUE(at<QPlainTextEdit>("txtStatus")
                        ->toPlainText()
                        .startsWith(QStringLiteral("b.WAV can't be converted: the disk is full.\n")));
        EXPECT_TRUE(window->isVisible());
        system.dialogs.expectWholeBox({.text = completed, .title = completed});
        Q_EMIT vqf->VqfProgress(100);
        EXPECT_FALSE(window->isVisible());
        EXPECT_EQ(system.log.take(),
                  (QStringList{QStringLiteral("in a.wav"), QStringLiteral("out a.vqf"),
                               QStringLiteral("VqfBitRate 96"), QStringLiteral("VqfEncode"),
                               QStringLiteral("in b.WAV"), QStringLiteral("out b.vqf"),
                               QStringLiteral("VqfEncode"), QStringLiteral("explore")}));
    });
}

TEST_F(frmExtractTest, theVqfPassFailsAtAMissingFileAndEndsWithItsWindow)
{
    host.folder = system.folder() + u'/';
    host.rows = {{QStringLiteral("data.wav")}};
    engine.tracks = {{0, 10, false}};
    system.dialogs.expectBox(QStringLiteral("Run-time error '53':\n\nFile not found"));
    run(EncVQF, [&] {
        Q_EMIT engine.ExtractionComplete();
        Q_EMIT vqf->VqfProgress(100);
        EXPECT_TRUE(system.log.take().contains(QStringLiteral("end 1")));
    });
}

} // namespace
