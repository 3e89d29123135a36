#pragma once

#include "controls/DropDownList.h"
#include "controls/OptionButton.h"
#include "controls/TickBox.h"
#include "converter/frmMain1.h"
#include "testkit/FakeNCTAudioFile.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// The converter's window over a reader and a writer that write into the common log.
class ConverterFixture : public ::testing::Test
{
protected:
    FormSlot<frmMain1> slot{[this] {
        auto readerOfWindow = std::make_unique<FakeNCTAudioFile>(system.log, u"FileR"_s);
        auto writerOfWindow = std::make_unique<FakeNCTAudioFile>(system.log, u"FileW"_s);
        reader = readerOfWindow.get();
        writer = writerOfWindow.get();
        return makeForm<frmMain1>(system.desktop(), std::move(readerOfWindow), std::move(writerOfWindow));
    }};

    /// Opens the window; the log begins anew.
    void open()
    {
        window = slot.form().get();
        window->showModeless();
        writer->during = [this](const QString &call) { keepOnDisk(call); };
        system.log.take();
    }

    template <typename Control>
    Control *get(const QString &name)
    {
        return control<Control>(*window, name);
    }
    void press(const QString &button) { get<QPushButton>(button)->click(); }
    void choose(const QString &option) { get<OptionButton>(option)->select(); }
    void tick(const QString &box, bool ticked = true) { get<TickBox>(box)->setTicked(ticked); }
    void pick(const QString &list, int row) { get<DropDownList>(list)->setListIndex(row); }
    QString text(const QString &label) { return get<QLabel>(label)->text(); }
    QString nextCaption() { return get<QPushButton>(u"cmdNext"_s)->text(); }
    bool isEnabled(const QString &name) { return get<QWidget>(name)->isEnabled(); }
    QStringList rows()
    {
        QStringList texts;
        const auto *list = get<QListWidget>(u"lstFile"_s);
        for (int row = 0; row < list->count(); ++row)
            texts.append(list->item(row)->text());
        return texts;
    }
    /// The frames that are shown, by name.
    QStringList shownFrames()
    {
        QStringList names;
        for (const char *name : {"frmSrcFmt", "frmSource", "frmOutFmt", "frmMP3Set", "frmWAVSet", "frmWMASet",
                                 "frmOggSet", "frmOtherSet", "frmConvert"}) {
            if (get<QWidget>(QLatin1StringView(name))->isVisible())
                names.append(QLatin1StringView(name));
        }
        return names;
    }

    /// Adds sources by the open dialog; the second step is shown.
    void add(const QStringList &paths)
    {
        system.dialogs.expectFiles(paths);
        press(u"cmdAdd"_s);
    }
    /// From the first step to the last, with these sources, to WAV or what `option` says.
    void goToLastStep(const QStringList &paths, const QString &option = u"rdDesWAV"_s)
    {
        press(u"cmdNext"_s);
        add(paths);
        press(u"cmdNext"_s);
        choose(option);
        for (int step = 3; step < 6; ++step)
            press(u"cmdNext"_s);
        system.log.take();
    }
    /// What happens at the n-th of the coming passes of events.
    void atPass(int n, std::function<void()> action)
    {
        system.pump.actions[system.pump.calls + n] = std::move(action);
    }
    QString output(const QString &name) { return system.folder() + u"/output/"_s + name; }

    TestDesktop system;
    QPointer<frmMain1> window;
    QPointer<FakeNCTAudioFile> reader;
    QPointer<FakeNCTAudioFile> writer;

private:
    /// A closed destination exists, holding the number of values it was given.
    void keepOnDisk(const QString &call)
    {
        static constexpr QLatin1StringView opening("FileW.OpenWrite("), writing("FileW.WriteSamples(");
        if (call.startsWith(opening)) {
            m_destination = call.mid(opening.size()).chopped(1);
            m_values = 0;
        } else if (call.startsWith(writing)) {
            m_values += call.mid(writing.size()).chopped(1).toInt();
        } else if (call == u"FileW.CloseFile"_s) {
            QFile file(m_destination);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << m_destination.toStdString();
            file.write(QByteArray::number(m_values));
        }
    }

    QString m_destination;
    int m_values = 0;
};
