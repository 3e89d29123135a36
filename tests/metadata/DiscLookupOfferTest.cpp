#include "metadata/DiscLookupOffer.h"

#include "settings/SettingsKeys.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <gtest/gtest.h>

namespace {

class DiscLookupOfferTest : public ::testing::Test
{
protected:
    DiscLookupOfferTest()
    {
        QObject::connect(offer.timer(), &QTimer::timeout, &mainWindow, [this] { offer.Timer3_Timer(); });
    }

    void expectQuestion(BoxAnswer answer)
    {
        system.dialogs.expectWholeBox(
            {.text = QStringLiteral("Do you want to download the CD information from the Internet freedb?"),
             .icon = BoxIcon::Question,
             .buttons = BoxButtons::YesNo,
             .title = QStringLiteral("Download from FreeDB")},
            answer, [this] { EXPECT_FALSE(timer()->isActive()); });
    }

    QTimer *timer() { return control<QTimer>(mainWindow, QStringLiteral("Timer3")); }

    TestDesktop system;
    SettingsStore settings{system.paths};
    QWidget mainWindow;
    bool mayAsk = true;
    DiscLookupOffer offer{{&mainWindow, system.dialogs, settings},
                          [this] { return mayAsk; },
                          [this] { system.log.add(QStringLiteral("show frmCddb")); }};
};

TEST_F(DiscLookupOfferTest, oneReadingGivesOneQuestionASecondLater)
{
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 3000);
    offer.OfferDiscLookup(8);
    EXPECT_EQ(timer()->interval(), 1000);
    expectQuestion(BoxAnswer::Yes);
    fireTimer(timer());
    EXPECT_EQ(system.log.take(), QStringList{QStringLiteral("show frmCddb")});
    EXPECT_FALSE(timer()->isActive());

    offer.OfferDiscLookup(8);
    expectQuestion(BoxAnswer::No);
    fireTimer(timer());
    EXPECT_EQ(system.log.take(), QStringList());
}

TEST_F(DiscLookupOfferTest, theQuestionWaitsUntilTheMainWindowCanAsk)
{
    mayAsk = false;
    offer.OfferDiscLookup(1);
    fireTimer(timer());
    EXPECT_TRUE(timer()->isActive());
    mayAsk = true;
    expectQuestion(BoxAnswer::No);
    fireTimer(timer());
}

TEST_F(DiscLookupOfferTest, theSettingAndTheTracksDecide)
{
    offer.OfferDiscLookup(0);
    EXPECT_FALSE(timer()->isActive());
    offer.OfferDiscLookup(1);
    offer.OfferDiscLookup(0); // an empty disc leaves it as it is
    EXPECT_TRUE(timer()->isActive());
    settings.write(Ini::DownloadFreeDB, QStringLiteral("False"));
    offer.OfferDiscLookup(1);
    EXPECT_FALSE(timer()->isActive());
}

} // namespace
