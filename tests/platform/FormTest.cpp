#include "platform/Form.h"

#include "testkit/Logged.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QPushButton>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace {

/// Pumps from inside its handler, as the windows of long works do.
class PumpingForm : public FormOf<QDialog>
{
public:
    PumpingForm(const Desktop &desktop, CallLog &log)
        : FormOf(desktop), m_log(log), button(new QPushButton(this))
    {
        attach(button, &QPushButton::clicked, [this] {
            m_log.add(QStringLiteral("begin"));
            this->desktop().pump.processEvents();
            m_log.add(QStringLiteral("end"));
        });
    }
    ~PumpingForm() override { m_log.add(QStringLiteral("deleted")); }

    void Form_Load() override
    {
        if (onLoad)
            onLoad();
    }
    void Form_Unload() override { m_log.add(QStringLiteral("unload")); }

private:
    CallLog &m_log;

public:
    QPushButton *button;
    std::function<void()> onLoad;
};

class FormTest : public ::testing::Test
{
protected:
    TestDesktop system;
    FormSlot<PumpingForm> slot{[this] { return makeForm<PumpingForm>(system.desktop(), system.log); }};
};

TEST_F(FormTest, unloadingInsideARunningHandlerLetsItEnd)
{
    QPointer<PumpingForm> form = slot.form().get();
    system.pump.actions[1] = [&] {
        form->close();
        deleteUnloaded();
        EXPECT_FALSE(slot.isLoaded());
        EXPECT_TRUE(form);     // the handler still runs
        form->button->click(); // nothing starts any more
    };
    form->show();
    form->button->click();
    deleteUnloaded();
    EXPECT_FALSE(form);
    EXPECT_EQ(system.log.calls(), (QStringList{QStringLiteral("begin"), QStringLiteral("unload"),
                                               QStringLiteral("end"), QStringLiteral("deleted")}));
}

TEST_F(FormTest, aWindowExistsOnFirstUseAndAfreshAfterUnloading)
{
    EXPECT_FALSE(slot.isLoaded());
    QPointer<PumpingForm> first = slot.form().get();
    EXPECT_EQ(slot.form().get(), first);
    first->unload();
    deleteUnloaded();
    EXPECT_FALSE(first);
    EXPECT_NE(slot.form(), nullptr);
}

TEST_F(FormTest, aFormLoadsOnceAndOneThatIsUnloadedMeanwhileIsNeverShown)
{
    auto form = slot.form();
    int loads = 0;
    form->onLoad = [&] {
        EXPECT_EQ(slot.form(), form); // asked for again meanwhile, it is the same one
        ++loads;
    };
    form->showModeless();
    form->showModeless();
    EXPECT_EQ(loads, 1);
    form->unload();
    auto second = slot.form();
    second->onLoad = [&] { second->unload(); };
    second->showModal(nullptr);
    EXPECT_FALSE(second->isVisible());
}

TEST_F(FormTest, aModalWindowReturnsWhenItIsUnloaded)
{
    auto form = slot.form();
    QTimer::singleShot(0, form.get(), [&] {
        EXPECT_EQ(form->windowModality(), Qt::ApplicationModal);
        QTest::keyClick(form.get(), Qt::Key_Escape); // there is no cancel button: nothing happens
        EXPECT_TRUE(form->isVisible());
        form->close();
    });
    form->showModal(nullptr);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(system.log.take(), QStringList{QStringLiteral("unload")});
}

TEST_F(FormTest, aFatalFailureShowsItsBoxEndsTheProgramAndUnwindsWaitingHandlers)
{
    auto form = slot.form();
    system.dialogs.expectWholeBox(
        {.text = QStringLiteral("Run-time error '9':\n\nSubscript out of range"), .icon = BoxIcon::Critical});
    system.pump.actions[1] = [&] {
        system.border.run([] { throw RunTimeFailure(RunTimeFailure::SubscriptOutOfRange); });
        system.border.run([] { throw RunTimeFailure(RunTimeFailure::Overflow); }); // no second box
        system.end.unwindIfEnding(); // as the real pump does on its way out
    };
    form->button->click();
    EXPECT_EQ(system.log.take(), (QStringList{QStringLiteral("begin"), QStringLiteral("end 1")}));
    QTimer::singleShot(0, form.get(), [&] { form->unload(); });
    EXPECT_THROW(form->showModal(nullptr), ProgramEnding);
}

TEST_F(FormTest, whateverReachesTheBorderIsToldInTheErrorBox)
{
    struct Row
    {
        std::function<void()> thrower;
        const char *text;
    };
    const Row rows[] = {
        {[] { throw std::bad_alloc(); }, "Run-time error '7':\n\nOut of memory"},
        {[] { throw std::runtime_error("no way"); }, "Run-time error '51':\n\nInternal error: no way"},
        {[] { throw 42; }, "Run-time error '51':\n\nInternal error"},
    };
    for (const Row &row : rows) {
        int code = -1;
        ProgramEnd end([&](int with) { code = with; });
        system.dialogs.expectWholeBox({.text = QString::fromLatin1(row.text), .icon = BoxIcon::Critical});
        Border(system.dialogs, end).run(row.thrower);
        EXPECT_EQ(code, 1);
        EXPECT_EQ(takeLogged("tonelift.program").size(), 1);
    }
    system.border.run([] { throw TaskCancelled(); });
    EXPECT_FALSE(system.end.isEnding()) << "who cancels a task expects that";
}

} // namespace
