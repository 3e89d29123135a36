#include "platform/qt/QtDialogs.h"

#include "platform/Dialogs.h"
#include "platform/ProgramEnd.h"
#include "platform/qt/KeptCustomColors.h"
#include "testkit/Ui.h"

#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

using namespace Qt::StringLiterals;

class QtDialogsTest : public ::testing::Test
{
protected:
    /// Does it in the next dialog that is open.
    static void inDialog(const std::function<void(QDialog &)> &action)
    {
        QTimer::singleShot(0, qApp, [action] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            action(*dialog);
        });
    }

    ProgramEnd end{[](int) {}};
    QtDialogs dialogs{end};
};

TEST_F(QtDialogsTest, returnAndEscapeEndTheWholeFontDialog)
{
    const FontChoice choice{QApplication::font(), 0xff};
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        inDialog([key](QDialog &dialog) {
            ASSERT_TRUE(waitFor([&] { return dialog.focusWidget(); }));
            QTest::keyClick(dialog.focusWidget(), key);
            if (dialog.isVisible()) {
                ADD_FAILURE() << "still open";
                dialog.reject();
            }
        });
        EXPECT_EQ(dialogs.chooseFont(nullptr, choice).has_value(), key == Qt::Key_Return);
    }
}

TEST_F(QtDialogsTest, returnGivesTheAnswerThatABoxPresets)
{
    for (const BoxAnswer preset : {BoxAnswer::Yes, BoxAnswer::No}) {
        inDialog([](QDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
        EXPECT_EQ(dialogs.messageBox(
                      nullptr, {.text = u"Overwrite?"_s, .buttons = BoxButtons::YesNo, .preset = preset}),
                  preset);
    }
}

TEST_F(QtDialogsTest, customColoursOfOtherProgramsStay)
{
    const KeptCustomColors kept;
    QColorDialog::setCustomColor(3, Qt::green);
    inDialog([](QDialog &dialog) {
        EXPECT_EQ(QColorDialog::customColor(3), QColor(Qt::black));
        dialog.reject();
    });
    EXPECT_EQ(dialogs.chooseColor(nullptr, 0xff), Dialogs::ColorCancelled);
    EXPECT_EQ(QColorDialog::customColor(3), QColor(Qt::green));
}

TEST_F(QtDialogsTest, aPromptIsShownToTheLetter)
{
    inDialog([](QDialog &dialog) {
        const auto labels = dialog.findChildren<QLabel *>();
        ASSERT_EQ(labels.size(), 1);
        EXPECT_EQ(labels[0]->text(), u"<b>Simon && Co"_s); // which shows as one "&"
        EXPECT_EQ(labels[0]->textFormat(), Qt::PlainText);
        dialog.accept();
    });
    EXPECT_EQ(
        dialogs.inputBox(nullptr,
                         {.prompt = u"<b>Simon & Co"_s, .title = u"t"_s, .text = u"a & b"_s, .position = {}}),
        u"a & b"_s);
}

TEST_F(QtDialogsTest, filtersAreShownAsTheyAreAndMeanBothCases)
{
    QTemporaryDir folder;
    inDialog([](QDialog &dialog) {
        auto &files = dynamic_cast<QFileDialog &>(dialog);
        EXPECT_EQ(files.nameFilters().value(1), u"OGG Vorbis Files(*.ogg) (*.ogg *.OGG)"_s);
        EXPECT_TRUE(files.testOption(QFileDialog::HideNameFilterDetails));
        const auto *shown = dialog.findChild<QComboBox *>(u"fileTypeCombo"_s);
        ASSERT_TRUE(shown);
        EXPECT_EQ(shown->currentText(), u"OGG Vorbis Files(*.ogg)"_s);
        dialog.reject();
    });
    OpenFiles request;
    request.directory = folder.path();
    request.filters = {u"MP3 Files(*.mp3)"_s, u"OGG Vorbis Files(*.ogg)"_s};
    request.filter = 1;
    EXPECT_EQ(dialogs.openFiles(nullptr, request), QStringList());
}

} // namespace
