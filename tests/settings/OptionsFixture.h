#pragma once

#include "controls/DropDownList.h"
#include "controls/OptionButton.h"
#include "controls/ReportListView.h"
#include "controls/TickBox.h"
#include "settings/frmOptions.h"
#include "testkit/FakeEncoders.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>
#include <gtest/gtest.h>

/// The real window over doubles of the three encoders and a settings.ini of its own.
class OptionsTest : public ::testing::Test
{
protected:
    using Action = std::function<void()>;

    /// Shows the window, runs `whileOpen`, and closes the window by its close box if that left it open. The
    /// log begins anew once the window is open; `opening` holds what was in it until then.
    void open(const Action &whileOpen)
    {
        auto window = makeForm<frmOptions>(system.desktop());
        form = window.get();
        system.log.take();
        bool ran = false;
        QTimer::singleShot(0, window.get(), [&] {
            opening = system.log.take();
            ran = true;
            whileOpen();
            window->close();
        });
        window->ShowForm(encoders.mp3, encoders.wma, encoders.vorbis, nullptr);
        form = nullptr;
        ASSERT_TRUE(ran);
    }

    template <typename Control>
    Control *at(const char *name) const
    {
        return control<Control>(*form, QString::fromLatin1(name));
    }
    DropDownList *list(const char *name) const { return at<DropDownList>(name); }
    OptionButton *option(const char *name) const { return at<OptionButton>(name); }
    TickBox *box(const char *name) const { return at<TickBox>(name); }
    ReportListView *preview() const { return at<ReportListView>("lvwTracks"); }
    /// The same, with its page chosen.
    QWidget *shown(const QString &name) const
    {
        auto *found = control<QWidget>(*form, name);
        for (int i = 0; i < 6; ++i) {
            if (control<QWidget>(*form, QStringLiteral("picOptions_%1").arg(i))->isAncestorOf(found))
                at<QTabBar>("tbsOptions")->setCurrentIndex(i);
        }
        return found;
    }
    void press(const char *name) const
    {
        shown(QString::fromLatin1(name));
        at<QAbstractButton>(name)->click();
    }
    /// What a list shows as chosen; empty where nothing is.
    QString chosen(const char *name) const { return list(name)->currentText(); }

    /// Chooses the entry with this text as a user does.
    void choose(const char *name, const char *text) const
    {
        auto *drop = at<QComboBox>(name);
        const int row = drop->findText(QString::fromLatin1(text));
        ASSERT_GE(row, 0) << name << " has no " << text;
        drop->setCurrentIndex(row);
        Q_EMIT drop->activated(row);
    }

    void writeIni(const QByteArray &content) { system.write(QStringLiteral("settings.ini"), content); }
    QString ini() const
    {
        QFile file(system.settingsFile());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    bool isOpen() const { return form->isVisible(); }
    void expectSaved()
    {
        system.dialogs.expectWholeBox({.text = QStringLiteral("Settings are saved sucessfully!")});
    }

    TestDesktop system;
    FakeEncoders encoders{system.log};
    frmOptions *form = nullptr;
    QStringList opening;
};

inline QStringList lines(const char *text)
{
    return QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts);
}
