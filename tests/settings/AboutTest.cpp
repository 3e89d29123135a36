#include "base/Deployment.h"
#include "base/Text.h"
#include "controls/LinkLabel.h"
#include "settings/SystemInformation.h"
#include "settings/frmAbout.h"
#include "settings/frmProducts.h"
#include "settings/frmVista.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QFile>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace {

class AboutTest : public ::testing::Test
{
protected:
    const std::shared_ptr<frmAbout> &about()
    {
        if (!m_about) {
            m_about = makeForm<frmAbout>(system.desktop(), QStringLiteral("Windows Vista"));
            m_about->show();
        }
        return m_about;
    }
    QString text(const char *label) { return control<QLabel>(*about(), QString::fromLatin1(label))->text(); }
    void pressSystemInfo() { control<QPushButton>(*about(), QStringLiteral("cmdSysInfo"))->click(); }
    void expectUnavailable()
    {
        system.dialogs.expectWholeBox(
            {.text = QStringLiteral("System Information Is Unavailable At This Time"),
             .icon = BoxIcon::None});
    }
    /// A string as the registry holds it.
    static RegistryValue text(const QString &value)
    {
        return {RegistryValue::String, value.toLocal8Bit() + '\0'};
    }

    TestDesktop system;
    const QString toolPath = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO\\PATH");
    const QString toolFolder = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location\\MSINFO");

private:
    std::shared_ptr<frmAbout> m_about;
};

TEST_F(AboutTest, theBoxTellsProgramAddressesAndSystem)
{
    EXPECT_EQ(about()->windowTitle(), QStringLiteral("About Tonelift"));
    EXPECT_EQ(text("lblTitle") + u' ' + text("lblVersion"),
              QStringLiteral("Tonelift Version ") + Deployment::ProductVersion);
    EXPECT_EQ(text("LabelSys"), QStringLiteral("Windows Vista"));
    auto *internet = control<LinkLabel>(*about(), QStringLiteral("lblInternet"));
    auto *support = control<LinkLabel>(*about(), QStringLiteral("lblSupport"));
    EXPECT_EQ(internet->text(), Deployment::WebAddress);
    QTest::mouseClick(internet, Qt::LeftButton);
    QTest::mouseClick(internet, Qt::RightButton);
    QTest::keyClick(support, Qt::Key_Return);
    EXPECT_EQ(system.log.take(), (QStringList{QStringLiteral("open ") + Deployment::WebAddress,
                                              QStringLiteral("open mailto:") + Deployment::SupportAddress}));
    QTest::keyClick(about().get(), Qt::Key_Escape);
    EXPECT_TRUE(about()->isUnloaded());
}

TEST_F(AboutTest, theRegistrysToolIsStartedFirst)
{
    system.shell.programs[QStringLiteral("hardinfo")] = QStringLiteral("/usr/bin/hardinfo");
    const QString tool = system.write(QStringLiteral("MSINFO32.EXE"), "x");
    system.registry.values[toolFolder] = text(system.folder());
    pressSystemInfo();
    system.registry.values[toolPath] = text(QStringLiteral("c:\\msinfo.exe"));
    pressSystemInfo();
    EXPECT_EQ(system.log.take(),
              (QStringList{QStringLiteral("start ") + tool, QStringLiteral("start c:\\msinfo.exe")}));
}

TEST_F(AboutTest, withoutARegistryTheDesktopsToolIsStarted)
{
    system.registry.values[toolFolder] = text(system.folder() + QStringLiteral("/nothing here"));
    expectUnavailable();
    pressSystemInfo();
    system.shell.programs[QStringLiteral("hardinfo")] = QStringLiteral("/usr/bin/hardinfo");
    system.shell.programs[QStringLiteral("gnome-control-center")] =
        QStringLiteral("/usr/bin/gnome-control-center");
    pressSystemInfo();
    EXPECT_EQ(system.log.take(),
              QStringList{QStringLiteral("start /usr/bin/gnome-control-center info-overview")});
    system.shell.starts = false;
    expectUnavailable();
    pressSystemInfo();
}

TEST(SystemInformation, aRegistryValueIsReadByItsType)
{
    FakeRegistry registry;
    const auto value = [&](const RegistryValue &stored) {
        registry.values[QStringLiteral("key\\name")] = stored;
        QString text = QStringLiteral("before");
        const bool found = GetKeyValue(registry, Registry::LocalMachine, QStringLiteral("key"),
                                       QStringLiteral("name"), text);
        return QString((found ? QStringLiteral("yes ") : QStringLiteral("no ")) + text);
    };
    EXPECT_EQ(value({RegistryValue::String, QByteArray("c:\\x\0", 5)}), QStringLiteral("yes c:\\x"));
    EXPECT_EQ(value({RegistryValue::String, QByteArray()}), QStringLiteral("yes "));
    EXPECT_EQ(value({RegistryValue::DoubleWord, QByteArray("\x05\x01\x00\x00", 4)}),
              QStringLiteral("yes 261"));
    EXPECT_EQ(value({RegistryValue::DoubleWord, QByteArray("\xff\xff\xff\xff", 4)}),
              QStringLiteral("yes -1"));
    EXPECT_EQ(value({3, QByteArray("binary")}), QStringLiteral("yes before"));
    EXPECT_EQ(value({RegistryValue::String, QByteArray(1025, 'x')}), QStringLiteral("no "));
    QString text = QStringLiteral("before");
    EXPECT_FALSE(
        GetKeyValue(registry, Registry::LocalMachine, QStringLiteral("key"), QStringLiteral("other"), text));
    EXPECT_EQ(text, QString());
}

class VistaTest : public ::testing::Test
{
protected:
    /// Opens the notice, ticks its box where told, and closes it; gives what settings.ini holds then.
    QByteArray closed(bool tick, const std::function<void(frmVista &)> &close)
    {
        const auto form = makeForm<frmVista>(system.desktop());
        form->show();
        auto *know = control<QAbstractButton>(*form, QStringLiteral("chkIKNow"));
        EXPECT_FALSE(know->isChecked());
        if (tick)
            know->click();
        close(*form);
        EXPECT_TRUE(form->isUnloaded());
        QFile file(system.settingsFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TestDesktop system;
};

TEST_F(VistaTest, everyWayOfClosingStoresTheTick)
{
    const auto byButton = [](frmVista &form) {
        control<QPushButton>(form, QStringLiteral("OKButton"))->click();
    };
    const auto byBox = [](frmVista &form) { form.close(); };
    EXPECT_EQ(closed(true, byButton), "[Other]\nIKnow=True\n");
    EXPECT_EQ(closed(false, byBox), "[Other]\nIKnow=False\n"); // takes the earlier answer back
    EXPECT_EQ(closed(true, byBox), "[Other]\nIKnow=True\n");
}

TEST_F(VistaTest, theNoticeHasItsLines)
{
    const auto form = makeForm<frmVista>(system.desktop());
    const QStringList lines =
        control<QPlainTextEdit>(*form, QStringLiteral("Text1"))->toPlainText().split(u'\n');
    ASSERT_EQ(lines.size(), 24);
    EXPECT_EQ(lines[0], QStringLiteral("It seems that you are using a Windows Vista or higher "));
    EXPECT_EQ(lines[9], QStringLiteral("   ") + Deployment::InstallerAddress);
    EXPECT_EQ(lines[13], QStringLiteral("4, Create a folder on your PC manually \"c:\\tonelift\\\""));
    EXPECT_EQ(lines[23], QStringLiteral("   tracks are listed in the window."));
}

TEST(Products, eachRelatedLinkOpensItsAddress)
{
    TestDesktop system;
    const auto form = makeForm<frmProducts>(system.desktop());
    form->show();
    QStringList expected;
    for (int i = 0; const auto &[caption, address] : Deployment::RelatedLinks) {
        QTest::mouseClick(control<LinkLabel>(*form, QStringLiteral("lblLink_%1").arg(i++)), Qt::LeftButton);
        expected.append(QStringLiteral("open ") + address);
    }
    EXPECT_EQ(system.log.calls(), expected);
    EXPECT_EQ(expected.size(), 7);
}

} // namespace
