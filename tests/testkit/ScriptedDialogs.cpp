#include "testkit/ScriptedDialogs.h"

#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

QString describe(const QString &title, const QString &text)
{
    return title + QStringLiteral(" | ") + text;
}

} // namespace

ScriptedDialogs::~ScriptedDialogs()
{
    for (const Step &step : m_script)
        ADD_FAILURE() << "This box never came: " << step.expected.toStdString();
}

void ScriptedDialogs::expectBox(const QString &text, BoxAnswer answer, const QString &title,
                                Meanwhile meanwhile)
{
    m_script.push_back({.kind = Kind::Box,
                        .expected = describe(title, text),
                        .check = {},
                        .meanwhile = std::move(meanwhile),
                        .box = answer,
                        .text = {},
                        .files = {},
                        .font = {}});
}

void ScriptedDialogs::expectWholeBox(const MessageBox &box, BoxAnswer answer, Meanwhile meanwhile)
{
    expectBox(box.text, answer, box.title, std::move(meanwhile));
    m_script.back().check = [box](const MessageBox &shown) {
        EXPECT_EQ(static_cast<int>(shown.icon), static_cast<int>(box.icon)) << box.text.toStdString();
        EXPECT_EQ(static_cast<int>(shown.buttons), static_cast<int>(box.buttons)) << box.text.toStdString();
        EXPECT_TRUE(shown.preset == box.preset) << box.text.toStdString();
    };
}

void ScriptedDialogs::expectInput(const QString &prompt, const QString &offered, const QString &answer)
{
    Step step{};
    step.kind = Kind::Input;
    step.expected = describe(prompt, offered);
    step.text = answer;
    m_script.push_back(std::move(step));
}

void ScriptedDialogs::expectFiles(const QStringList &answer)
{
    Step step{};
    step.kind = Kind::Files;
    step.files = answer;
    m_script.push_back(std::move(step));
}

void ScriptedDialogs::expectFolder(const QString &answer)
{
    Step step{};
    step.kind = Kind::Folder;
    step.text = answer;
    m_script.push_back(std::move(step));
}

void ScriptedDialogs::expectColor(qint32 offered, qint32 answer)
{
    Step step{};
    step.kind = Kind::Color;
    step.expected = QString::number(offered);
    step.color = answer;
    m_script.push_back(std::move(step));
}

void ScriptedDialogs::expectFont(const std::optional<FontChoice> &answer)
{
    Step step{};
    step.kind = Kind::Font;
    step.font = answer;
    m_script.push_back(std::move(step));
}

ScriptedDialogs::Step ScriptedDialogs::next(Kind kind, const QString &shown)
{
    if (m_script.empty() || m_script.front().kind != kind) {
        ADD_FAILURE() << "Unexpected dialog: " << shown.toStdString();
        return {};
    }
    Step step = std::move(m_script.front());
    m_script.pop_front();
    if (!step.expected.isEmpty()) {
        EXPECT_EQ(shown, step.expected);
    }
    if (step.meanwhile)
        step.meanwhile();
    return step;
}

BoxAnswer ScriptedDialogs::messageBox(QWidget *, const MessageBox &box)
{
    const Step step = next(Kind::Box, describe(box.title, box.text));
    if (step.check)
        step.check(box);
    return step.box;
}

QString ScriptedDialogs::inputBox(QWidget *, const InputBox &box)
{
    m_lastInput = box;
    return next(Kind::Input, describe(box.prompt, box.text)).text;
}

QStringList ScriptedDialogs::openFiles(QWidget *, const OpenFiles &request)
{
    m_lastFiles = request;
    return next(Kind::Files, request.title).files;
}

QString ScriptedDialogs::browseForFolder(QWidget *, const QString &title)
{
    return next(Kind::Folder, title).text;
}

qint32 ScriptedDialogs::chooseColor(QWidget *, qint32 color)
{
    return next(Kind::Color, QString::number(color)).color;
}

std::optional<FontChoice> ScriptedDialogs::chooseFont(QWidget *, const FontChoice &choice)
{
    m_lastFont = choice;
    return next(Kind::Font, QString()).font;
}
