#include "controls/InputGate.h"

#include "testkit/Ui.h"

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <optional>

namespace {

TEST(InputGateTest, onlyAskingToCancelGetsThrough)
{
    QWidget window;
    QWidget other;
    auto *layout = new QVBoxLayout(&window);
    auto *box = new QLineEdit;
    auto *button = new QPushButton(QStringLiteral("&Go"));
    auto *stop = new QPushButton(QStringLiteral("&Stop"));
    for (QWidget *child : std::initializer_list<QWidget *>{box, button, stop})
        layout->addWidget(child);
    int clicks = 0;
    int stops = 0;
    QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_G), &window);
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++clicks; });
    window.show();
    other.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    std::optional<InputGate> gate(std::in_place, window, *stop);
    QObject::connect(stop, &QPushButton::clicked, [&] { ++stops; });
    const auto tryAll = [&] {
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::keyClick(button, Qt::Key_Space);
        QTest::keyClicks(box, QStringLiteral("typed"));
        QTest::keyClick(&window, Qt::Key_G, Qt::ControlModifier);
        QTest::keyClick(&window, Qt::Key_G, Qt::AltModifier);
    };
    tryAll();
    other.close();
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(box->text(), QString());
    EXPECT_TRUE(other.isVisible());
    EXPECT_FALSE(gate->isCancelled());

    QTest::mouseClick(stop, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(waitFor([&] { return stops == 2; }));
    {
        QDialog question;
        question.setModal(true);
        auto *answer = new QPushButton(&question);
        QObject::connect(answer, &QPushButton::clicked, &question, &QDialog::accept);
        question.show();
        QTest::mouseClick(answer, Qt::LeftButton);
        EXPECT_EQ(question.result(), QDialog::Accepted);
        EXPECT_FALSE(gate->isCancelled());
    }
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_TRUE(gate->isCancelled());
    gate.emplace(window, *stop);
    window.close();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(gate->isCancelled());

    gate.reset();
    tryAll();
    EXPECT_TRUE(waitFor([&] { return clicks == 4; }));
    EXPECT_EQ(box->text(), QStringLiteral("typed"));
    window.close();
    EXPECT_FALSE(window.isVisible());
}

} // namespace
