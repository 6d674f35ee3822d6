// `tavro settings` command lines as a user types them: what is taken, and the
// problem printed for what is not.
#include "SettingsArguments.h"

#include <gtest/gtest.h>

using SettingsCli::SettingsOptions;

namespace {

QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

TEST(SettingsArguments, GoodCommandLines)
{
    SettingsOptions set;
    ASSERT_EQ(SettingsCli::parseArguments(
                  words("set /card a=1 b=-2147483648 --answer no --model-type 0x5 "
                        "--clock 2024-03-15T08:15:02 c=+3 --reset"),
                  set),
        QString());
    EXPECT_EQ(set.action, "set");
    EXPECT_EQ(set.dir, "/card");
    ASSERT_EQ(set.changes.size(), 3);
    EXPECT_EQ(set.changes[0].name, "a");
    EXPECT_EQ(set.changes[1].value, -2147483648LL);
    EXPECT_EQ(set.changes[2].name, "c");
    EXPECT_EQ(set.changes[2].value, 3);
    EXPECT_FALSE(set.answerYes);
    EXPECT_TRUE(set.reset);
    EXPECT_EQ(set.overrides.modelType, 5);
    ASSERT_TRUE(set.clock);
    EXPECT_TRUE(set.clock->checked);
    EXPECT_EQ(set.clock->value, QDateTime(QDate(2024, 3, 15), QTime(8, 15, 2)));

    SettingsOptions off;
    ASSERT_EQ(SettingsCli::parseArguments(words("set /card --clock off"), off), QString());
    ASSERT_TRUE(off.clock);
    EXPECT_FALSE(off.clock->checked);

    SettingsOptions show;
    ASSERT_EQ(SettingsCli::parseArguments(words("show /card --firmware 17 --local-id -2"), show),
        QString());
    EXPECT_EQ(show.overrides.firmware, 17);
    EXPECT_EQ(show.overrides.localID, -2);
    EXPECT_TRUE(show.changes.isEmpty());
}

TEST(SettingsArguments, ProblemsNameTheWord)
{
    const struct {
        const char* line;
        const char* problem;
    } cases[] = {
        { "", "expected show or set and a card folder" },
        { "set", "expected show or set and a card folder" },
        { "list /card", "expected show or set and a card folder" },
        { "set /card", "set needs at least one NAME=VALUE, --reset or --clock" },
        { "set /card a=2147483648", "'a=2147483648' needs an integer value" },
        { "set /card a=0x10", "'a=0x10' needs an integer value" },
        // The name ends at the first '='; what follows must be the number.
        { "set /card c=x=3", "'c=x=3' needs an integer value" },
        { "set /card =1", "unexpected argument '=1'" },
        { "set /card -a=1", "unexpected argument '-a=1'" },
        { "show /card a=1", "unexpected argument 'a=1'" },
        { "show /card --reset", "unexpected argument '--reset'" },
        { "set /card --answer maybe", "--answer takes yes or no" },
        { "set /card a=1 --clock", "--clock needs a value" },
        { "set /card --clock 2024-02-30T08:00:00",
            "--clock takes now, off or YYYY-MM-DDTHH:MM:SS, got '2024-02-30T08:00:00'" },
        { "show /card --model-type six", "--model-type needs an integer, got 'six'" },
    };
    for (const auto& c : cases) {
        SettingsOptions options;
        EXPECT_EQ(SettingsCli::parseArguments(words(c.line), options), QString::fromUtf8(c.problem))
            << c.line;
    }
}

// Words a script can pass: an empty folder name is taken (the command then
// finds no folder), an empty word is not, a line break stays in the name.
TEST(SettingsArguments, EmptyWordsAndLineBreaks)
{
    SettingsOptions options;
    EXPECT_EQ(SettingsCli::parseArguments({ "set", "", "a\nb=1", "" }, options),
        QStringLiteral("unexpected argument ''"));
    ASSERT_EQ(options.changes.size(), 1);
    EXPECT_EQ(options.changes[0].name, "a\nb");
}
