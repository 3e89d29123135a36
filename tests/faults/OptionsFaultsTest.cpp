#include "EachFault.h"
#include "settings/OptionsFixture.h"

namespace {

/// Takes whatever box comes.
class AnyBox : public ScriptedDialogs
{
public:
    BoxAnswer messageBox(QWidget *, const MessageBox &box) override
    {
        texts.append(box.text);
        return BoxAnswer::Ok;
    }

    QStringList texts;
};

TEST_F(OptionsTest, aSaveIsDoneOrToldAndTheFileIsTheOldOrTheNewOne)
{
    AnyBox boxes;
    const Desktop desktop{boxes,        system.shell, system.pump,   system.clock,   system.version,
                          system.paths, system.end,   system.border, system.registry};
    QByteArray saved;
    const QByteArray old = "[Other]\nSaveID3=False\n[Proxy]\nTimeout=5\n";
    auto window = makeForm<frmOptions>(desktop);
    QTimer::singleShot(0, window.get(), [&] {
        control<QPushButton>(*window, QStringLiteral("cmdSave"))->click();
        saved = contentOf(system.settingsFile());
        withEachFault(
            system.folder(),
            [&] {
                writeIni(old);
                boxes.texts.clear();
            },
            [&] { control<QPushButton>(*window, QStringLiteral("cmdSave"))->click(); },
            [&](bool failed) {
                ASSERT_EQ(boxes.texts.size(), 1);
                EXPECT_EQ(boxes.texts[0].startsWith(QStringLiteral("The settings can't be saved: ")), failed);
                const QByteArray now = contentOf(system.settingsFile());
                EXPECT_EQ(now.contains("MP3_QualityMode"), now != old);
                EXPECT_TRUE(failed || now != old);
                EXPECT_TRUE(now.endsWith("[Proxy]\nTimeout=5\n") || now.contains("[Proxy]\nTimeout=5\n[MP3"));
                EXPECT_EQ(namesIn(system.folder()), QStringList{QStringLiteral("settings.ini")});
            });
        window->close();
    });
    window->ShowForm(encoders.mp3, encoders.wma, encoders.vorbis, nullptr);
}

} // namespace
