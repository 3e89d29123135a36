#pragma once

#include "base/DiscInfo.h"
#include "controls/ReportListView.h"
#include "metadata/TrackListHost.h"
#include "settings/SettingsStore.h"
#include "testkit/FakeNCTAudioInformation.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <gtest/gtest.h>

/// The main window's list, as rows of file names.
class FakeTrackListHost : public TrackListHost
{
public:
    explicit FakeTrackListHost(CallLog &log) : m_log(log) {}

    int trackRowCount() const override { return static_cast<int>(names.size()); }
    QString trackFileName(int row) const override { return names[row - 1]; }
    void UpdateFileNamesWithTitles() override { m_log.add(QStringLiteral("UpdateFileNamesWithTitles")); }

    QStringList names;

private:
    CallLog &m_log;
};

/// A window over the disc record, on a disc of three tracks.
template <typename Window>
class MetadataFixture : public ::testing::Test
{
protected:
    template <typename Control>
    Control *at(const char *name)
    {
        return control<Control>(*window, QString::fromLatin1(name));
    }

    void click(const char *name) { at<QAbstractButton>(name)->click(); }
    QString text(const char *name) { return at<QLineEdit>(name)->text(); }
    void type(const char *name, const QString &text) { at<QLineEdit>(name)->setText(text); }

    QStringList titles()
    {
        QStringList rows;
        auto *list = at<ReportListView>("ListView1");
        for (int row = 1; row <= list->rowCount(); ++row)
            rows += list->text(row, 0) + u' ' + list->text(row, 1);
        return rows;
    }

    void clickTitle(int row)
    {
        auto *list = at<ReportListView>("ListView1");
        const QRect place = list->visualItemRect(list->topLevelItem(row - 1));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    }

    void show(const std::shared_ptr<Window> &form)
    {
        window = form;
        window->showModeless();
    }

    TestDesktop system;
    SettingsStore settings{system.paths};
    DiscInfo disc;
    FakeTrackListHost host{system.log};
    FakeNCTAudioInformation AInfo{system.log};
    std::shared_ptr<Window> window;
};
