#include "metadata/EmailAddress.h"

#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

TEST(EmailAddressTest, acceptsWhatHasTheFormAndAKnownDomain)
{
    for (const char *address :
         {"jane@example.org", "j@a.uk", "Jane.DOE@Mail.EXAMPLE.Com", "a@com", "a@b@c.net", "@a@b.net",
          " .j..o \"x\". @x.aero", "a@-b-.museum", "~@1.2.zw", "a@b.ac"})
        EXPECT_TRUE(IsValidEmail(QString::fromLatin1(address))) << address;
}

TEST(EmailAddressTest, refusesEverythingElse)
{
    for (const char *address :
         {"", "jane", "@example.org", "jane@", "jane@uk", "jane@ex", "jane@example.org ", "jane@.org",
          "jane@a..org", "jane@a.org.", "jane@a_b.org", "jane@a b.org", "jane@[1.2.3.4]", "jane@1.2.3.4",
          "jane@example.tonelift", "jane@example.orgs", "jane@example.mw", "j\x1fn@a.org", "j\x7fn@a.org"})
        EXPECT_FALSE(IsValidEmail(QString::fromLatin1(address))) << address;
    for (const QString &address : {QStringLiteral("jäne@a.org"), QStringLiteral("jane@ä.org"),
                                   QStringLiteral("jane@a.\u212Ae"), QStringLiteral("jane@a.o\u0280g")})
        EXPECT_FALSE(IsValidEmail(address)) << address.toStdString(); // U+212A is "k" in small letters
}

} // namespace
