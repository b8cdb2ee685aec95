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
