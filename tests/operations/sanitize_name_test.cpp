#include "sanitize_name.h"

#include <gtest/gtest.h>

TEST(SanitizeName, DropsPunctuationAndBlanks)
{
    EXPECT_EQ(sanitizeName("Pt 3 (S12)"), "Pt3S12");
    EXPECT_EQ(sanitizeName("Path-1 / Main"), "Path1Main");
}

TEST(SanitizeName, JoinedTargetNames)
{
    EXPECT_EQ(sanitizeName(QString("P-1") + "To" + "Pt 2"), "P1ToPt2");
}

TEST(SanitizeName, OtherWhitespaceSurvives)
{
    EXPECT_EQ(sanitizeName("a\tb\nc d"), "a\tb\ncd");
}

TEST(SanitizeName, OnlyAsciiLettersAndDigitsAreKept)
{
    EXPECT_EQ(sanitizeName(QString::fromUtf8("Zürich_2.0")), "Zrich20");
    EXPECT_EQ(sanitizeName("!@#$%^&*()"), "");
}

TEST(SanitizeName, AnyWhitespaceButTheBlankSurvives)
{
    const QString noBreak(QChar(0x00A0));
    const QString emSpace(QChar(0x2003));
    EXPECT_EQ(sanitizeName("a" + noBreak + "b" + emSpace + "c d"), "a" + noBreak + "b" + emSpace + "cd");
}

TEST(SanitizeName, DigitsOtherThanAsciiAreRemoved)
{
    EXPECT_EQ(sanitizeName(QString("P") + QChar(0x0663) + QChar(0xFF11) + "4"), "P4");
}
