// The command line of camera-parameters.
#include <ToolOptions.h>
#include <gtest/gtest.h>

TEST(ToolOptions, CommandsOptionsAndTheirErrors) {
    CToolOptions defaults({});
    EXPECT_TRUE(defaults.valid());
    EXPECT_EQ(defaults.command, "list");
    EXPECT_EQ(defaults.device, "sim");
    EXPECT_FALSE(defaults.json);

    CToolOptions full({"--device", "aravis:fake", "--json", "watch", "Width", "Gain", "--seconds", "1.5"});
    EXPECT_TRUE(full.valid()) << full.errorText().toStdString();
    EXPECT_EQ(full.device, "aravis:fake");
    EXPECT_TRUE(full.json);
    EXPECT_EQ(full.command, "watch");
    EXPECT_EQ(full.arguments, QStringList({"Width", "Gain"}));
    EXPECT_DOUBLE_EQ(full.seconds, 1.5);

    CToolOptions visibility({"list", "--visibility", "expert", "--filter", "gain", "--all"});
    EXPECT_EQ(visibility.visibility, "Expert");
    EXPECT_EQ(visibility.filter, "gain");
    EXPECT_TRUE(visibility.allNodes);

    EXPECT_FALSE(CToolOptions({"list", "--visibility", "everybody"}).valid());
    EXPECT_FALSE(CToolOptions({"watch", "Width", "--seconds", "soon"}).valid());
    EXPECT_FALSE(CToolOptions({"frobnicate"}).valid());
    EXPECT_FALSE(CToolOptions({"get"}).valid());
    EXPECT_FALSE(CToolOptions({"set", "Width"}).valid());
    EXPECT_FALSE(CToolOptions({"relations"}).valid());
    EXPECT_FALSE(CToolOptions({"list", "--device"}).valid());
    EXPECT_FALSE(CToolOptions({"--bogus"}).valid());
    EXPECT_TRUE(CToolOptions({"--help", "frobnicate"}).help);
    EXPECT_TRUE(CToolOptions::usage().contains("Exit codes"));
}

// set takes NAME=VALUE pairs in order (a value may hold '='), or one NAME VALUE pair; anything else is
// a usage error.
TEST(ToolOptions, SetTakesPairsInOrder) {
    using Pairs = QList<QPair<QString, QString>>;
    EXPECT_EQ(CToolOptions({"set", "Width", "640"}).settings(), Pairs({{"Width", "640"}}));
    EXPECT_EQ(CToolOptions({"set", "GainSelector=Red", "Gain=2.5", "DeviceUserID=a=b"}).settings(),
              Pairs({{"GainSelector", "Red"}, {"Gain", "2.5"}, {"DeviceUserID", "a=b"}}));
    EXPECT_EQ(CToolOptions({"set", "DeviceUserID", "a=b"}).settings(), Pairs({{"DeviceUserID", "a=b"}}));
    EXPECT_TRUE(CToolOptions({"set", "Width=640"}).valid());
    EXPECT_FALSE(CToolOptions({"set", "Width=640", "Height"}).valid());
    EXPECT_FALSE(CToolOptions({"set", "=640"}).valid());
    EXPECT_FALSE(CToolOptions({"set", "Width", "640", "480"}).valid());
}
