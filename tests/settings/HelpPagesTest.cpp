#include "settings/HelpPages.h"

#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"

#include <QDir>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

class HelpPagesTest : public ::testing::Test
{
protected:
    QString opened()
    {
        openHelp(system.desktop());
        return system.log.take().join(u'\n').mid(5); // behind "open "
    }
    static QString read(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return QString::fromUtf8(file.readAll());
    }

    TestDesktop system;
};

TEST_F(HelpPagesTest, theNearestHelpThatTheDesktopCanShowIsOpened)
{
    const QString cached = opened();
    EXPECT_TRUE(cached.startsWith(QDir::homePath()) && cached.endsWith(QStringLiteral("/index.html")));
    EXPECT_EQ(read(cached), read(QStringLiteral(":/help/index.html")));
    const QString page = system.write(QStringLiteral("help/index.html"), "page");
    EXPECT_EQ(opened(), page);
    const QString book = system.write(QStringLiteral("tonelift.chm"), "book");
    EXPECT_EQ(opened(), book);
    system.shell.opens = false;
    EXPECT_EQ(opened(), page);
}

TEST_F(HelpPagesTest, oldPagesInTheCacheAreReplaced)
{
    const QString cached = opened();
    QFile stale(cached);
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.write("stale");
    stale.close();
    EXPECT_EQ(read(opened()), read(QStringLiteral(":/help/index.html")));
}

TEST_F(HelpPagesTest, everyLinkLeadsToAPageAndAnchorOfTheHelp)
{
    opened();
    const QDir pages(QStringLiteral(":/help"));
    const QStringList names = pages.entryList({QStringLiteral("*.html")});
    EXPECT_GE(names.size(), 10);
    const QRegularExpression link(QStringLiteral("(?:href|src)=\"([^\"]*)\""));
    for (const QString &name : names) {
        const QString page = read(pages.filePath(name));
        EXPECT_TRUE(page.contains(QStringLiteral("href=\"style.css\""))) << name.toStdString();
        for (auto match = link.globalMatch(page); match.hasNext();) {
            const QString target = match.next().captured(1);
            const QString file = target.section(u'#', 0, 0);
            const QString anchor = target.section(u'#', 1);
            const QString text =
                read(pages.filePath(file.isEmpty() ? name : file)); // no outside links either
            EXPECT_TRUE(anchor.isEmpty() || text.contains(QStringLiteral("id=\"%1\"").arg(anchor)))
                << name.toStdString() << " links to " << target.toStdString();
        }
    }
}

} // namespace
