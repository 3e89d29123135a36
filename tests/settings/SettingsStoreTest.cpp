#include "settings/SettingsStore.h"

#include "base/SkipFailures.h"
#include "controls/ReportListView.h"
#include "settings/ListLook.h"
#include "settings/SettingsKeys.h"
#include "settings/WindowsVersion.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/faults/Faults.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

class SettingsStoreTest : public ::testing::Test
{
protected:
    void writeFile(const QByteArray &content) { system.write(QStringLiteral("settings.ini"), content); }
    QByteArray content() const
    {
        QFile file(system.settingsFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TestDesktop system;
    SettingsStore store{system.paths};
};

TEST_F(SettingsStoreTest, anEmptyValueIsOneAndAMissingKeyIsNot)
{
    EXPECT_EQ(store.read(Ini::Timeout), QStringLiteral("30"));
    writeFile("[PROXY]\ntimeout=\n");
    EXPECT_EQ(store.read(Ini::Timeout), QString());
}

TEST_F(SettingsStoreTest, storingNothingDeletesTheKey)
{
    const IniKey folder = Ini::outputDirectory(store, Formats::ofJob(EncMP3));
    store.write(folder, QStringLiteral("  /m\u00fcsic/ "));
    EXPECT_EQ(store.read(folder), QStringLiteral("/m\u00fcsic/"));
    store.write(folder, QStringLiteral("   "));
    EXPECT_EQ(content(), "[Directories]\n");
    EXPECT_EQ(store.read(folder), system.folder() + QStringLiteral("/mp3/"));
}

TEST_F(SettingsStoreTest, aValueIsCutAt2047CharactersAndLosesItsNulCharacters)
{
    EXPECT_NE(store.WriteIniValue(QStringLiteral("s"), QStringLiteral("k"), QString(3000, u'x'),
                                  store.SettingsFilePath()),
              0);
    EXPECT_EQ(
        store.ReadIniValue(QStringLiteral("s"), QStringLiteral("k"), QString(), store.SettingsFilePath()),
        QString(2047, u'x'));
    QString withNul = QStringLiteral(" a b ");
    withNul[2] = QChar(u'\0');
    store.WriteIniValue(QStringLiteral("s"), QStringLiteral("k"), withNul, store.SettingsFilePath());
    EXPECT_EQ(content(), "[s]\nk=ab\n");
}

TEST_F(SettingsStoreTest, anEmptyKeyRemovesTheSectionAndAnEmptyFileNameMeansTheProgramsOwn)
{
    writeFile("[a]\nx=1\n[b]\ny=1\n");
    store.WriteIniValue(QStringLiteral("a"), QString(), QStringLiteral("ignored"), store.SettingsFilePath());
    EXPECT_EQ(content(), "[b]\ny=1\n");
    store.WriteIniValue(QStringLiteral("a"), QStringLiteral("x"), QStringLiteral("5"), QString());
    EXPECT_TRUE(QFile::exists(system.folder() + QStringLiteral("/tonelift.ini")));
    EXPECT_EQ(store.ReadIniValue(QStringLiteral("A"), QStringLiteral("X"), QString(), QString()),
              QStringLiteral("5"));
}

TEST_F(SettingsStoreTest, aTransactionStoresEverythingAtOnceOrNothing)
{
    writeFile("[Other]\nIKnow=True\n");
    {
        const SettingsStore::Transaction dropped(store);
        store.write(Ini::Timeout, QStringLiteral("5"));
    }
    EXPECT_EQ(content(), "[Other]\nIKnow=True\n");
    SettingsStore::Transaction transaction(store);
    store.write(Ini::Timeout, QStringLiteral("5"));
    store.write(Ini::IKnow, QString());
    store.write(Ini::SaveID3, QStringLiteral("False"));
    EXPECT_EQ(store.read(Ini::Timeout), QStringLiteral("30"));
    faults::arm(system.folder().toStdString());
    transaction.commit();
    faults::disarm();
    EXPECT_EQ(content(), "[Other]\nSaveID3=False\n[Proxy]\nTimeout=5\n");
    const QByteArray calls = QByteArray::fromStdString(faults::calls());
    EXPECT_EQ(calls.count("flush"), 2) << calls.data(); // the file and its folder
}

TEST_F(SettingsStoreTest, aPasswordIsForItsOwnerAlone)
{
    writeFile("[Proxy]\nProxy Password=secret\n");
    constexpr auto Owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    constexpr auto Everybody = Owner | QFile::ReadGroup | QFile::ReadOther;
    ASSERT_TRUE(QFile::setPermissions(system.settingsFile(), Everybody));
    store.write(Ini::ProxyPassword, QStringLiteral("secret")); // the text stays as it is
    EXPECT_EQ(QFile::permissions(system.settingsFile()), Owner);
    store.write(Ini::ProxyPassword, QString());
    store.write(Ini::Timeout, QStringLiteral("5"));
    EXPECT_EQ(QFile::permissions(system.settingsFile()), Owner); // permissions stay
    ASSERT_TRUE(QFile::setPermissions(system.settingsFile(), Everybody));
    store.write(Ini::Timeout, QStringLiteral("6"));
    EXPECT_EQ(QFile::permissions(system.settingsFile()), Everybody);
}

TEST_F(SettingsStoreTest, optionsAreYesUnlessTheTextSaysNo)
{
    for (const auto &[text, yes] : std::vector<std::pair<QByteArray, bool>>{
             {"0", false}, {"False", false}, {"1", true}, {"abc", true}, {"", true}}) {
        writeFile("[other]\nSaveID3=" + text + "\nOpen Explorer=" + text + "\ndownload freedb=" + text +
                  "\n");
        EXPECT_EQ(store.ReadSaveID3Option(), yes) << text.data();
        EXPECT_EQ(store.ReadOpenExplorerOption(), yes) << text.data();
        EXPECT_EQ(store.ReadDownloadFreeDBOption(), yes) << text.data();
    }
}

TEST_F(SettingsStoreTest, theListIsReadBackAsItWasSavedAndBadTextsLeaveItAlone)
{
    ReportListView list;
    LoadGridLines(store, list);
    LoadListColorsAndFont(store, list);
    EXPECT_TRUE(list.gridLines());
    EXPECT_EQ(list.font().family(), QStringLiteral("arial"));
    EXPECT_EQ(list.backColor(), 0xffffff);
    writeFile(
        "[Advanced]\nFontSize=8.25\nFontBold=1\nBackColor=255\nGridLines=no\nForeColor=red\nFontItalic=x\n"
        "FontName=\n");
    LoadGridLines(store, list);
    LoadListColorsAndFont(store, list);
    QFile::remove(system.settingsFile());
    SaveListLook(store, list);
    EXPECT_EQ(content(),
              "[Advanced]\nGridLines=True\nBackColor=255\nForeColor=0\nFontBold=True\nFontItalic=False\n"
              "FontName=arial\nFontSize=8.25\nFontStrikethrough=False\nFontUnderline=False\n");
}

TEST(WindowsVersion, theTwoNamesOfEachSystemDiffer)
{
    struct Row
    {
        int platform, major, minor;
        const char *osName, *versionName;
    };
    const Row rows[] = {
        {1, 4, 0, "Windows 95", "Windows 95"},
        {1, 4, 3, "", "Windows 95"},
        {1, 4, 10, "Windows 98", "Windows 98"},
        {1, 4, 90, "Windows Mellinnium", "Windows Me"},
        {1, 5, 0, "Windows 95", "Unknown"},
        {2, 3, 51, "Windows NT 3.51", "Windows NT 3.51"},
        {2, 4, 0, "Windows NT 4.0", "Windows NT 4"},
        {2, 5, 0, "Windows 2000", "Windows 2000"},
        {2, 5, 1, "Windows XP", "Windows XP"},
        {2, 5, 2, "Windows XP", "Unknown"},
        {2, 6, 1, "", "Windows Vista"},
        {2, 10, 0, "", "Unknown"},
        {0, 6, 0, "Failed", "Windows Vista"},
        {3, 5, 1, "Failed", "Unknown"},
    };
    FakeSystemVersion system;
    for (const Row &row : rows) {
        system.record = {row.platform, row.major, row.minor, 0, {}};
        EXPECT_EQ(GetOSName(system), QLatin1String(row.osName)) << row.platform << row.major << row.minor;
        EXPECT_EQ(GetWindowsVersionName(system), QLatin1String(row.versionName)) << row.platform << row.major;
    }
    system.record.reset();
    EXPECT_EQ(GetOSName(system), QString());
    EXPECT_EQ(GetWindowsVersionName(system), system.name);
}

} // namespace
