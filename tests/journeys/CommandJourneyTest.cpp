#include "journeys/Journey.h"

#include <QAction>

namespace {

struct CommandRow
{
    const char *name;
    const char *action;
    const char *window;
};

void PrintTo(const CommandRow &row, std::ostream *out)
{
    *out << row.name;
}

class CommandJourney : public Journey
{};

class ModalCommand : public Journey, public ::testing::WithParamInterface<CommandRow>
{};

TEST_P(ModalCommand, opensItsWindowAndReturnsWhenThatIsClosed)
{
    insert(demodisc::shortDisc(1));
    start(1);
    for (int i = 0; i < 2; ++i) { // a window is made afresh after unloading
        QString opened;
        QTimer::singleShot(0, &main(), [&] {
            QWidget *window = QApplication::activeModalWidget();
            ASSERT_TRUE(window);
            opened = window->objectName();
            window->close();
        });
        control<QAction>(main(), QLatin1String(GetParam().action))->trigger();
        EXPECT_EQ(opened, QLatin1String(GetParam().window));
        EXPECT_TRUE(main().isVisible());
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, ModalCommand,
                         ::testing::Values(CommandRow{"Options", "mnuToolsSub_7", "frmOptions"},
                                           CommandRow{"OptionsButton", "Toolbar1_13", "frmOptions"},
                                           CommandRow{"Lookup", "mnuToolsSub_3", "frmCddb"},
                                           CommandRow{"Tracks", "mnuToolsSub_4", "frmTrack"},
                                           CommandRow{"TagEditor", "mnuToolsSub_5", "frmID3E"},
                                           CommandRow{"About", "mnuHelpSub_9", "frmAbout"},
                                           CommandRow{"Vista", "mnuHelpSub_2", "frmVista"},
                                           CommandRow{"Links", "mnuProdSub_9", "frmProducts"}),
                         ::testing::PrintToStringParamName());

TEST_F(CommandJourney, theConverterStandsBesideTheMainWindowAndOutlivesIt)
{
    start(0);
    control<QAction>(main(), QStringLiteral("Toolbar1_12"))->trigger();
    const auto converter = [] {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QStringLiteral("frmMain1") && window->isVisible())
                return window;
        }
        return static_cast<QWidget *>(nullptr);
    };
    ASSERT_TRUE(converter());
    EXPECT_FALSE(converter()->isModal());
    main().close();
    deleteUnloaded();
    EXPECT_FALSE(program.mainWindow());
    ASSERT_TRUE(converter());
    converter()->close();
    EXPECT_FALSE(converter());
}

} // namespace
